#pragma once

#include "Maths/Transform.h"
#include "Maths/UVector3.h"
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

/// What an instance draws for one surface or curve of the model on one of its nodes.
struct ModelPart {
    std::string name;
    Index owner = none;    ///< the node that it hangs on in the file
    Index material = none; ///< into Model::materials
    Index skin = none;     ///< into Model::skins; none where no bones move it
    smart_ptr<SGGeometryReferenceNode> drawn;
};

/// A vertex of a posed surface, and where the surface faces there.
struct PosedNormal {
    Vector3 place;
    UVector3 direction;
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

    /// Nodes, materials, skins and animations as imported.
    [[nodiscard]] Model const& model() const { return resources_->model(); }

    /// Draws blended surfaces from far to near.
    /// \param viewDirection  the way the camera looks, in the parent's space
    void sortBlended(Vector3 const& viewDirection);

    /// Every surface and curve as posed, in the space of the instance's parent.
    [[nodiscard]] std::vector<SurfaceBounds> surfaceBounds() const;

    /// The parts, in the order of the model's nodes.
    [[nodiscard]] std::size_t partCount() const { return items_.size(); }
    [[nodiscard]] ModelPart const& part(std::size_t index) const { return items_[index]; }

    /// A part that is not shown keeps its place.
    void setShown(std::size_t part, bool shown);
    [[nodiscard]] bool isShown(std::size_t part) const;

    /// Draws a part mixed with what is behind it, after what is opaque, or not.
    void setBlending(std::size_t part, bool blending);

    /// Where each node of the model is as posed, in the space of the instance's parent.
    [[nodiscard]] std::vector<Vector3> posedNodes() const;

    /// One in so many vertices of the surfaces that are shown, as posed, in the space of the instance's
    /// parent.
    /// \param step  at least 1
    [[nodiscard]] std::vector<PosedNormal> posedNormals(std::size_t step) const;

    /// Every vertex of every surface and curve that is shown, as posed, in the space of the instance's
    /// parent.
    [[nodiscard]] std::vector<Vector3> posedVertices() const;

private:
    struct Item : ModelPart {
        Index node = none;                ///< none for a skinned surface, which its bones alone place
        Index split = none;               ///< of which split of the model it is a part
        smart_ptr<SGNode> home;           ///< in the hierarchy; null for an item that was never opaque
        smart_ptr<SGTransformNode> place; ///< of a blended item, outside the hierarchy; else null
        smart_ptr<SharedGeometry> rest;
        smart_ptr<SharedSurfaceGeometry> restNormals; ///< null for a curve
        Matrix3 baked;                                ///< the stretching that `drawn` now holds
        Transform outer;                              ///< what the hierarchy does to `drawn`
        Matrix map;                                   ///< from the model's rest geometry to the model's space
    };

    void addSurface(Index surface, Index owner);
    [[nodiscard]] Index splitOf(Index surface) const;
    void addCurve(Index curve, Index owner);
    static smart_ptr<SGNode> slotOf(Item const& item);
    void makeSlot(Item& item, bool blending);
    smart_ptr<SGNode> transformNode(Index node);
    [[nodiscard]] Transform localTransform(std::size_t node) const;
    void poseSkins(std::vector<Matrix> const& globals);
    void bake(Item& item, Matrix3 const& inner) const;
    template <typename Function>
    void forEachVertex(Item const& item, Function function) const;
    void addPosedNormals(Item const& item, std::size_t step, std::vector<PosedNormal>& all) const;
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
    std::vector<Matrix> nodeMaps_; ///< of the pose, in the model's space; empty before the first
};

} // namespace sgview
