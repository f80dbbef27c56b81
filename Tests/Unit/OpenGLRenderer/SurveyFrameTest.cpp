#include "OpenGLRenderer/ManualAnimator.h"
#include "OpenGLRenderer/ManualClearVisitor.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/OpenGLRenderer/Technique.h"

using namespace RendererTesting;

namespace {

SGTextureLayer layerOf(smart_ptr<SharedImage> const& image)
{
    SGTextureLayer layer;
    layer.texture = image;
    layer.coordinates =
        sharedCoordinates({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {1.0, 1.0, 0.0}});
    return layer;
}

/// A scene that changes from frame to frame in every way that passes look for. No two pictures appear at
/// once: the order of their uploads is nobody's.
class ChangingScene {
public:
    ChangingScene()
    {
        camera->camera = make_smart<CameraBase>(Matrix(), Matrix(), quarl::Rect<int>{0, 0, 640, 480});
        quad->corners = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, {0.0, 1.0, 0.0}};
        curve->setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 1.0, 1.0}}));
        lights->lights.resize(1);
        tinted->textureLayers.push_back(layerOf(sharedImage()));
        skinned->setBoneWeights(sharedWeights({{{0, 1.0}}, {{1, 0.75}, {0, 0.25}}, {}}));
        skinned->setBoneTransforms(sharedPose({BoneTransform{Matrix3(), {0.0, 0.0, 3.0}}, BoneTransform()}));
    }

    void change(int frame)
    {
        switch (frame) {
        case 2:
            skinned->getBoneTransforms()->edit().transforms[0].translation = {1.0, 2.0, 3.0};
            transform->transform = Transform(Matrix3(), {}, -2.0);
            break;
        case 3:
            tinted->textureLayers[0].colorize = true;
            break;
        case 4:
            plain->setGeometry(sharedGeometry({{3.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}}));
            skinned->setBoneWeights(sharedWeights({{{0, 0.5}}, {{1, 0.75}}, {{1, 1.0}}}));
            transform->transform = Transform();
            break;
        case 5:
            added = triangle(transform);
            quad->textureLayers.push_back(layerOf(sharedImage()));
            plain->setBoneWeights(skinned->getBoneWeights());
            plain->setBoneTransforms(skinned->getBoneTransforms());
            break;
        case 6:
            tinted->setNormals(sharedNormals(std::vector<UVector3>(3, UVector3(Vector3{0.0, 1.0, 0.0}))));
            curve->textureLayers.push_back(layerOf(sharedImage()));
            added->textureLayers.push_back(curve->textureLayers[0]);
            break;
        case 7:
            skinned->setBoneTransforms(nullptr);
            added->setFacets(sharedFacets({2, 1, 0}));
            curve->setGeometry(sharedGeometry({{0.0, 0.0, 5.0}, {1.0, 1.0, 1.0}}));
            break;
        case 8:
            plain->deparent();
            break;
        default:
            break;
        }
    }

    static constexpr int frames = 10;
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();

private:
    smart_ptr<SGCameraNode> camera = make_smart<SGCameraNode>(root);
    smart_ptr<SGQuadNode> quad = make_smart<SGQuadNode>(camera);
    smart_ptr<SGCurveGeometryReferenceNode> curve = make_smart<SGCurveGeometryReferenceNode>(camera);
    smart_ptr<SGLightsNode> lights = make_smart<SGLightsNode>(camera);
    smart_ptr<SGTransformNode> transform = make_smart<SGTransformNode>(lights);
    smart_ptr<SGSurfaceGeometryReferenceNode> plain = triangle(transform);
    smart_ptr<SGSurfaceGeometryReferenceNode> tinted = triangle(transform);
    smart_ptr<SGSurfaceGeometryReferenceNode> skinned = triangle(transform);
    smart_ptr<SGSurfaceGeometryReferenceNode> added;
};

struct FrameRecord {
    Calls calls;
    std::vector<RecordingGL::Draw> draws;
};

void walk(SGRootNode& root)
{
    for (smart_ptr<SGNodeVisitor> const& pass : GLRenderer::renderer->strategy)
        show(*pass, root);
}

class SurveyFrame : public testing::TestWithParam<Technique> {
protected:
    /// \param walked  by every pass on its own, as a strategy says
    static std::vector<FrameRecord> frames(bool walked)
    {
        AssetFolder assets;
        for (char const* const path :
             {"Shaders/defaultVertexProgram.txt", "Shaders/animationVertexProgram.txt",
              "Shaders/animationVertexShader.txt"})
            assets.write(path, "text");
        LogCapture const quiet;
        RecordingGL gl;
        gl.setString(GL_VERSION, "2.1 Recording");
        gl.setString(GL_EXTENSIONS, "GL_ARB_multitexture");
        gl.setIntegers(GL_MAX_TEXTURE_UNITS_ARB, {2});
        smart_ptr<GLRenderer> const renderer(new GLRenderer);
        renderer->strategy = Strategist::computeStrategy(GetParam().caps);
        ChangingScene scene;
        std::vector<FrameRecord> records;
        for (int frame = 0; frame < ChangingScene::frames; ++frame) {
            scene.change(frame);
            static_cast<void>(gl.takeCalls());
            std::size_t const drawn = gl.draws().size();
            if (walked)
                walk(*scene.root);
            else
                renderer->render(scene.root);
            records.push_back({gl.takeCalls(),
                               {gl.draws().begin() + static_cast<std::ptrdiff_t>(drawn), gl.draws().end()}});
        }
        GLRenderer::renderer.reset();
        return records;
    }
};

INSTANTIATE_TEST_SUITE_P(Every, SurveyFrame, testing::ValuesIn(techniques), nameOf);

/// Changes the first surface it meets.
class Meddler : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        if (!std::exchange(done, true))
            node->setGeometry(sharedGeometry({{9.0, 9.0, 9.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}}));
    }

    bool done = false;
};

class StillFrame : public RendererTest {
protected:
    StillFrame() { GLRenderer::renderer->strategy = Strategist::computeStrategy(Capabilities()); }

    void render() { GLRenderer::renderer->render(root); }

    std::vector<smart_ptr<SGNodeVisitor>>& strategy = GLRenderer::renderer->strategy;
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle(root);
};

} // namespace

TEST_P(SurveyFrame, MakesTheCallsThatWalkingEveryPassMakes)
{
    static_cast<void>(frames(true)); // OpenGL's version is asked for once a process
    auto const expected = frames(true);
    auto const actual = frames(false);
    for (std::size_t frame = 0; frame < expected.size(); ++frame) {
        SCOPED_TRACE(frame);
        ASSERT_EQ(actual[frame].calls.size(), expected[frame].calls.size());
        for (std::size_t i = 0; i < expected[frame].calls.size(); ++i)
            ASSERT_EQ(actual[frame].calls[i], expected[frame].calls[i]) << "call " << i;
        EXPECT_TRUE(actual[frame].draws == expected[frame].draws);
        EXPECT_FALSE(actual[frame].draws.empty());
    }
}

TEST_F(StillFrame, SeesWhatAForeignPassHasChangedMeanwhile)
{
    render();
    auto const converter = strategy.begin() + 3;
    strategy.insert(converter, make_smart<SGTraverser>(make_smart<Meddler>()));
    render();
    EXPECT_EQ(gl.draws().back().positions[0], (std::array<float, 3>{9.0F, 9.0F, 9.0F}));
}

TEST_F(StillFrame, ToleratesAForeignPassThatTakesNodesOut)
{
    strategy.insert(strategy.begin() + 1, make_smart<ManualClearVisitor>());
    strategy.insert(strategy.end() - 1, make_smart<ManualUnClearVisitor>());
    for (int frame = 0; frame < 3; ++frame)
        render();
    EXPECT_EQ(gl.count("glEnd"), 3);
    EXPECT_EQ(root->getFirstChild(), surface.get());
}

TEST_F(StillFrame, PutsBackWhatAnEarlierFrameHasLeft)
{
    auto const rest = surface->getGeometry();
    surface->setBoneWeights(sharedWeights({{{0, 1.0}}, {}, {}}));
    surface->setBoneTransforms(sharedPose({BoneTransform{Matrix3(), {0.0, 0.0, 3.0}}}));
    ManualAnimator animator;
    show(animator, *surface);
    EXPECT_NE(surface->getGeometry(), rest);
    render();
    EXPECT_EQ(surface->getGeometry(), rest);
    EXPECT_EQ(gl.draws().back().positions[0], (std::array<float, 3>{0.0F, 0.0F, 3.0F})) << "moved once";
    show(animator, *surface);
    surface->setBoneTransforms(nullptr);
    render();
    EXPECT_EQ(surface->getGeometry(), rest) << "though it is skinned no more";
}

TEST_F(StillFrame, KeepsTheArraysOfASkinnedSurface)
{
    surface->setBoneWeights(sharedWeights({{{0, 1.0}}, {}, {}}));
    surface->setBoneTransforms(sharedPose({BoneTransform()}));
    std::set<void const*> arrays;
    gl.setWatcher([&](std::string_view call) {
        if (call.starts_with("glDrawElements"))
            arrays.insert(gl.positionSource.pointer);
    });
    for (int frame = 0; frame < 5; ++frame)
        render();
    EXPECT_EQ(arrays.size(), 1U);
    gl.setWatcher({});
}
