#include "Tests/RecordingGL/StandIn.h"
#include "Tests/Unit/OpenGLRenderer/CountedAllocations.h"
#include "Tests/Unit/OpenGLRenderer/SceneOfEveryKind.h"
#include "Tests/Unit/OpenGLRenderer/Technique.h"

#include <new>

using namespace RendererTesting;

namespace {

class FailedAllocation : public TechniqueTest {
protected:
    FailedAllocation() { choose(GetParam()); }

    /// \return whether the n-th allocation was wanted at all
    bool renderWithoutMemory(SceneOfEveryKind const& scene, std::size_t n)
    {
        LogCapture const quiet;
        CountedAllocations::fail(n, StandInAtWork::any);
        try {
            GLRenderer::renderer->render(scene.root);
        } catch (std::bad_alloc const&) {
        }
        return !CountedAllocations::stopFailing();
    }

    std::vector<RecordingGL::Draw> draws(SceneOfEveryKind const& scene)
    {
        std::size_t const before = gl.draws().size();
        static_cast<void>(render(scene.root));
        return {gl.draws().begin() + static_cast<std::ptrdiff_t>(before), gl.draws().end()};
    }
};

INSTANTIATE_TEST_SUITE_P(Every, FailedAllocation, testing::ValuesIn(techniques), nameOf);

} // namespace

TEST_P(FailedAllocation, LeavesTheSceneAsItWasGivenAndTheNextFrameRight)
{
    auto const expected = draws(SceneOfEveryKind());
    std::size_t n = 1;
    for (bool wanted = true; wanted; ++n) {
        SceneOfEveryKind const scene;
        auto const before = scene.references();
        wanted = renderWithoutMemory(scene, n);
        ASSERT_EQ(scene.references(), before) << "after allocation " << n;
        ASSERT_TRUE(scene.mirrored->textureLayers[0].colorize) << "after allocation " << n;
        ASSERT_EQ(draws(scene), expected) << "after allocation " << n;
    }
    EXPECT_GT(n, 100U);
    for (RecordingGL::Names const& names : {gl.buffers(), gl.programs(), gl.shaderObjects(), gl.textures()})
        EXPECT_EQ(names.generated, names.deleted);
}
