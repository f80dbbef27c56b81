#include "OpenGLRenderer/Strategist.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Tests/Unit/OpenGLRenderer/CountedAllocations.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

template <typename Result, typename... Arguments>
void silence(Result (*&entryPoint)(Arguments...))
{
    entryPoint = [](Arguments...) -> Result { return Result(); };
}

/// From now on OpenGL calls are neither recorded nor answered: recording allocates.
void silenceAll()
{
#define SG_GL_CALL(name, ...) silence(epoxy_##name);
#include "Tests/RecordingGL/GLCalls.def"
#undef SG_GL_CALL
    silence(epoxy_glGetError);
    silence(epoxy_glBindBufferARB);
    silence(epoxy_glVertexPointer);
    silence(epoxy_glNormalPointer);
    silence(epoxy_glTexCoordPointer);
    silence(epoxy_glClientActiveTextureARB);
    silence(epoxy_glEnableClientState);
    silence(epoxy_glDisableClientState);
    silence(epoxy_glDrawElements);
}

struct Usage {
    std::size_t allocations;
    std::size_t bytes;

    bool operator==(Usage const&) const = default;
};

/// Surfaces of so many vertices, with layers of texture, each under its own transform.
smart_ptr<SGRootNode> scene(int surfaces, std::size_t vertices, bool skinned)
{
    auto root = make_smart<SGRootNode>();
    auto const camera = make_smart<SGCameraNode>(root);
    camera->camera = make_smart<CameraBase>(Matrix(), Matrix(), quarl::Rect<int>{0, 0, 640, 480});
    auto const lights = make_smart<SGLightsNode>(camera);
    lights->lights.resize(1);
    SGTextureLayer layer;
    layer.texture = sharedImage();
    layer.coordinates = sharedCoordinates(std::vector<Vector3>(vertices));
    std::vector<BoneInfluence> const list{{0, 0.5}, {1, 0.5}};
    for (int i = 0; i < surfaces; ++i) {
        auto const surface = triangle(make_smart<SGTransformNode>(lights));
        surface->setGeometry(sharedGeometry(std::vector<Vector3>(vertices)));
        surface->setNormals(sharedNormals(std::vector<UVector3>(vertices)));
        surface->textureLayers.assign(2, layer);
        if (skinned) {
            surface->setBoneWeights(sharedWeights(std::vector<std::vector<BoneInfluence>>(vertices, list)));
            surface->setBoneTransforms(sharedPose(std::vector<BoneTransform>(2)));
        }
    }
    return root;
}

class Allocation : public RendererTest, public testing::WithParamInterface<bool> {
protected:
    Allocation()
    {
        Capabilities caps;
        caps.vbo = GetParam();
        GLRenderer::renderer->strategy = Strategist::computeStrategy(caps);
    }

    /// Of the eleventh frame.
    Usage usage(smart_ptr<SGRootNode> const& root)
    {
        GLRenderer::renderer->render(root);
        static_cast<void>(gl.takeCalls());
        silenceAll();
        for (int frame = 1; frame < 10; ++frame)
            GLRenderer::renderer->render(root);
        Usage const before{CountedAllocations::count(), CountedAllocations::bytes()};
        GLRenderer::renderer->render(root);
        return {CountedAllocations::count() - before.allocations, CountedAllocations::bytes() - before.bytes};
    }
};

INSTANTIATE_TEST_SUITE_P(Every, Allocation, testing::Values(false, true),
                         [](auto const& vbo) { return vbo.param ? "vbo" : "plain"; });

} // namespace

TEST_P(Allocation, IsCounted)
{
    std::size_t const before = CountedAllocations::count();
    static_cast<void>(make_smart<SGRootNode>());
    EXPECT_GT(CountedAllocations::count(), before);
}

TEST_P(Allocation, IsNoneInAFrameOfAStillScene)
{
    EXPECT_EQ(usage(scene(20, 100, false)), (Usage{0, 0}));
}

TEST_P(Allocation, IsNoneInAFrameOfAnAnimatedScene)
{
    EXPECT_EQ(usage(scene(20, 100, true)), (Usage{0, 0}));
}
