#pragma once

#include "Maths/UVector3.h"
#include "OpenGLRenderer/SkinningMatrices.h"
#include "SceneGraph/BoneWeightsData.h"

#include <boost/align/aligned_allocator.hpp>

/// A surface's rest pose and bone weights, laid out once for the kernels that move its vertices every frame:
/// vertices that the same bones move lie together.
class SkinningPlan {
public:
    /// A vertex without a normal gets the z axis, one without a list of influences stays at rest.
    SkinningPlan(std::span<Vector3 const> positions, std::span<UVector3 const> normals,
                 BoneWeightsData const& weights);

    [[nodiscard]] std::size_t vertexCount() const { return vertexCount_; }

    /// Moves every vertex as the pose says; see SkinningKernel. A bone that the pose lacks pulls to the
    /// origin.
    /// \param positions  three numbers for each of vertexCount() vertices
    /// \param normals    the same
    void skin(SkinningKernel const& kernel, std::span<BoneTransform const> pose, double* positions,
              double* normals) const;
    void skin(SkinningKernel const& kernel, std::span<BoneTransform const> pose, float* positions,
              float* normals) const;

private:
    /// Vertices that the same bones move.
    struct Group {
        std::size_t firstBone; ///< in bones_
        std::size_t boneCount;
        std::size_t firstVertex; ///< in order_
        std::size_t vertices;
        std::size_t firstNumber; ///< in blocks_
        bool consecutive;        ///< the vertices stand one after another in the surface too
        bool relative;           ///< its bones are taken by their differences
    };

    void addGroup(std::span<std::uint32_t const> vertices, std::span<Vector3 const> positions,
                  std::span<UVector3 const> normals, BoneWeightsData const& weights);
    void setBones(BoneWeightsData const& weights);

    template <typename T>
    void skinAll(void (*skinGroup)(SkinningGroup const&, T*, T*), std::span<BoneTransform const> pose,
                 T* positions, T* normals) const;
    template <typename T>
    void copyRest(Group const& group, T* positions, T* normals) const;

    std::size_t vertexCount_;
    std::vector<Group> groups_;
    std::vector<std::uint32_t> bones_; ///< of the groups, as matrices_ knows them
    std::vector<std::uint32_t> order_;
    std::vector<double, boost::alignment::aligned_allocator<double, 64>> blocks_;
    mutable SkinningMatrices matrices_; ///< kept for their memory
};
