#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/LiveAllocations.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/SceneParts.h"
#include "Tests/Frame/TextureCount.h"

#include "SceneGraph/SGZTransformNode.h"
#include "Viewer/Platform/OpenGLErrors.h"

#include <epoxy/gl.h>

namespace {

constexpr int side = FrameRenderer::side;
constexpr Rgb background{51, 102, 153};
constexpr Color white{1.0F, 1.0F, 1.0F, 1.0F};

/// A scene that gives every variant pass something to do: skinned, tinted, mirrored, blended, lines, a panel.
class FullStage : public Stage {
public:
    FullStage()
    {
        smart_ptr<SharedImage> const image =
            imageOf(2, 2, {{0, 0, 0}, {255, 255, 255}, {255, 0, 0}, {0, 0, 255}});
        skinned_ = addSurface(addTransform(lit, Transform(Matrix3(), Vector3(-0.4, 0.4, 0.0), -0.5)),
                              squareGeometry(-0.5, 0.5), matt(white));
        auto weights = make_smart<BoneWeightsData>();
        for (int i = 0; i < 4; ++i)
            weights->addVertex(std::array{BoneInfluence{i / 2, 1.0}});
        skinned_->setBoneWeights(make_smart<SharedBoneWeights>(weights));
        BoneTransform raised;
        raised.translation = Vector3(0.2, 0.1, 0.3);
        skinned_->setBoneTransforms(
            make_smart<SharedBoneTransforms>(BoneTransformVector({BoneTransform(), raised})));

        SGTextureLayer tinted = squareLayer(image);
        tinted.colorize = true;
        tinted.firstColor = Color{1.0F, 0.8F, 0.2F, 1.0F};
        skinned_->textureLayers = {tinted, squareLayer(image)};

        addSurface(addTransform(lit, Transform(Matrix3(), Vector3(0.4, 0.4, 0.0), 0.5)),
                   squareGeometry(-0.6, 0.6), matt({0.2F, 0.8F, 0.4F, 1.0F}))
            ->wireframe = true;
        auto quad = addQuad(camera, -0.6, 0.1, 0.5, {1.0F, 1.0F, 1.0F, 0.5F});
        quad->blending = true;
        quad->textureLayers = {squareLayer(image)};
        addCurve(camera, {{-0.9, -0.9, 0.0}, {0.0, -0.2, 0.0}, {0.9, -0.9, 0.0}}, true, white)->lineStipple =
            0x3333;
        auto panel = make_smart<SGZTransformNode>(camera);
        panel->lower = -1.0;
        panel->upper = -0.9;
        addQuad(panel, 0.2, 0.5, -5.0, {0.5F, 0.0F, 0.5F, 1.0F});
    }

    smart_ptr<SGSurfaceGeometryReferenceNode> skinned_;
};

TEST(HostFrame, ClearsToTheBackground)
{
    Stage stage;
    for (Color const& color :
         {Stage::background, Color{1.0F, 0.0F, 0.0F, 1.0F}, Color{0.0F, 0.0F, 0.0F, 1.0F}}) {
        stage.root->color = color;
        sgview::Picture const picture = FrameRenderer::draw(stage.root);
        Rgb const expected{static_cast<int>(255.0F * color.r), static_cast<int>(255.0F * color.g),
                           static_cast<int>(255.0F * color.b)};
        for (int corner : {0, side - 1})
            EXPECT_TRUE(showsAt(picture, corner, corner, expected));
    }
}

TEST(HostFrame, WithoutClearingDrawsOverTheLastFrame)
{
    Stage first;
    addQuad(first.camera, -1.0, 0.0, 0.0, white);
    static_cast<void>(FrameRenderer::draw(first.root));
    Stage second;
    second.root->clearColor = false;
    addQuad(second.camera, 0.0, 1.0, 0.0, {1.0F, 0.0F, 0.0F, 1.0F});
    sgview::Picture const picture = FrameRenderer::draw(second.root);
    EXPECT_TRUE(showsAt(picture, 64, 192, {255, 255, 255}));
    EXPECT_TRUE(showsAt(picture, 192, 64, {255, 0, 0}));
    EXPECT_TRUE(showsAt(picture, 64, 64, background));
}

TEST(HostFrame, TwoCamerasSideBySide)
{
    auto root = make_smart<SGRootNode>();
    std::array<Color, 2> const colors{{{1.0F, 0.0F, 0.0F, 1.0F}, {0.0F, 1.0F, 0.0F, 1.0F}}};
    for (int i = 0; i < 2; ++i) {
        // What is above a camera does not move what is below it.
        auto camera =
            make_smart<SGCameraNode>(addTransform(root, Transform(Matrix3(), Vector3(5.0, 0.0, 0.0), 3.0)));
        camera->camera = flatCamera({i * side / 2, 0, side / 2, side});
        addQuad(camera, -0.5, 0.5, 0.0, colors[static_cast<std::size_t>(i)]);
    }
    sgview::Picture const picture = FrameRenderer::draw(root);
    EXPECT_TRUE(showsAt(picture, 64, 128, {255, 0, 0}));
    EXPECT_TRUE(showsAt(picture, 192, 128, {0, 255, 0}));
    for (int column : {20, 108, 148, 236})
        EXPECT_TRUE(showsAt(picture, column, 128, {0, 0, 0}));
}

TEST(HostFrame, EqualScenesGiveEqualBytes)
{
    FullStage const first;
    sgview::Picture const picture = FrameRenderer::draw(first.root);
    FullStage const second;
    EXPECT_EQ(FrameRenderer::draw(second.root).pixels, picture.pixels);
    EXPECT_EQ(FrameRenderer::draw(first.root).pixels, picture.pixels);
    EXPECT_TRUE(looksLikeReference(picture, "everythingAtOnce", Allowed::lines));
}

TEST(HostFrame, WhateverStateTheHostLeftBefore)
{
    FullStage const stage;
    sgview::Picture const expected = FrameRenderer::draw(stage.root);
    for (GLenum ability : {GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_FOG, GL_COLOR_MATERIAL,
                           GL_POLYGON_STIPPLE, GL_CULL_FACE})
        glEnable(ability);
    glScissor(0, 0, 1, 1);
    glStencilFunc(GL_NEVER, 0, 0);
    glLogicOp(GL_INVERT);
    std::array<GLubyte, 128> const noPixel{};
    glPolygonStipple(noPixel.data());
    glFrontFace(GL_CW);
    glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    glDepthMask(GL_FALSE);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDrawBuffer(GL_NONE);
    for (GLenum part : {GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS, GL_PACK_ROW_LENGTH})
        glPixelStorei(part, 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    sgview::checkOpenGL("while leaving the state in disorder");

    FullStage const fresh; // its images go up under that state
    EXPECT_TRUE(looksLike(FrameRenderer::draw(fresh.root), expected, "afterDisorder"));
}

TEST(HostFrame, SceneIsTheSameAfterwards)
{
    FullStage const stage;
    SGSurfaceGeometryReferenceNode const& node = *stage.skinned_;
    auto const geometry = node.getGeometry();
    auto const normals = node.getNormals();
    auto const facets = node.getFacets();
    auto const weights = node.getBoneWeights();
    auto const pose = node.getBoneTransforms();
    auto const firstTexture = node.textureLayers[0].texture;
    auto const secondTexture = node.textureLayers[1].texture;
    std::vector<Vector3> const vertices = geometry->get()->vertices;
    std::vector<std::int32_t> const triangles = facets->get()->facets;

    for (int frame = 0; frame < 3; ++frame) {
        static_cast<void>(FrameRenderer::draw(stage.root));
        EXPECT_EQ(node.getGeometry(), geometry);
        EXPECT_EQ(node.getNormals(), normals);
        EXPECT_EQ(node.getFacets(), facets);
        EXPECT_EQ(node.getBoneWeights(), weights);
        EXPECT_EQ(node.getBoneTransforms(), pose);
        EXPECT_EQ(node.textureLayers[0].texture, firstTexture);
        EXPECT_EQ(node.textureLayers[1].texture, secondTexture);
        EXPECT_TRUE(node.textureLayers[0].colorize);
        EXPECT_FALSE(node.textureLayers[1].colorize);
        EXPECT_EQ(geometry->get()->vertices, vertices);
        EXPECT_EQ(facets->get()->facets, triangles);
    }
}

TEST(HostFrame, UnchangedSceneLeavesNothingBehind)
{
    FullStage const stage;
    auto const drawFrames = [&stage](int count) {
        for (int frame = 0; frame < count; ++frame)
            static_cast<void>(FrameRenderer::draw(stage.root));
    };
    constexpr int untilCachesAreSettled = 40;
    drawFrames(untilCachesAreSettled);
    std::int64_t const allocations = liveAllocations();
    std::size_t const textures = countTextures();
    drawFrames(100);
    EXPECT_EQ(liveAllocations(), allocations);
    EXPECT_EQ(countTextures(), textures);
}

TEST(HostFrame, ReleasedSceneReleasesItsTextures)
{
    std::size_t const before = countTextures();
    {
        FullStage const stage;
        static_cast<void>(FrameRenderer::draw(stage.root));
        EXPECT_GT(countTextures(), before);
    }
    EXPECT_EQ(countTextures(), before);
}

TEST(HostFrame, ErrorsWhileDrawingAreFound)
{
    Stage stage;
    stage.lit->lights.resize(9); // one more than there are
    EXPECT_THROW(static_cast<void>(FrameRenderer::draw(stage.root)), sgview::OpenGLError);
    EXPECT_NO_THROW(static_cast<void>(FrameRenderer::draw(Stage().root)));
}

TEST(HostFrame, ErrorsOfOpenGLAreNamed)
{
    EXPECT_NO_THROW(sgview::checkOpenGL("before"));
    glEnable(GL_TRIANGLES);
    glLineWidth(-1.0F);
    try {
        sgview::checkOpenGL("while testing");
        FAIL() << "no error was found";
    } catch (sgview::OpenGLError const& error) {
        EXPECT_STREQ(error.what(), "OpenGL error while testing: invalid enum");
    }
    EXPECT_TRUE(sgview::takeOpenGLErrors().empty());
}

} // namespace
