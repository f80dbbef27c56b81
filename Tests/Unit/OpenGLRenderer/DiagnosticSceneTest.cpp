#include "OpenGLRenderer/DiagnosticScene.h"

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/Maths/MathsTesting.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedClock.h"

#include <cmath>
#include <numeric>

using namespace RendererTesting;

namespace {

class Nodes : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGNode* node) override { all.push_back(node); }
    void enter(SGLightsNode* node) override { add(lights, node); }
    void enter(SGCameraNode* node) override { add(cameras, node); }
    void enter(SGTransformNode* node) override { add(transforms, node); }
    void enter(SGSurfaceGeometryReferenceNode* node) override { add(surfaces, node); }

    std::vector<SGNode*> all;
    std::vector<SGLightsNode*> lights;
    std::vector<SGCameraNode*> cameras;
    std::vector<SGTransformNode*> transforms;
    std::vector<SGSurfaceGeometryReferenceNode*> surfaces;

private:
    template <typename Node>
    void add(std::vector<Node*>& kind, Node* node)
    {
        kind.push_back(node);
        all.push_back(node);
    }
};

smart_ptr<Nodes> nodesOf(SGRootNode& root)
{
    auto nodes = make_smart<Nodes>();
    SGTraverser traverser(nodes);
    root.acceptEnter(&traverser);
    return nodes;
}

class DiagnosticScene : public RendererTest {
protected:
    DiagnosticScene()
    {
        gl.keepCountsOnly();
        std::vector<double> columns(16);
        std::iota(columns.begin(), columns.end(), 1.0);
        gl.setDoubles(GL_PROJECTION_MATRIX, columns);
    }

    /// The scene of a machine that needs so many microseconds for three frames of 1, 2, 4... surfaces.
    smart_ptr<SGRootNode> build(std::vector<std::int64_t> const& threeFrames)
    {
        clock.steps.clear();
        for (std::int64_t const time : threeFrames)
            clock.steps.insert(clock.steps.end(), {0, 1, 1, time});
        return Diagnostic::createTestSceneGraph();
    }

    smart_ptr<SGRootNode> buildSmallest() { return build({37'500}); }

    int surfacesOf(std::vector<std::int64_t> const& threeFrames)
    {
        return static_cast<int>(nodesOf(*build(threeFrames))->surfaces.size());
    }

    ScriptedClock clock;
    LogCapture log;
};

constexpr double tolerance = 1e-14;
std::int64_t const fast = 37'499;
std::int64_t const atTarget = 37'500; // 80.0 frames a second

Color bytes(float red, float green, float blue)
{
    return {red / 255.0F, green / 255.0F, blue / 255.0F, 1.0F};
}

void expectMaterial(Material const& material, Color const& ambientAndDiffuse, Color const& specular)
{
    Material expected;
    expected.ambient = ambientAndDiffuse;
    expected.diffuse = ambientAndDiffuse;
    expected.ambdiff = true;
    expected.specular = specular;
    EXPECT_EQ(material, expected);
}

/// Rodrigues' formula.
Vector3 turned(Vector3 const& v, Vector3 const& about, double angle)
{
    UVector3 const axis(about);
    return std::cos(angle) * v + std::sin(angle) * cross(axis, v) +
           (1.0 - std::cos(angle)) * dot(axis, v) * axis;
}

} // namespace

TEST_F(DiagnosticScene, StandsBeforeWhiteInOneLight)
{
    auto const root = buildSmallest();
    EXPECT_EQ(root->color, (Color{1.0F, 1.0F, 1.0F, 1.0F}));
    EXPECT_TRUE(root->clearColor);
    EXPECT_TRUE(root->clearDepth);
    auto const nodes = nodesOf(*root);
    ASSERT_EQ(nodes->lights.size(), 1U);
    ASSERT_EQ(nodes->lights[0]->lights.size(), 1U);
    SGLightData const& light = nodes->lights[0]->lights[0];
    EXPECT_EQ(light.direction, Vector3(3.0, 4.0, -7.0));
    EXPECT_EQ(light.ambient, bytes(48, 48, 48));
    EXPECT_EQ(light.diffuse, bytes(0, 255, 128));
    EXPECT_EQ(light.specular, bytes(128, 0, 255));
}

TEST_F(DiagnosticScene, HasAFixedCamera)
{
    std::vector<std::string> calls;
    gl.setWatcher([&](std::string_view call) { calls.emplace_back(call); });
    auto const root = buildSmallest();
    gl.setWatcher({});
    ASSERT_GT(calls.size(), 4U);
    calls.resize(4);
    EXPECT_EQ(calls, (Calls{"glMatrixMode(GL_PROJECTION)", "glLoadIdentity()",
                            "glFrustum(-1, 1, -0.75, 0.75, 1, 60)", "glGetDoublev(GL_PROJECTION_MATRIX)"}));

    auto const nodes = nodesOf(*root);
    ASSERT_EQ(nodes->cameras.size(), 1U);
    CameraBase const& camera = *nodes->cameras[0]->camera;
    EXPECT_EQ(camera.projection, Matrix({1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16}));
    EXPECT_EQ(camera.viewport, (quarl::Rect<int>{0, 0, 512, 512}));
    for (Vector3 const& point : {Vector3(1, 0, 0), Vector3(0, 1, 0), Vector3(0, 0, 1)})
        EXPECT_CLOSE(transformPoint(camera.view, point), turned(point, Vector3(1.0, 0.5, 1.0), 1.0),
                     tolerance);
    EXPECT_EQ(translationOf(camera.view), Vector3());
}

TEST_F(DiagnosticScene, HangsSurfacesBelowTransformsBelowTheCameraInTheLight)
{
    auto const root = build({fast, fast, atTarget});
    auto const nodes = nodesOf(*root);
    EXPECT_EQ(nodes->all.size(), 3U + 4U + 4U);
    EXPECT_EQ(nodes->lights[0]->getParent(), root.get());
    EXPECT_EQ(nodes->cameras[0]->getParent(), nodes->lights[0]);
    ASSERT_EQ(nodes->transforms.size(), 4U);
    ASSERT_EQ(nodes->surfaces.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(nodes->transforms[i]->getParent(), nodes->cameras[0]);
        EXPECT_EQ(nodes->surfaces[i]->getParent(), nodes->transforms[i]);
    }
}

TEST_F(DiagnosticScene, HasItsFirstSurfaceOneUnitAway)
{
    auto const root = buildSmallest();
    auto const nodes = nodesOf(*root);
    ASSERT_EQ(nodes->transforms.size(), 1U);
    EXPECT_EQ(nodes->transforms[0]->transform, Transform(Matrix3(), {0.0, 0.0, -1.0}, 1.0));
    expectMaterial(nodes->surfaces[0]->material, bytes(128, 128, 255), bytes(255, 0, 0));
}

TEST_F(DiagnosticScene, PlacesTheOthersByTheGeneratorAsItStands)
{
    std::srand(20);
    auto const root = build({fast, fast, fast, atTarget});
    std::srand(20);
    auto const nodes = nodesOf(*root);
    ASSERT_EQ(nodes->transforms.size(), 8U);
    for (std::size_t i = 1; i < 8; ++i) {
        Vector3 p;
        for (double* const coordinate : {&p.x, &p.y, &p.z})
            *coordinate = 0.9 * std::sin(std::rand() % 1000);
        Transform const& transform = nodes->transforms[i]->transform;
        EXPECT_CLOSE(transform.getTranslation(), Vector3(p.x, p.y, p.z - 1.0), tolerance);
        EXPECT_DOUBLE_EQ(transform.getScale(), 1.0);
        for (Vector3 const& point : {Vector3(1, 0, 0), Vector3(0, 1, 0), Vector3(0, 0, 1)})
            EXPECT_CLOSE(transform.getRotation() * point, turned(point, p, 0.5), tolerance);
        expectMaterial(nodes->surfaces[i]->material, bytes(128, 255, 128), bytes(0, 0, 255));
    }
}

TEST_F(DiagnosticScene, DrawsThreeNumbersASurface)
{
    std::srand(20);
    static_cast<void>(build({fast, fast, fast, atTarget}));
    int const next = std::rand();
    std::srand(20);
    for (int i = 0; i < 3 * 7; ++i)
        static_cast<void>(std::rand());
    EXPECT_EQ(next, std::rand());
}

TEST_F(DiagnosticScene, SharesOneGeometryInThreeWrappers)
{
    auto const root = build({fast, fast, atTarget});
    auto const nodes = nodesOf(*root);
    SGSurfaceGeometryReferenceNode const& first = *nodes->surfaces.front();
    smart_ptr<GeometryData const> const record = first.getGeometry()->get();
    EXPECT_EQ(first.getNormals()->get(), record);
    EXPECT_EQ(first.getFacets()->get(), record);
    EXPECT_NE(first.getNormals(), first.getFacets());
    for (SGSurfaceGeometryReferenceNode const* const surface : nodes->surfaces) {
        EXPECT_EQ(surface->getGeometry(), first.getGeometry());
        EXPECT_EQ(surface->getNormals(), first.getNormals());
        EXPECT_EQ(surface->getFacets(), first.getFacets());
        EXPECT_EQ(surface->getBoneWeights(), first.getBoneWeights());
    }
    auto const fresh = Diagnostic::createRandomSurface();
    EXPECT_TRUE(record->vertices == fresh->vertices);
    EXPECT_TRUE(first.getFacets()->get()->facets == fresh->facets);
}

TEST_F(DiagnosticScene, HasWeightsForTwoBonesAndNoPose)
{
    auto const root = build({fast, atTarget});
    auto const nodes = nodesOf(*root);
    for (SGSurfaceGeometryReferenceNode const* const surface : nodes->surfaces) {
        EXPECT_FALSE(surface->getBoneTransforms());
        BoneWeightsData const& weights = *surface->getBoneWeights()->get();
        ASSERT_EQ(weights.size(), 10'000U);
        std::array<double, 2> sums{};
        for (std::size_t vertex = 0; vertex < weights.size(); ++vertex) {
            double sum = 0.0;
            for (BoneInfluence const& influence : weights.influences(vertex)) {
                ASSERT_GE(influence.bone, 0);
                ASSERT_LT(influence.bone, 2);
                sum += influence.weight;
                sums[static_cast<std::size_t>(influence.bone)] += influence.weight;
            }
            ASSERT_NEAR(sum, 1.0, 1e-15);
        }
        EXPECT_GT(sums[0], 1'000.0) << "both bones hold the surface";
        EXPECT_GT(sums[1], 1'000.0);
    }
}

TEST_F(DiagnosticScene, DoublesWhileItIsDrawnFasterThanTheTarget)
{
    EXPECT_EQ(surfacesOf({atTarget}), 1);
    EXPECT_EQ(log.text(), "opengl: Ran time test, got 80\n"
                          "opengl: Done creating test scene -- number of surfaces = 1\n");
    EXPECT_EQ(surfacesOf({90'000}), 1);
    EXPECT_EQ(surfacesOf({fast, atTarget}), 2);
    EXPECT_EQ(surfacesOf({fast, fast, atTarget}), 4);
    EXPECT_EQ(surfacesOf({fast, fast, fast, 60'000}), 8);
}

TEST_F(DiagnosticScene, DrawsEverySurfaceInEveryFrame)
{
    static_cast<void>(gl.takeCalls());
    EXPECT_EQ(surfacesOf({fast, fast, atTarget}), 4);
    EXPECT_EQ(gl.count("glDrawElements"), 5 * (1 + 2 + 4));
    EXPECT_EQ(gl.count("glFinish"), 15);
}

TEST_F(DiagnosticScene, MayEndAtOneHundredAndTwentyEightSurfaces)
{
    std::vector<std::int64_t> times(7, fast);
    times.push_back(atTarget);
    EXPECT_EQ(surfacesOf(times), 128);
    EXPECT_THAT(log.text(),
                testing::EndsWith("opengl: Ran time test, got 80\n"
                                  "opengl: Done creating test scene -- number of surfaces = 128\n"));
}

TEST_F(DiagnosticScene, EndsAtTwoHundredAndFiftySixSurfacesHoweverFast)
{
    static_cast<void>(gl.takeCalls());
    EXPECT_EQ(surfacesOf(std::vector<std::int64_t>(20, 30)), 256);
    std::string expected;
    for (int test = 0; test < 9; ++test) // the last with all 256
        expected += "opengl: Ran time test, got 100000\n";
    EXPECT_EQ(log.text(), expected + "opengl: Done creating test scene -- number of surfaces = 256\n");
    EXPECT_EQ(gl.count("glDrawElements"), 5 * 511);
}

TEST_F(DiagnosticScene, IsNotKeptSmallByASlowFirstFrame)
{
    clock.steps = {0, 5'000'000, 1, fast, 0, 5'000'000, 1, atTarget};
    EXPECT_EQ(nodesOf(*Diagnostic::createTestSceneGraph())->surfaces.size(), 2U);
}

TEST_F(DiagnosticScene, GivesEverySurfaceThePose)
{
    auto const root = build({fast, fast, atTarget});
    auto const nodes = nodesOf(*root);
    smart_ptr<SharedBoneWeights> const weights = nodes->surfaces[0]->getBoneWeights();
    for (int i = 0; i < 2; ++i) {
        auto const pose = sharedPose(std::vector<BoneTransform>(2));
        Diagnostic::animateSceneGraph(root, pose);
        for (SGSurfaceGeometryReferenceNode const* const surface : nodes->surfaces) {
            EXPECT_EQ(surface->getBoneTransforms(), pose);
            EXPECT_EQ(surface->getBoneWeights(), weights);
        }
        EXPECT_EQ(pose->referenceCount(), 1 + 4);
    }
}

TEST_F(DiagnosticScene, IsCleanedOfAllThatHangsOnItsNodesAndOfNothingElse)
{
    class Record : public SGExtraData {};
    auto const root = build({fast, atTarget});
    Diagnostic::animateSceneGraph(root, sharedPose(std::vector<BoneTransform>(2)));
    auto const nodes = nodesOf(*root);
    ASSERT_EQ(nodes->all.size(), 3U + 2U + 2U);
    SGSurfaceGeometryReferenceNode const& surface = *nodes->surfaces[0];
    std::vector<SGObject*> const wrappers{surface.getGeometry().get(), surface.getNormals().get(),
                                          surface.getFacets().get(), surface.getBoneWeights().get(),
                                          surface.getBoneTransforms().get()};
    auto const record = make_smart<Record>();
    for (SGNode* const node : nodes->all)
        for (char const* const key : {"GLsomething", "a host's"})
            node->setExtraData(key, record);
    for (SGObject* const wrapper : wrappers)
        wrapper->setExtraData("GLsomething", record);

    Diagnostic::cleanSceneGraph(root);
    for (SGNode const* const node : nodes->all)
        EXPECT_FALSE(node->hasExtraData());
    for (SGObject const* const wrapper : wrappers)
        EXPECT_EQ(wrapper->privateGetExtraData("GLsomething"), record);
    EXPECT_EQ(surface.getBoneTransforms()->get().transforms.size(), 2U);
}

TEST_F(DiagnosticScene, GoesAsAWhole)
{
    auto root = build({fast, atTarget});
    std::vector<weak_ptr<SGObject>> watched;
    {
        auto const nodes = nodesOf(*root);
        for (SGNode* const node : nodes->all)
            watched.emplace_back(smart_ptr<SGObject>(node));
        SGSurfaceGeometryReferenceNode const& surface = *nodes->surfaces[0];
        watched.emplace_back(smart_ptr<SGObject>(surface.getGeometry()));
        watched.emplace_back(smart_ptr<SGObject>(surface.getNormals()));
        watched.emplace_back(smart_ptr<SGObject>(surface.getFacets()));
        watched.emplace_back(smart_ptr<SGObject>(surface.getBoneWeights()));
    }
    root.reset();
    for (weak_ptr<SGObject> const& object : watched)
        EXPECT_TRUE(object.expired());
}
