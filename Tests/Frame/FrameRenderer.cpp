#include "Tests/Frame/FrameRenderer.h"

std::unique_ptr<sgview::OffscreenRenderer> FrameRenderer::renderer;

void FrameRenderer::SetUp()
{
    if (testing::Test::IsSkipped())
        return;
    renderer = std::make_unique<sgview::OffscreenRenderer>(sgview::PictureSize{side_, side_});
}

void FrameRenderer::TearDown()
{
    renderer.reset();
}

sgview::Picture FrameRenderer::draw(smart_ptr<SGRootNode> const& root)
{
    return renderer->draw(root);
}
