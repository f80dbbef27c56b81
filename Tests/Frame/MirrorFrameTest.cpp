#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/SceneParts.h"

#include "SceneGraph/SGRendererManager.h"
#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/OpenGLErrors.h"

#include <epoxy/gl.h>

#include <numbers>

namespace {

constexpr Rgb background{51, 102, 153};

/// A frame of a host that wants no back faces drawn.
sgview::Picture drawWithoutBackFaces(smart_ptr<SGRootNode> const& root)
{
    sgview::setHostState();
    glEnable(GL_CULL_FACE);
    SGRendererManager::getRenderer()->render(root);
    sgview::checkOpenGL("while drawing without back faces");
    sgview::Picture picture({FrameRenderer::side, FrameRenderer::side});
    SGRendererManager::getRenderer()->readPixels(0, 0, FrameRenderer::side, FrameRenderer::side,
                                                 SGRenderer::RGBA, picture.pixels.data());
    return picture;
}

/// Six sides of six colours, turned so that three are seen.
void addCube(smart_ptr<SGNode> const& parent, bool unlit = false)
{
    auto const tilted = addTransform(parent, Transform(Vector3(1.0, -1.0, 0.2), 0.7));
    double const quarter = std::numbers::pi / 2.0;
    std::array<Transform, 6> const sides{Transform(),
                                         Transform(Vector3(0.0, 1.0, 0.0), quarter),
                                         Transform(Vector3(0.0, 1.0, 0.0), 2.0 * quarter),
                                         Transform(Vector3(0.0, 1.0, 0.0), 3.0 * quarter),
                                         Transform(Vector3(1.0, 0.0, 0.0), quarter),
                                         Transform(Vector3(1.0, 0.0, 0.0), 3.0 * quarter)};
    std::array<Color, 6> const colors{{{1.0F, 0.0F, 0.0F, 1.0F},
                                       {0.0F, 1.0F, 0.0F, 1.0F},
                                       {0.0F, 0.0F, 1.0F, 1.0F},
                                       {1.0F, 1.0F, 0.0F, 1.0F},
                                       {0.0F, 1.0F, 1.0F, 1.0F},
                                       {1.0F, 0.0F, 1.0F, 1.0F}}};
    for (std::size_t i = 0; i < sides.size(); ++i) {
        Material material = matt(colors[i]);
        material.ambient = colors[i];
        addSurface(addTransform(tilted, sides[i]), squareGeometry(-0.45, 0.45, 0.45), material)->unlit =
            unlit;
    }
}

TEST(MirrorFrame, CullingShowsFrontsOnly)
{
    Stage stage;
    addSurface(addTransform(stage.lit, Transform(Vector3(0.0, 1.0, 0.0), std::numbers::pi)),
               squareGeometry(-0.5, 0.5), matt({1.0F, 0.0F, 0.0F, 1.0F}));
    EXPECT_TRUE(showsAt(drawWithoutBackFaces(stage.root), 128, 128, background));
}

TEST(MirrorFrame, ClosedBodyShowsItsFrontsWhenMirrored)
{
    for (double scale : {1.0, -1.0}) {
        SCOPED_TRACE(scale);
        Stage stage;
        addCube(addTransform(stage.lit, Transform(Matrix3(), Vector3(0.1, 0.05, 0.0), scale)), true);
        sgview::Picture const allFaces = FrameRenderer::draw(stage.root);
        EXPECT_NE(pixelAt(allFaces, 128, 128), background);
        EXPECT_TRUE(looksLike(drawWithoutBackFaces(stage.root), allFaces, "mirroredCube"));
    }
}

TEST(MirrorFrame, FrontsAreLitWhenMirrored)
{
    Stage stage;
    addSurface(addTransform(stage.lit, Transform(Matrix3(), Vector3(), -1.0)), squareGeometry(-0.5, 0.5),
               matt({1.0F, 0.0F, 0.0F, 1.0F}));
    EXPECT_TRUE(showsAt(FrameRenderer::draw(stage.root), 128, 128, {255, 0, 0}));
}

TEST(MirrorFrame, MirroredTwiceIsNotMirrored)
{
    Stage plain;
    addCube(plain.lit);
    Stage twice;
    addCube(addTransform(addTransform(twice.lit, Transform(Matrix3(), Vector3(), -1.0)),
                         Transform(Matrix3(), Vector3(), -1.0)));
    EXPECT_TRUE(
        looksLike(drawWithoutBackFaces(twice.root), FrameRenderer::draw(plain.root), "mirroredTwice"));
}

TEST(MirrorFrame, MirroredCube)
{
    Stage stage;
    addCube(addTransform(stage.lit, Transform(Matrix3(), Vector3(), -1.0)));
    EXPECT_TRUE(looksLikeReference(drawWithoutBackFaces(stage.root), "mirroredCube"));
}

} // namespace
