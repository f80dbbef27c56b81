#include "SceneGraph/SGRendererManager.h"

#include <gtest/gtest.h>

namespace {

class NothingRenderer : public SGRenderer {
public:
    void render(smart_ptr<SGRootNode>) override {}
    void readPixels(int, int, int, int, PixelFormat, unsigned char*) override {}
};

} // namespace

TEST(SGRendererManager, KeepsTheRegisteredRendererUntilItIsTakenAway)
{
    EXPECT_FALSE(SGRendererManager::getRenderer());
    auto const renderer = make_smart<NothingRenderer>();
    SGRendererManager::setRenderer(renderer);
    EXPECT_EQ(SGRendererManager::getRenderer(), renderer);
    EXPECT_EQ(renderer->referenceCount(), 2);
    SGRendererManager::setRenderer(nullptr);
    EXPECT_FALSE(SGRendererManager::getRenderer());
    EXPECT_EQ(renderer->referenceCount(), 1);
}

TEST(SGRendererManager, IsNotShuttingDownAtFirst)
{
    EXPECT_FALSE(SGRendererManager::shutdown);
}

TEST(SGRenderer, AnswersWithDefaultsWhatARendererDoesNotOverride)
{
    NothingRenderer renderer;
    EXPECT_EQ(renderer.getMaxTextureUnits(), 0);
    EXPECT_FALSE(renderer.isDiagnosticNeeded());
    renderer.readDiagnosticResults();
    renderer.runDiagnostic();
}
