#include "Viewer/Import/AssimpMeshes.h"

#include "Viewer/Import/CurveBuilder.h"
#include "Viewer/Import/LocalMap.h"
#include "Viewer/Import/Normals.h"
#include "Viewer/Import/SkinWeights.h"
#include "Viewer/Import/SurfaceFinisher.h"

#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <algorithm>
#include <span>

namespace sgview {

namespace {

/// Assimp's matrices are products of 32-bit floats.
constexpr double decompositionTolerance = 1e-5;

/// The material of the stand-in mesh that Assimp makes for a file with nothing but a skeleton.
constexpr std::string_view standInMaterial = "SkeletonMaterial";

Vector3 toVector(aiVector3D const& v)
{
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

std::vector<Vector3> toVectors(aiVector3D const* vectors, unsigned int count)
{
    std::vector<Vector3> result;
    if (vectors != nullptr) {
        result.resize(count);
        std::transform(vectors, vectors + count, result.begin(), toVector);
    }
    return result;
}

Matrix toMatrix(aiMatrix4x4 const& m)
{
    std::array<double, 16> rows{};
    for (unsigned int i = 0; i < 16; ++i)
        rows[i] = static_cast<double>(m[i / 4][i % 4]);
    return Matrix(rows);
}

std::vector<CoordinateSet> coordinatesOf(aiMesh const& mesh)
{
    std::vector<CoordinateSet> sets;
    for (unsigned int channel = 0; channel < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++channel) {
        CoordinateSet& set = sets.emplace_back();
        if (aiVector3D const* const values = mesh.mTextureCoords[channel])
            for (aiVector3D const& uv : std::span(values, mesh.mNumVertices))
                set.push_back({static_cast<double>(uv.x), static_cast<double>(uv.y)});
    }
    return sets;
}

std::vector<Colour> coloursOf(aiMesh const& mesh)
{
    std::vector<Colour> colours;
    if (mesh.mColors[0] != nullptr)
        for (aiColor4D const& c : std::span(mesh.mColors[0], mesh.mNumVertices))
            colours.push_back({c.r, c.g, c.b, c.a});
    return colours;
}

std::string nameOf(aiMesh const& mesh, aiNode const& node)
{
    return mesh.mName.length > 0 ? mesh.mName.C_Str() : node.mName.C_Str();
}

} // namespace

void AssimpMeshes::read()
{
    addNodes();
    attachMeshes();
}

ModelNode AssimpMeshes::nodeFrom(aiNode const& source, Index parent)
{
    ModelNode node;
    node.name = source.mName.C_Str();
    node.parent = parent;
    if (!setLocalMap(node, toMatrix(source.mTransformation), decompositionTolerance))
        warnings_.add("node '" + node.name + "': a map that is not finite is left out");
    return node;
}

void AssimpMeshes::addNodes()
{
    struct Item {
        aiNode const* node;
        Index parent;
    };
    std::vector<Item> waiting{{scene_.mRootNode, none}};
    while (!waiting.empty()) {
        Item const item = waiting.back();
        waiting.pop_back();
        if (item.node == nullptr)
            continue;
        auto const index = static_cast<Index>(model_.nodes.size());
        model_.nodes.push_back(nodeFrom(*item.node, item.parent));
        sources_.push_back(item.node);
        nodesByName_.try_emplace(item.node->mName.C_Str(), index);
        for (unsigned int child = item.node->mNumChildren; child-- > 0;)
            waiting.push_back({item.node->mChildren[child], index});
    }
}

void AssimpMeshes::attachMeshes()
{
    std::map<unsigned int, Instance> instances;
    for (std::size_t i = 0; i < sources_.size(); ++i)
        for (unsigned int const number : std::span(sources_[i]->mMeshes, sources_[i]->mNumMeshes)) {
            if (number >= scene_.mNumMeshes)
                continue;
            auto [entry, isNew] = instances.try_emplace(number);
            if (isNew)
                entry->second = instantiate(*scene_.mMeshes[number], static_cast<Index>(i));
            ModelNode& node = model_.nodes[i];
            node.surfaces.insert(node.surfaces.end(), entry->second.surfaces.begin(),
                                 entry->second.surfaces.end());
            node.curves.insert(node.curves.end(), entry->second.curves.begin(), entry->second.curves.end());
        }
}

AssimpMeshes::Instance AssimpMeshes::instantiate(aiMesh const& mesh, Index node)
{
    Instance instance;
    bool const isStandIn = mesh.mMaterialIndex < scene_.mNumMaterials &&
                           standInMaterial == scene_.mMaterials[mesh.mMaterialIndex]->GetName().C_Str();
    if (isStandIn || mesh.mVertices == nullptr)
        return instance;
    if ((mesh.mPrimitiveTypes & aiPrimitiveType_POINT) != 0 && mesh.mNumVertices > 0) {
        hasPoints_ = true;
        warnings_.add("'" + nameOf(mesh, *sources_[static_cast<std::size_t>(node)]) +
                      "': points are not drawn");
    }
    if (mesh.mNumAnimMeshes > 0)
        warnings_.add("'" + nameOf(mesh, *sources_[static_cast<std::size_t>(node)]) +
                      "': morphing is not animated");
    if ((mesh.mPrimitiveTypes & aiPrimitiveType_LINE) != 0)
        addCurves(mesh, instance);
    if ((mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) != 0)
        addSurface(mesh, node, instance);
    return instance;
}

std::size_t AssimpMeshes::planOf(aiMesh const& mesh) const
{
    return plans_[mesh.mMaterialIndex < plans_.size() ? mesh.mMaterialIndex : 0];
}

void AssimpMeshes::addSurface(aiMesh const& mesh, Index node, Instance& instance)
{
    ModelSurface surface;
    surface.name = nameOf(mesh, *sources_[static_cast<std::size_t>(node)]);
    surface.positions = toVectors(mesh.mVertices, mesh.mNumVertices);
    surface.normals = toVectors(mesh.mNormals, mesh.mNumVertices);
    for (aiFace const& face : std::span(mesh.mFaces, mesh.mNumFaces))
        if (face.mNumIndices == 3)
            for (unsigned int const vertex : std::span(face.mIndices, 3))
                surface.facets.push_back(vertex < mesh.mNumVertices ? static_cast<std::int32_t>(vertex)
                                                                    : none);
    if (mesh.mNumBones > 0)
        bind(surface, mesh, node);
    materials_.dress(surface, planOf(mesh), coordinatesOf(mesh), coloursOf(mesh));
    finishSurface(surface, Crease::sharp, warnings_);
    if (surface.facets.empty())
        return;
    // Files of other formats than glTF leave open which of both is meant.
    if (turnOpposedNormals(surface))
        warnings_.add("normals that point to the back of their surface are turned around");
    instance.surfaces.push_back(static_cast<Index>(model_.surfaces.size()));
    model_.surfaces.push_back(std::move(surface));
}

void AssimpMeshes::addCurves(aiMesh const& mesh, Instance& instance)
{
    std::vector<std::array<std::int32_t, 2>> segments;
    for (aiFace const& face : std::span(mesh.mFaces, mesh.mNumFaces))
        if (face.mNumIndices == 2 && face.mIndices[0] < mesh.mNumVertices &&
            face.mIndices[1] < mesh.mNumVertices)
            segments.push_back(
                {static_cast<std::int32_t>(face.mIndices[0]), static_cast<std::int32_t>(face.mIndices[1])});
    std::vector<ModelCurve> curves = buildCurves(toVectors(mesh.mVertices, mesh.mNumVertices), segments);
    if (curves.empty())
        return;
    if (mesh.mNumBones > 0)
        warnings_.add("'" + std::string(mesh.mName.C_Str()) + "': bones do not move lines");
    Index const material = materials_.ofCurve(planOf(mesh), coloursOf(mesh));
    for (ModelCurve& curve : curves) {
        curve.name = mesh.mName.C_Str();
        curve.material = material;
        instance.curves.push_back(static_cast<Index>(model_.curves.size()));
        model_.curves.push_back(std::move(curve));
    }
}

Index AssimpMeshes::boneFor(Index node, Matrix const& inverseBind)
{
    std::array<double, 16> elements{};
    std::copy_n(inverseBind.data(), elements.size(), elements.begin());
    if (model_.skins.empty())
        model_.skins.push_back({"skin", {}});
    std::vector<ModelBone>& list = model_.skins.front().bones;
    auto const [entry, isNew] = bones_.try_emplace({node, elements}, static_cast<Index>(list.size()));
    if (isNew)
        list.push_back({node, inverseBind});
    return entry->second;
}

Index AssimpMeshes::boneFor(aiBone const& bone, Index nodeOfMesh)
{
    auto const node = nodesByName_.find(bone.mName.C_Str());
    Matrix const offset = toMatrix(bone.mOffsetMatrix);
    if (node == nodesByName_.end() || !isFinite(offset)) {
        warnings_.add(
            "bone '" + std::string(bone.mName.C_Str()) +
            "': its node is missing or its rest pose not finite; its vertices stay with their mesh");
        return boneFor(nodeOfMesh, Matrix());
    }
    return boneFor(node->second, Matrix(Matrix3(offset), translationOf(offset)));
}

void AssimpMeshes::bind(ModelSurface& surface, aiMesh const& mesh, Index node)
{
    SkinWeights weights(mesh.mNumVertices);
    for (aiBone const* const bone : std::span(mesh.mBones, mesh.mNumBones)) {
        if (bone->mNumWeights == 0)
            continue;
        Index const index = boneFor(*bone, node);
        for (aiVertexWeight const& weight : std::span(bone->mWeights, bone->mNumWeights))
            if (weight.mVertexId < mesh.mNumVertices)
                weights.add(weight.mVertexId, index, static_cast<double>(weight.mWeight));
    }
    Index const boneOfUnbound = weights.hasUnbound() ? boneFor(node, Matrix()) : none;
    weights.store(surface, boneOfUnbound);
    surface.skin = 0;
}

} // namespace sgview
