#include "Viewer/Bench/SceneShapes.h"

#include <array>
#include <cstdint>

namespace sgview {

namespace {

SceneShape shared(smart_ptr<SurfaceGeometryData> const& data)
{
    return {make_smart<SharedGeometry>(data), make_smart<SharedSurfaceGeometry>(data),
            make_smart<SharedSurfaceGeometry>(data)};
}

void addTriangles(SurfaceGeometryData& data, std::array<std::int32_t, 4> const& corners)
{
    auto const [a, b, c, d] = corners;
    data.facets.insert(data.facets.end(), {a, b, c, a, c, d});
}

} // namespace

smart_ptr<SGSurfaceGeometryReferenceNode> SceneShape::addSurface(smart_ptr<SGNode> const& parent,
                                                                 Color const& color) const
{
    auto surface = make_smart<SGSurfaceGeometryReferenceNode>(parent);
    surface->setGeometry(geometry);
    surface->setNormals(normals);
    surface->setFacets(facets);
    surface->material.setAmbientAndDiffuse(color);
    return surface;
}

SceneShape makeCube(double side)
{
    // Out of each face, and along it to the right and up as seen from outside.
    struct Face {
        Vector3 out, right, up;
    };
    constexpr std::array<Face, 6> faces{{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                                         {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                                         {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
                                         {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
                                         {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
                                         {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}}};
    auto const data = make_smart<SurfaceGeometryData>();
    for (auto const& [out, right, up] : faces) {
        auto const first = static_cast<std::int32_t>(data->vertices.size());
        for (Vector3 const& corner :
             {out - right - up, out + right - up, out + right + up, out - right + up}) {
            data->vertices.push_back(corner * (side / 2.0));
            data->normals.emplace_back(out);
        }
        addTriangles(*data, {first, first + 1, first + 2, first + 3});
    }
    return shared(data);
}

SceneShape makeSheet(int vertices, double side)
{
    auto const data = make_smart<SurfaceGeometryData>();
    for (int row = 0; row < vertices; ++row) {
        for (int column = 0; column < vertices; ++column) {
            data->vertices.emplace_back(side * (static_cast<double>(column) / (vertices - 1) - 0.5),
                                        side * (static_cast<double>(row) / (vertices - 1) - 0.5), 0.0);
            data->normals.emplace_back(0.0, 0.0, 1.0);
            if (row + 1 == vertices || column + 1 == vertices)
                continue;
            std::int32_t const corner = row * vertices + column;
            addTriangles(*data, {corner, corner + 1, corner + vertices + 1, corner + vertices});
        }
    }
    return shared(data);
}

smart_ptr<SharedTextureCoords> makeSheetCoordinates(int vertices)
{
    auto const data = make_smart<TextureCoordsData>();
    for (int row = 0; row < vertices; ++row)
        for (int column = 0; column < vertices; ++column)
            data->coordinates.emplace_back(static_cast<double>(column) / (vertices - 1),
                                           static_cast<double>(row) / (vertices - 1), 0.0);
    return make_smart<SharedTextureCoords>(data);
}

smart_ptr<SharedImage> makeChequers(int number)
{
    constexpr int side = 64;
    auto const image = make_smart<Image_base>(side, side, Image_base::RGBA);
    constexpr int colorsBetween = 77; // so that pictures of neighbouring numbers look different
    Color const color = colorOf(number * colorsBetween + 5);
    int const widthBits = 2 + number % 3;
    int const heightBits = 2 + number / 3 % 3;
    auto pixel = image->edit().begin();
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            bool const bright = ((column >> widthBits) ^ (row >> heightBits)) % 2 != 0;
            float const brightness = bright ? 255.0F : 140.0F;
            for (float const component : {color.r, color.g, color.b})
                *pixel++ = static_cast<unsigned char>(component * brightness);
            *pixel++ = 255;
        }
    }
    return make_smart<SharedImage>(image);
}

Color colorOf(int number)
{
    // Multiplicative hashing: neighbours get colours far apart.
    std::uint32_t const hash = static_cast<std::uint32_t>(number) * 2654435761U;
    auto const component = [hash](int shift) {
        return 0.3F + 0.7F * static_cast<float>((hash >> shift) & 255U) / 255.0F;
    };
    return {component(8), component(16), component(24), 1.0F};
}

} // namespace sgview
