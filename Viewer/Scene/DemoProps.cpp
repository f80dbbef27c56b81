#include "Viewer/Scene/DemoProps.h"

#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGZTransformNode.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace sgview {

namespace {

constexpr double pi = std::numbers::pi;

unsigned char toByte(double value)
{
    return static_cast<unsigned char>(std::lround(255.0 * std::fmin(std::fmax(value, 0.0), 1.0)));
}

/// A picture from a function of u and v, 0 to 1, that gives a Color.
template <typename Function>
smart_ptr<SharedImage> paint(int side, Image_base::Format format, Function colorAt)
{
    auto image = make_smart<Image_base>(side, side, format);
    auto const components = static_cast<std::size_t>(image->getNumComponents());
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            Color const color = colorAt((column + 0.5) / side, (row + 0.5) / side);
            unsigned char* const pixel = image->edit().data() +
                                         static_cast<std::size_t>(row) * image->getRowSize() +
                                         static_cast<std::size_t>(column) * components;
            for (std::size_t i = 0; i < components; ++i)
                pixel[i] = toByte(static_cast<double>(color.data()[i]));
        }
    }
    return make_smart<SharedImage>(std::move(image));
}

Color mixed(Color const& a, Color const& b, double t)
{
    auto const mix = [t](float x, float y) { return static_cast<float>(x + (y - x) * t); };
    return {mix(a.r, b.r), mix(a.g, b.g), mix(a.b, b.b), mix(a.a, b.a)};
}

/// Sand in soft dunes; the waves fit the side, so that the picture repeats without a seam.
Color sand(double u, double v)
{
    double const dunes = std::sin(2.0 * pi * (3.0 * v + 0.4 * std::sin(2.0 * pi * u)));
    double const grain = std::sin(2.0 * pi * 61.0 * u) * std::sin(2.0 * pi * 53.0 * (u + v));
    return mixed({0.76F, 0.66F, 0.47F, 1.0F}, {0.93F, 0.86F, 0.69F, 1.0F}, 0.5 + 0.35 * dunes + 0.1 * grain);
}

/// Bright lines where waves from several sides meet, as on the ground of a pool.
Color caustics(double u, double v)
{
    double const a = 2.0 * pi * u;
    double const b = 2.0 * pi * v;
    double const wave = std::sin(2.0 * a + 1.3 * std::sin(2.0 * b)) + std::sin(3.0 * b + 1.1 * std::sin(a)) +
                        std::sin(2.0 * (a + b) + std::sin(a - b));
    double const line = std::exp(-3.0 * wave * wave);
    return mixed({0.62F, 0.75F, 0.80F, 1.0F}, {1.0F, 1.0F, 1.0F, 1.0F}, line);
}

/// A window frame around a gradient, transparent outside its rounded corners.
Color panelFace(double u, double v)
{
    double const x = std::fmax(std::abs(u - 0.5) - 0.38, 0.0);
    double const y = std::fmax(std::abs(v - 0.5) - 0.38, 0.0);
    double const edge = std::hypot(x, y);
    if (edge > 0.12)
        return {0.0F, 0.0F, 0.0F, 0.0F};
    if (edge > 0.085)
        return {0.10F, 0.16F, 0.22F, 1.0F};
    bool const dark = (static_cast<int>(u * 8.0) + static_cast<int>(v * 8.0)) % 2 == 0;
    return mixed({0.16F, 0.42F, 0.62F, 0.85F}, {0.98F, 0.72F, 0.28F, 0.85F}, dark ? v : 0.25 + 0.5 * v);
}

smart_ptr<SharedTextureCoords> coordinates(std::vector<Vector3> values)
{
    auto data = make_smart<TextureCoordsData>();
    data->coordinates = std::move(values);
    return make_smart<SharedTextureCoords>(std::move(data));
}

void addCurve(smart_ptr<SGNode> const& parent, std::vector<Vector3> points, bool closed, Color const& color,
              std::uint16_t stipple)
{
    auto data = make_smart<GeometryData>();
    data->vertices = std::move(points);
    data->closed = closed;
    auto curve = make_smart<SGCurveGeometryReferenceNode>(parent);
    curve->setGeometry(make_smart<SharedGeometry>(std::move(data)));
    curve->material.setAmbientAndDiffuse(color);
    curve->lineWidth = 3.0;
    curve->lineStipple = stipple;
}

} // namespace

void addFloor(smart_ptr<SGNode> const& lit)
{
    constexpr int cells = 40; // fine enough for highlights that are computed at vertices
    constexpr double halfWidth = 5.0;
    constexpr double halfDepth = 5.0;
    constexpr double height = -0.66;

    auto record = make_smart<SurfaceGeometryData>();
    std::vector<Vector3> sandCoordinates;
    std::vector<Vector3> causticCoordinates;
    for (int row = 0; row <= cells; ++row) {
        for (int column = 0; column <= cells; ++column) {
            double const u = static_cast<double>(column) / cells;
            double const v = static_cast<double>(row) / cells;
            record->vertices.emplace_back((2.0 * u - 1.0) * halfWidth, height, (1.0 - 2.0 * v) * halfDepth);
            record->normals.emplace_back(0.0, 1.0, 0.0);
            sandCoordinates.emplace_back(6.0 * u, 6.0 * v, 0.0);
            causticCoordinates.emplace_back(5.0 * u, 5.0 * v, 0.0);
            if (row < cells && column < cells) {
                std::int32_t const corner = row * (cells + 1) + column;
                std::int32_t const above = corner + cells + 1;
                record->facets.insert(record->facets.end(),
                                      {corner, corner + 1, above + 1, corner, above + 1, above});
            }
        }
    }

    auto floor = make_smart<SGSurfaceGeometryReferenceNode>(lit);
    floor->material.setAmbientAndDiffuse({1.0F, 1.0F, 1.0F, 1.0F});
    floor->setGeometry(make_smart<SharedGeometry>(record));
    floor->setNormals(make_smart<SharedSurfaceGeometry>(record));
    floor->setFacets(make_smart<SharedSurfaceGeometry>(record));
    floor->textureLayers.resize(2);
    floor->textureLayers[0].texture = paint(256, Image_base::RGB, sand);
    floor->textureLayers[0].coordinates = coordinates(std::move(sandCoordinates));
    floor->textureLayers[1].texture = paint(256, Image_base::RGB, caustics);
    floor->textureLayers[1].coordinates = coordinates(std::move(causticCoordinates));
}

void addCurves(smart_ptr<SGNode> const& parent)
{
    std::vector<Vector3> wave;
    std::vector<Vector3> spiral;
    std::vector<Vector3> ring;
    for (int i = 0; i <= 120; ++i) {
        double const t = i / 120.0;
        wave.emplace_back(-2.6 + 5.2 * t, 1.45 + 0.08 * std::sin(14.0 * pi * t), -0.9);
        spiral.emplace_back(-1.75 + 0.2 * (1.0 - 0.6 * t) * std::cos(10.0 * pi * t), -0.6 + 1.4 * t,
                            0.4 + 0.2 * (1.0 - 0.6 * t) * std::sin(10.0 * pi * t));
        if (i < 120)
            ring.emplace_back(0.52 * std::cos(2.0 * pi * t), 1.02 + 0.52 * std::sin(2.0 * pi * t), -0.3);
    }
    constexpr std::uint16_t dashes = 0x0F0F;
    addCurve(parent, std::move(wave), false, {0.12F, 0.38F, 0.58F, 1.0F}, 0);
    addCurve(parent, std::move(spiral), false, {0.55F, 0.15F, 0.45F, 1.0F}, dashes);
    addCurve(parent, std::move(ring), true, {0.85F, 0.35F, 0.10F, 1.0F}, 0);
}

void addPane(smart_ptr<SGNode> const& parent)
{
    auto pane = make_smart<SGQuadNode>(parent);
    pane->corners = {{1.0, -0.6, 0.95}, {1.75, -0.6, 0.45}, {1.75, 0.5, 0.45}, {1.0, 0.5, 0.95}};
    pane->material.setAmbientAndDiffuse({0.20F, 0.55F, 0.75F, 0.4F});
    pane->blending = true;
}

void addPanel(smart_ptr<SGNode> const& parent)
{
    auto front = make_smart<SGZTransformNode>(parent);
    // The window's depths 0 to 0.01.
    front->lower = -0.99;
    front->upper = -0.98;

    auto panel = make_smart<SGQuadNode>(front);
    panel->corners = {{-0.4, -0.75, -1.0}, {0.4, -0.75, -1.0}, {0.4, 0.05, -1.0}, {-0.4, 0.05, -1.0}};
    panel->material.setAmbientAndDiffuse({1.0F, 1.0F, 1.0F, 1.0F});
    panel->blending = true;
    panel->textureLayers.resize(1);
    panel->textureLayers[0].texture = paint(128, Image_base::RGBA, panelFace);
    panel->textureLayers[0].coordinates =
        coordinates({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, {0.0, 1.0, 0.0}});
    panel->textureLayers[0].clamp = true;
}

} // namespace sgview
