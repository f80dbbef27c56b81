#include "Viewer/Import/AssimpCheck.h"

#include <assimp/scene.h>

#include <algorithm>
#include <span>

namespace sgview {

namespace {

std::string faultOfMesh(aiMesh const& mesh)
{
    if (mesh.mNumVertices > 0 && mesh.mVertices == nullptr)
        return "has no positions";
    if (mesh.mNumFaces > 0 && mesh.mFaces == nullptr)
        return "has no facets";
    for (aiFace const& face : std::span(mesh.mFaces, mesh.mNumFaces)) {
        if (face.mNumIndices > 0 && face.mIndices == nullptr)
            return "has a facet without vertices";
        for (unsigned int const vertex : std::span(face.mIndices, face.mNumIndices))
            if (vertex >= mesh.mNumVertices)
                return "has a facet whose vertex " + std::to_string(vertex) + " does not exist";
    }
    for (aiBone const* const bone : std::span(mesh.mBones, mesh.mNumBones)) {
        if (bone == nullptr)
            return "has a bone that is missing";
        for (aiVertexWeight const& weight : std::span(bone->mWeights, bone->mNumWeights))
            if (weight.mVertexId >= mesh.mNumVertices)
                return "has a bone on vertex " + std::to_string(weight.mVertexId) + ", which does not exist";
    }
    return {};
}

} // namespace

std::string faultOf(aiScene const& scene)
{
    if (scene.mRootNode == nullptr)
        return "the file has no nodes";
    for (unsigned int i = 0; i < scene.mNumMeshes; ++i) {
        std::string const fault = scene.mMeshes[i] == nullptr ? "is missing" : faultOfMesh(*scene.mMeshes[i]);
        if (!fault.empty())
            return "mesh " + std::to_string(i) + " " + fault;
    }
    auto const materials = std::span(scene.mMaterials, scene.mNumMaterials);
    if (std::ranges::find(materials, nullptr) != materials.end())
        return "a material is missing";
    for (aiAnimation const* const animation : std::span(scene.mAnimations, scene.mNumAnimations)) {
        if (animation == nullptr)
            return "an animation is missing";
        auto const channels = std::span(animation->mChannels, animation->mNumChannels);
        if (std::ranges::find(channels, nullptr) != channels.end())
            return "an animation's channel is missing";
    }
    return {};
}

} // namespace sgview
