#pragma once

#include "Maths/Transform.h"
#include "SceneGraph/SGGeometryReferenceNode.h"
#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Scene/Bounds.h"
#include "Viewer/Scene/ModelResources.h"
#include "Viewer/Scene/SceneOptions.h"

#include <memory>
#include <string>
#include <vector>

namespace sgview {

/// Where a surface of a posed instance is.
struct SurfaceBounds {
    std::string name;
    Bounds bounds;
};

/// One appearance of a model in a scene graph, with a pose of its own.
///
/// Plain surfaces stand in the model's hierarchy of transforms, skinned ones beside it, and blended ones in a
/// group drawn last. A stretching that is not uniform goes into a copy of the geometry.
class ModelInstance {
public:
    /// Builds the instance under `parent`, in the rest pose. The background of `options` is not looked at.
    ModelInstance(std::shared_ptr<ModelResources const> resources, SceneOptions const& options,
                  smart_ptr<SGNode> const& parent);

    /// \param animation  index of the clip, or `none` for the rest pose
    /// \param seconds    from the clip's start
    void pose(Index animation, double seconds);

    /// Draws blended surfaces from far to near.
    /// \param viewDirection  the way the camera looks, in the parent's space
    void sortBlended(Vector3 const& viewDirection);

    /// Every surface and curve as posed, in the space of the instance's parent.
    [[nodiscard]] std::vector<SurfaceBounds> surfaceBounds() const;

    /// Every vertex of every surface and curve as posed, in the space of the instance's parent.
    [[nodiscard]] std::vector<Vector3> posedVertices() const;

private:
    /// A surface or curve somewhere in the model.
    struct Item {
        std::string name;
        Index node; ///< none for a skinned surface, which its bones alone place
        Index skin = none;
        Index split = none; ///< of which split of the model it is a part
        smart_ptr<SGGeometryReferenceNode> drawn;
        smart_ptr<SGTransformNode> place; ///< of a blended item outside the hierarchy; else null
        smart_ptr<SharedGeometry> rest;
        smart_ptr<SharedSurfaceGeometry> restNormals; ///< null for a curve
        Matrix3 baked;                                ///< the stretching that `drawn` now holds
        Matrix map;                                   ///< from the model's rest geometry to the model's space
    };

    void addSurface(Index surface, Index node);
    [[nodiscard]] Index splitOf(Index surface) const;
    void addCurve(Index curve, Index node);
    smart_ptr<SGNode> placeFor(Index node, bool blending, smart_ptr<SGTransformNode>& place);
    smart_ptr<SGNode> transformNode(Index node);
    void poseSkins(std::vector<Matrix> const& globals);
    void bake(Item& item, Matrix3 const& stretching) const;
    template <typename Function>
    void forEachVertex(Item const& item, Function function) const;
    [[nodiscard]] Bounds boundsOf(Item const& item) const;

    std::shared_ptr<ModelResources const> resources_;
    SceneOptions options_;
    smart_ptr<SGTransformNode> top_;
    smart_ptr<SGNode> opaqueGroup_;
    smart_ptr<SGNode> blendedGroup_;
    std::vector<smart_ptr<SGTransformNode>>
        transforms_; ///< one a model node; null where nothing is drawn below
    std::vector<smart_ptr<SharedBoneTransforms>> poses_; ///< one a skin
    std::vector<Item> items_;
};

} // namespace sgview
