#pragma once

#include "SceneGraph/SGGeometryReferenceNode.h"
#include "SceneGraph/SGSurfaceData.h"

#include <utility>

/// Draws triangles, skinned or plain.
///
/// Geometry, normals and facets are three wrappers, even where one record holds all three. Bone weights
/// without bone transforms, or the other way round, make no skin.
class SGSurfaceGeometryReferenceNode : public SGGeometryReferenceNode {
public:
    explicit SGSurfaceGeometryReferenceNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    bool unlit = false;
    bool wireframe = false;

    [[nodiscard]] smart_ptr<SharedBoneWeights> const& getBoneWeights() const { return boneWeights_; }
    [[nodiscard]] smart_ptr<SharedBoneTransforms> const& getBoneTransforms() const { return boneTransforms_; }
    [[nodiscard]] smart_ptr<SharedSurfaceGeometry> const& getNormals() const { return normals_; }
    [[nodiscard]] smart_ptr<SharedSurfaceGeometry> const& getFacets() const { return facets_; }
    [[nodiscard]] smart_ptr<SGSurfaceData> const& getSurfaceData() const { return surfaceData_; }

    void setBoneWeights(smart_ptr<SharedBoneWeights> weights) { boneWeights_ = std::move(weights); }
    void setBoneTransforms(smart_ptr<SharedBoneTransforms> pose) { boneTransforms_ = std::move(pose); }
    void setSurfaceData(smart_ptr<SGSurfaceData> data) { surfaceData_ = std::move(data); }

    /// Both throw std::invalid_argument for the wrapper that is the other one already: what is derived from
    /// normals and what is derived from facets hang under one key.
    void setNormals(smart_ptr<SharedSurfaceGeometry> normals);
    void setFacets(smart_ptr<SharedSurfaceGeometry> facets);

private:
    smart_ptr<SharedBoneWeights> boneWeights_;
    smart_ptr<SharedBoneTransforms> boneTransforms_;
    smart_ptr<SharedSurfaceGeometry> normals_;
    smart_ptr<SharedSurfaceGeometry> facets_;
    smart_ptr<SGSurfaceData> surfaceData_;
};
