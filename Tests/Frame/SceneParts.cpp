#include "Tests/Frame/SceneParts.h"

#include "Tests/Frame/FrameRenderer.h"

#include <cmath>
#include <numbers>

Stage::Stage()
    : root(make_smart<SGRootNode>()),
      camera(make_smart<SGCameraNode>(root)),
      lit(make_smart<SGLightsNode>(camera))
{
    root->color = background;
    camera->camera = flatCamera({0, 0, FrameRenderer::side, FrameRenderer::side});
    lit->lights.emplace_back();
}

smart_ptr<CameraBase> flatCamera(quarl::Rect<int> const& viewport)
{
    return make_smart<CameraBase>(Matrix(), Matrix::orthographic(-1.0, 1.0, -1.0, 1.0, -10.0, 10.0),
                                  viewport);
}

Material matt(Color const& diffuse)
{
    Material material;
    material.ambient = Color{0.0F, 0.0F, 0.0F, 1.0F};
    material.diffuse = diffuse;
    return material;
}

smart_ptr<SGSurfaceGeometryReferenceNode> addSurface(smart_ptr<SGNode> const& parent,
                                                     smart_ptr<SurfaceGeometryData const> const& geometry,
                                                     Material const& material)
{
    auto node = make_smart<SGSurfaceGeometryReferenceNode>(parent);
    node->setGeometry(make_smart<SharedGeometry>(geometry));
    node->setNormals(make_smart<SharedSurfaceGeometry>(geometry));
    node->setFacets(make_smart<SharedSurfaceGeometry>(geometry));
    node->material = material;
    return node;
}

smart_ptr<SurfaceGeometryData const> squareGeometry(double low, double high, double depth)
{
    auto square = make_smart<SurfaceGeometryData>();
    square->vertices = {{low, low, depth}, {high, low, depth}, {high, high, depth}, {low, high, depth}};
    square->normals.assign(4, UVector3(0.0, 0.0, 1.0));
    square->facets = {0, 1, 2, 0, 2, 3};
    return square;
}

smart_ptr<SurfaceGeometryData const> sphereGeometry(double radius)
{
    constexpr int slices = 32;
    constexpr int stacks = 16;
    auto sphere = make_smart<SurfaceGeometryData>();
    for (int i = 0; i <= stacks; ++i)
        for (int j = 0; j <= slices; ++j) {
            double const polar = std::numbers::pi * i / stacks;
            double const around = 2.0 * std::numbers::pi * j / slices;
            UVector3 const normal(std::sin(polar) * std::sin(around), -std::cos(polar),
                                  std::sin(polar) * std::cos(around));
            sphere->normals.push_back(normal);
            sphere->vertices.push_back(normal * radius);
        }
    for (int i = 0; i < stacks; ++i)
        for (int j = 0; j < slices; ++j) {
            int const corner = i * (slices + 1) + j;
            int const above = corner + slices + 1;
            sphere->facets.insert(sphere->facets.end(),
                                  {corner, corner + 1, above + 1, corner, above + 1, above});
        }
    return sphere;
}

smart_ptr<SGQuadNode> addQuad(smart_ptr<SGNode> const& parent, double low, double high, double depth,
                              Color const& color)
{
    auto quad = make_smart<SGQuadNode>(parent);
    quad->corners = {{low, low, depth}, {high, low, depth}, {high, high, depth}, {low, high, depth}};
    quad->material.setAmbientAndDiffuse(color);
    return quad;
}

smart_ptr<SGCurveGeometryReferenceNode>
addCurve(smart_ptr<SGNode> const& parent, std::vector<Vector3> const& points, bool closed, Color const& color)
{
    auto line = make_smart<GeometryData>();
    line->vertices = points;
    line->closed = closed;
    auto curve = make_smart<SGCurveGeometryReferenceNode>(parent);
    curve->setGeometry(make_smart<SharedGeometry>(line));
    curve->material.ambient = color;
    return curve;
}

smart_ptr<SGTransformNode> addTransform(smart_ptr<SGNode> const& parent, Transform const& transform)
{
    auto node = make_smart<SGTransformNode>(parent);
    node->transform = transform;
    return node;
}

smart_ptr<SharedImage> imageOf(int width, int height, std::vector<std::array<unsigned char, 3>> const& pixels)
{
    auto image = make_smart<Image_base>(width, height);
    auto const columns = static_cast<std::size_t>(width);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        for (std::size_t component = 0; component < 3; ++component)
            image->edit()[i / columns * image->getRowSize() + 3 * (i % columns) + component] =
                pixels[i][component];
    return make_smart<SharedImage>(image);
}

smart_ptr<SharedTextureCoords> textureCoordinates(std::vector<Vector3> const& coordinates)
{
    auto data = make_smart<TextureCoordsData>();
    data->coordinates = coordinates;
    return make_smart<SharedTextureCoords>(data);
}

SGTextureLayer squareLayer(smart_ptr<SharedImage> const& image, double repeats)
{
    SGTextureLayer layer;
    layer.texture = image;
    layer.coordinates = textureCoordinates(
        {{0.0, 0.0, 0.0}, {repeats, 0.0, 0.0}, {repeats, repeats, 0.0}, {0.0, repeats, 0.0}});
    return layer;
}
