#include "OpenGLRenderer/DiagnosticScene.h"

#include "OpenGLRenderer/DiagnosticImage.h"
#include "OpenGLRenderer/DiagnosticTiming.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"

#include <epoxy/gl.h>

#include <array>
#include <cmath>
#include <cstdlib>

namespace Diagnostic {

class AnimatorVisitor : public SGNodeVisitor {
public:
    explicit AnimatorVisitor(smart_ptr<SharedBoneTransforms> bones) : bones_(std::move(bones)) {}

    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override { node->setBoneTransforms(bones_); }

private:
    smart_ptr<SharedBoneTransforms> bones_;
};

class CleanerVisitor : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGNode* node) override { node->clearExtraData(); }
};

} // namespace Diagnostic

namespace {

constexpr int gridSide = 100; // vertices
constexpr double targetRate = 80.0;
constexpr int enoughSurfaces = 199;

Color rgb(int red, int green, int blue)
{
    constexpr float full = 255.0F;
    return {static_cast<float>(red) / full, static_cast<float>(green) / full,
            static_cast<float>(blue) / full};
}

Material makeMaterial(Color const& ambientAndDiffuse, Color const& specular)
{
    Material material;
    material.setAmbientAndDiffuse(ambientAndDiffuse);
    material.specular = specular;
    return material;
}

void addVertex(SurfaceGeometryData& surface, int i, int j)
{
    surface.vertices.emplace_back(0.3 * (0.01 * i - 0.5), 0.3 * (0.01 * j - 0.5),
                                  0.3 * 0.5 * 0.01 * std::sin(37 * j + i));
    int const a = 5 * i + 2;
    int const b = 7 * i + 3;
    int const c = 11 * i + 4;
    surface.normals.emplace_back(0.5 * std::sin(17 * j + a), 0.5 * std::sin(19 * j + b),
                                 std::abs(5.0 * std::sin(23 * j + c)));
}

void addCell(SurfaceGeometryData& surface, std::int32_t k)
{
    surface.facets.insert(surface.facets.end(),
                          {k, k + 1, k + gridSide, k + 1, k + gridSide + 1, k + gridSide});
}

/// From the first bone to the second along each row. They always turn together, but a skin of one influence
/// would not try what a card adds up.
smart_ptr<BoneWeightsData> makeWeights()
{
    auto weights = make_smart<BoneWeightsData>();
    for (int i = 0; i < gridSide; ++i) {
        for (int j = 0; j < gridSide; ++j) {
            double const second = j / (gridSide - 1.0);
            weights->addVertex(std::array{BoneInfluence{0, 1.0 - second}, BoneInfluence{1, second}});
        }
    }
    return weights;
}

SGLightData makeLight()
{
    SGLightData light;
    light.ambient = rgb(48, 48, 48);
    light.diffuse = rgb(0, 255, 128);
    light.specular = rgb(128, 0, 255);
    light.direction = Vector3(3.0, 4.0, -7.0);
    return light;
}

Matrix makeProjection()
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(-1.0, 1.0, -0.75, 0.75, 1.0, 60.0);
    std::array<double, 16> columnMajor{};
    glGetDoublev(GL_PROJECTION_MATRIX, columnMajor.data());
    return transpose(Matrix(columnMajor));
}

smart_ptr<CameraBase> makeCamera()
{
    quarl::Rect<int> const viewport{0, 0, Diagnostic::testImageSide, Diagnostic::testImageSide};
    return make_smart<CameraBase>(Matrix::rotationMatrix(Vector3(1.0, 0.5, 1.0), 1.0), makeProjection(),
                                  viewport);
}

/// A vector off the C library's generator as it stands, each coordinate within 0.9 of 0.
Vector3 randomVector()
{
    // One draw a statement: the order is part of the scene.
    double const x = 0.9 * std::sin(std::rand() % 1000);
    double const y = 0.9 * std::sin(std::rand() % 1000);
    double const z = 0.9 * std::sin(std::rand() % 1000);
    return {x, y, z};
}

Transform shift(Vector3 const& translation)
{
    return {Matrix3(), translation, 1.0};
}

/// Hangs surfaces of one geometry below a node.
class SurfaceMaker {
public:
    explicit SurfaceMaker(smart_ptr<SGNode> parent) : parent_(std::move(parent))
    {
        smart_ptr<SurfaceGeometryData> const surface = Diagnostic::createRandomSurface();
        geometry_ = make_smart<SharedGeometry>(surface);
        normals_ = make_smart<SharedSurfaceGeometry>(surface);
        facets_ = make_smart<SharedSurfaceGeometry>(surface);
        weights_ = make_smart<SharedBoneWeights>(makeWeights());
    }

    void addFirst() const { add(shift({0.0, 0.0, -1.0}), makeMaterial(rgb(128, 128, 255), rgb(255, 0, 0))); }

    void addRandom() const
    {
        Vector3 const p = randomVector();
        add(shift({p.x, p.y, p.z - 1.0}) * Transform(p, 0.5),
            makeMaterial(rgb(128, 255, 128), rgb(0, 0, 255)));
    }

private:
    void add(Transform const& transform, Material const& material) const
    {
        auto const place = make_smart<SGTransformNode>(parent_);
        place->transform = transform;
        auto const surface = make_smart<SGSurfaceGeometryReferenceNode>(place);
        surface->setGeometry(geometry_);
        surface->setNormals(normals_);
        surface->setFacets(facets_);
        surface->setBoneWeights(weights_);
        surface->material = material;
    }

    smart_ptr<SGNode> parent_;
    smart_ptr<SharedGeometry> geometry_;
    smart_ptr<SharedSurfaceGeometry> normals_;
    smart_ptr<SharedSurfaceGeometry> facets_;
    smart_ptr<SharedBoneWeights> weights_;
};

void walk(smart_ptr<SGRootNode> const& root, smart_ptr<SGNodeVisitor> const& visitor)
{
    SGTraverser traverser(visitor);
    root->acceptEnter(&traverser);
    root->acceptLeave(&traverser);
}

} // namespace

smart_ptr<SurfaceGeometryData> Diagnostic::createRandomSurface()
{
    auto surface = make_smart<SurfaceGeometryData>();
    for (int i = 0; i < gridSide; ++i)
        for (int j = 0; j < gridSide; ++j)
            addVertex(*surface, i, j);
    for (int i = 0; i < gridSide - 1; ++i)
        for (int j = 0; j < gridSide - 1; ++j)
            addCell(*surface, gridSide * i + j);
    return surface;
}

smart_ptr<SGRootNode> Diagnostic::createTestSceneGraph()
{
    auto root = make_smart<SGRootNode>();
    root->color = rgb(255, 255, 255);
    auto const lights = make_smart<SGLightsNode>(root);
    lights->lights.push_back(makeLight());
    auto const camera = make_smart<SGCameraNode>(lights);
    camera->camera = makeCamera();

    SurfaceMaker const surfaces(camera);
    surfaces.addFirst();
    int count = 1;
    while (testFPS(root, false) > targetRate && count <= enoughSurfaces) {
        for (int i = 0; i < count; ++i)
            surfaces.addRandom();
        count *= 2;
    }
    static LogChannel const channel("opengl");
    channel.write("Done creating test scene -- number of surfaces = ", stringize(count));
    return root;
}

void Diagnostic::animateSceneGraph(smart_ptr<SGRootNode> const& root,
                                   smart_ptr<SharedBoneTransforms> const& bones)
{
    walk(root, make_smart<AnimatorVisitor>(bones));
}

void Diagnostic::cleanSceneGraph(smart_ptr<SGRootNode> const& root)
{
    walk(root, make_smart<CleanerVisitor>());
}
