#include "Viewer/Scene/ModelResources.h"

#include <algorithm>
#include <utility>

namespace sgview {

namespace {

Color toColor(std::array<float, 4> const& c)
{
    return {c[0], c[1], c[2], c[3]};
}

smart_ptr<SharedImage> shareImage(ModelImage& source)
{
    auto image = make_smart<Image_base>(source.width, source.height,
                                        source.alpha ? Image_base::RGBA : Image_base::RGB);
    std::copy_n(source.rows.begin(), image->edit().size(), image->edit().begin());
    source.rows = {};
    return make_smart<SharedImage>(std::move(image));
}

smart_ptr<SharedTextureCoords> shareCoordinates(std::vector<std::array<double, 2>> const& source)
{
    auto data = make_smart<TextureCoordsData>();
    data->coordinates.reserve(source.size());
    for (auto const& [u, v] : source)
        data->coordinates.emplace_back(u, v, 0.0);
    return make_smart<SharedTextureCoords>(std::move(data));
}

smart_ptr<SharedBoneWeights> shareWeights(ModelSurface const& source)
{
    auto weights = make_smart<BoneWeightsData>();
    std::vector<BoneInfluence> influences;
    for (std::size_t vertex = 0; vertex + 1 < source.influenceOffsets.size(); ++vertex) {
        influences.clear();
        for (auto i = static_cast<std::size_t>(source.influenceOffsets[vertex]);
             i < static_cast<std::size_t>(source.influenceOffsets[vertex + 1]); ++i)
            influences.push_back({source.influences[i].bone, source.influences[i].weight});
        weights->addVertex(influences);
    }
    return make_smart<SharedBoneWeights>(std::move(weights));
}

SurfaceResources shareSurface(ModelSurface& source, ModelMaterial const& material)
{
    auto record = make_smart<SurfaceGeometryData>();
    record->vertices = std::move(source.positions);
    record->normals.reserve(source.normals.size());
    for (Vector3 const& normal : source.normals)
        record->normals.emplace_back(normal);
    record->facets = std::move(source.facets);

    SurfaceResources shared;
    shared.geometry = make_smart<SharedGeometry>(record);
    shared.normals = make_smart<SharedSurfaceGeometry>(record);
    shared.facets = make_smart<SharedSurfaceGeometry>(record);

    std::vector<smart_ptr<SharedTextureCoords>> sets(source.coordinates.size());
    for (ModelTexture const& texture : material.textures) {
        auto const set = static_cast<std::size_t>(texture.coordinates);
        if (!sets[set])
            sets[set] = shareCoordinates(source.coordinates[set]);
        shared.coordinates.push_back(sets[set]);
    }
    if (source.skin != none)
        shared.boneWeights = shareWeights(source);

    source.normals = {};
    source.coordinates = {};
    source.influenceOffsets = {};
    source.influences = {};
    return shared;
}

} // namespace

Material makeMaterial(ModelMaterial const& source)
{
    Material material;
    material.ambient = toColor(source.ambient);
    material.diffuse = toColor(source.diffuse);
    material.specular = toColor(source.specular);
    material.emissive = toColor(source.emissive);
    material.shininess = source.shininess;
    return material;
}

ModelResources::ModelResources(Model model) : model_(std::move(model))
{
    for (ModelImage& image : model_.images)
        images_.push_back(shareImage(image));
    for (ModelSurface& surface : model_.surfaces)
        surfaces_.push_back(
            shareSurface(surface, model_.materials[static_cast<std::size_t>(surface.material)]));
    for (ModelCurve& curve : model_.curves) {
        auto record = make_smart<GeometryData>();
        record->vertices = std::move(curve.positions);
        record->closed = curve.closed;
        curves_.push_back(make_smart<SharedGeometry>(std::move(record)));
    }
}

SurfaceResources const& ModelResources::surface(Index index) const
{
    return surfaces_[static_cast<std::size_t>(index)];
}

smart_ptr<SharedGeometry> const& ModelResources::curve(Index index) const
{
    return curves_[static_cast<std::size_t>(index)];
}

smart_ptr<SharedImage> const& ModelResources::image(Index index) const
{
    return images_[static_cast<std::size_t>(index)];
}

} // namespace sgview
