#include "Viewer/Scene/PosedPart.h"

#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <cmath>
#include <span>

namespace sgview {

namespace {

/// The rest geometry, stretched; normals go by the cofactors, which turn them as tangents are turned.
smart_ptr<SurfaceGeometryData> stretched(GeometryData const& geometry, SurfaceGeometryData const* normals,
                                         Matrix3 const& stretching)
{
    auto copy = make_smart<SurfaceGeometryData>();
    copy->closed = geometry.closed;
    copy->vertices.reserve(geometry.vertices.size());
    for (Vector3 const& vertex : geometry.vertices)
        copy->vertices.push_back(stretching * vertex);
    if (normals) {
        Matrix3 const turning = cofactors(stretching);
        copy->normals.reserve(normals->normals.size());
        for (UVector3 const& normal : normals->normals)
            copy->normals.emplace_back(turning * normal);
    }
    return copy;
}

/// Without the rounding that a turning hierarchy leaves, which is no reason to copy geometry anew. A function
/// of the pose alone: what was posed before does not count.
Matrix3 settled(Matrix3 stretching)
{
    constexpr double grid = 0x1p42;
    for (int i = 0; i < 9; ++i)
        stretching[i] = std::round(stretching[i] * grid) / grid;
    return stretching;
}

/// What the bones do to a vertex, as one map.
BoneTransform blended(std::span<BoneInfluence const> influences, std::vector<BoneTransform> const& bones)
{
    BoneTransform sum{Matrix3() * 0.0, Vector3()};
    for (BoneInfluence const& influence : influences) {
        BoneTransform const& bone = bones[static_cast<std::size_t>(influence.bone)];
        for (int i = 0; i < 9; ++i)
            sum.rotation[i] += bone.rotation[i] * influence.weight;
        sum.translation += bone.translation * influence.weight;
    }
    return sum;
}

Vector3 skinned(Vector3 const& rest, std::span<BoneInfluence const> influences,
                std::vector<BoneTransform> const& bones)
{
    Vector3 sum;
    for (BoneInfluence const& influence : influences)
        sum += bones[static_cast<std::size_t>(influence.bone)].transform(rest) * influence.weight;
    return sum;
}

template <typename Function>
void forEachVertex(PosedPart const& part, Matrix const& top, Function function)
{
    std::vector<Vector3> const& vertices = part.rest->get()->vertices;
    if (part.skin == none) {
        Matrix const map = top * part.map;
        for (Vector3 const& vertex : vertices)
            function(transformPoint(map, vertex));
        return;
    }
    auto const* const surface = static_cast<SGSurfaceGeometryReferenceNode const*>(part.drawn.get());
    BoneWeightsData const& weights = *surface->getBoneWeights()->get();
    std::vector<BoneTransform> const& bones = surface->getBoneTransforms()->get().transforms;
    for (std::size_t i = 0; i < vertices.size(); ++i)
        function(transformPoint(top, skinned(vertices[i], weights.influences(i), bones)));
}

} // namespace

void PosedPart::stretch(Matrix3 const& inner)
{
    Matrix3 const wanted = settled(inner);
    if (wanted == stretching)
        return;
    stretching = wanted;
    SurfaceGeometryData const* const normals = restNormals ? restNormals->get().get() : nullptr;
    bool const plain = stretching == Matrix3();
    smart_ptr<SurfaceGeometryData> copy;
    if (!plain)
        copy = stretched(*rest->get(), normals, stretching);
    drawn->setGeometry(plain ? rest : make_smart<SharedGeometry>(copy));
    if (normals)
        static_cast<SGSurfaceGeometryReferenceNode*>(drawn.get())
            ->setNormals(plain ? restNormals : make_smart<SharedSurfaceGeometry>(copy));
}

void PosedPart::addVertices(Matrix const& top, std::vector<Vector3>& all) const
{
    forEachVertex(*this, top, [&all](Vector3 const& vertex) { all.push_back(vertex); });
}

void PosedPart::addNormals(Transform const& top, std::size_t step, std::vector<PosedNormal>& all) const
{
    Matrix const topMap = top.getMatrix();
    std::vector<Vector3> const& vertices = rest->get()->vertices;
    std::vector<UVector3> const& normals = restNormals->get()->normals;
    auto const* const surface = static_cast<SGSurfaceGeometryReferenceNode const*>(drawn.get());
    for (std::size_t i = 0; i < vertices.size(); i += step) {
        BoneTransform const posed = skin == none ? BoneTransform{Matrix3(map), translationOf(map)}
                                                 : blended(surface->getBoneWeights()->get()->influences(i),
                                                           surface->getBoneTransforms()->get().transforms);
        // A bone that mirrors turns normals inwards, as the renderer does; a mirroring node does not.
        bool const inverts = skin == none && outer.getScale() < 0.0;
        Vector3 const direction = cofactors(posed.rotation) * normals[i] * (inverts ? -1.0 : 1.0);
        all.push_back({transformPoint(topMap, posed.transform(vertices[i])),
                       UVector3(top.getRotation() * direction * top.getScale())});
    }
}

Bounds PosedPart::bounds(Matrix const& top) const
{
    Bounds all;
    forEachVertex(*this, top, [&all](Vector3 const& vertex) { all.add(vertex); });
    return all;
}

} // namespace sgview
