#pragma once

#include "Maths/Transform.h"
#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Scene/Bounds.h"
#include "Viewer/Scene/ModelResources.h"
#include "Viewer/Scene/PosedPart.h"
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

    /// \param animation  index of an animation, or `none` for the rest pose
    /// \param seconds    from its start
    void pose(Index animation, double seconds);

    /// Nodes, materials, skins and animations as imported.
    [[nodiscard]] Model const& model() const { return resources_->model(); }

    /// Draws blended surfaces from far to near.
    /// \param viewDirection  the way the camera looks, in the parent's space
    void sortBlended(Vector3 const& viewDirection);

    /// Every surface and curve as posed, in the space of the instance's parent.
    [[nodiscard]] std::vector<SurfaceBounds> surfaceBounds() const;

    /// The parts, in the order of the model's nodes.
    [[nodiscard]] std::size_t partCount() const { return parts_.size(); }
    [[nodiscard]] ModelPart const& part(std::size_t index) const { return parts_[index]; }

    /// A part that is not shown keeps its place.
    void setShown(std::size_t index, bool shown);
    [[nodiscard]] bool isShown(std::size_t index) const;

    /// Draws a part mixed with what is behind it, after what is opaque, or not.
    void setBlending(std::size_t index, bool blending);

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
    void addSurface(Index surface, Index owner);
    [[nodiscard]] Index splitOf(Index surface) const;
    void addCurve(Index curve, Index owner);
    static smart_ptr<SGNode> slotOf(PosedPart const& part);
    void makeSlot(PosedPart& part, bool blending);
    smart_ptr<SGNode> transformNode(Index node);
    [[nodiscard]] Transform localTransform(std::size_t node) const;
    void poseSkins(std::vector<Matrix> const& globals);

    std::shared_ptr<ModelResources const> resources_;
    SceneOptions options_;
    smart_ptr<SGTransformNode> top_;
    smart_ptr<SGNode> opaqueGroup_;
    smart_ptr<SGNode> blendedGroup_;
    std::vector<smart_ptr<SGTransformNode>>
        transforms_; ///< one a model node; null where nothing is drawn below
    std::vector<smart_ptr<SharedBoneTransforms>> poses_; ///< one a skin
    std::vector<PosedPart> parts_;
    std::vector<Matrix> nodeMaps_; ///< of the pose, in the model's space; empty before the first
};

} // namespace sgview
