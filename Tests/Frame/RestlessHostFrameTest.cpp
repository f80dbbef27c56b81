#include "Tests/Frame/EditedScene.h"
#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/Limb.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/Technique.h"

#include "Viewer/Platform/OpenGLErrors.h"

#include <algorithm>
#include <climits>
#include <limits>

namespace {

using sgview::Technique;

bool isLacking(Technique technique)
{
    return !sgview::lackingFor(technique).empty();
}

/// Numbers that are none, wherever a scene holds numbers.
void poison(Stage& stage, double number)
{
    auto const value = static_cast<float>(number);
    Vector3 const point(number, number, number);
    smart_ptr<SGTransformNode> const place = addTransform(stage.lit, Transform(Matrix3(), point, number));
    Limb const limb(4, 30.0);
    for (smart_ptr<SGNode> const& parent : {smart_ptr<SGNode>(stage.lit), smart_ptr<SGNode>(place)}) {
        auto const skinned = addSurface(parent, limb.geometry, matt({value, value, value, value}));
        limb.moveBy(*skinned);
        skinned->getBoneTransforms()->edit().transforms[1].translation = point;
        auto data = make_smart<SurfaceGeometryData>(*squareGeometry(-0.5, 0.5));
        data->vertices[1] = point;
        data->normals[2] = UVector3(point);
        SGTextureLayer layer = squareLayer(imageOf(1, 1, {{9, 9, 9}}), number);
        layer.colorize = true;
        layer.firstColor = {value, value, value, value};
        addSurface(parent, data, matt({1.0F, 1.0F, 1.0F, 1.0F}))->textureLayers = {layer};
    }
    addCurve(stage.camera, {point, {0.0, 0.0, 0.0}}, true, {value, value, value, value});
    addQuad(stage.camera, number, 0.5, number, {1.0F, 1.0F, 1.0F, 1.0F});
    stage.lit->lights.front().direction = point;
}

/// OpenGL may find fault with it; whoever draws must live on.
void drawUnsound(Stage const& stage)
{
    try {
        static_cast<void>(FrameRenderer::draw(stage.root));
    } catch (sgview::OpenGLError const&) {
        SUCCEED();
    }
}

class RestlessHost : public testing::TestWithParam<Technique> {
protected:
    void SetUp() override
    {
        if (isLacking(GetParam()))
            GTEST_SKIP() << "the driver lacks " << sgview::lackingFor(GetParam());
        switchTo(GetParam());
    }
};

TEST_P(RestlessHost, SeesTheSceneAsItIsNow)
{
    EditedScene scene(7);
    for (int frame = 0; frame < 100; ++frame) {
        for (int i = 0; i < 4; ++i)
            scene.edit();
        sgview::Picture const picture = FrameRenderer::draw(scene.root);
        ASSERT_TRUE(isSame(picture, FrameRenderer::draw(scene.copy().root), "restlessHost"))
            << "frame " << frame;
    }
}

TEST_P(RestlessHost, MayChangeTheTechniqueMeanwhile)
{
    EditedScene scene(11);
    for (std::size_t frame = 0; frame < 60; ++frame) {
        Technique const other = sgview::allTechniques[frame / 3 % sgview::allTechniques.size()];
        switchTo(frame % 2 == 0 || isLacking(other) ? GetParam() : other);
        scene.edit();
        sgview::Picture const picture = FrameRenderer::draw(scene.root);
        ASSERT_TRUE(isSame(picture, FrameRenderer::draw(scene.copy().root), "restlessHost"))
            << "frame " << frame;
    }
}

TEST_P(RestlessHost, IsNotHauntedByNumbersThatAreNone)
{
    EditedScene const sound(3);
    sgview::Picture const expected = FrameRenderer::draw(sound.root);
    for (double const number : {std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity(), 1e308, -1e-320, 0.0}) {
        Stage stage;
        poison(stage, number);
        drawUnsound(stage);
        drawUnsound(stage);
        stage.camera->camera = make_smart<CameraBase>(Matrix::translationMatrix({number, number, number}),
                                                      Matrix::translationMatrix({number, number, number}),
                                                      quarl::Rect<int>{0, 0, 64, 64});
        drawUnsound(stage);
        for (auto const& viewport : {quarl::Rect<int>{0, 0, 0, 0}, quarl::Rect<int>{-9, -9, -1, -1},
                                     quarl::Rect<int>{INT_MIN, INT_MIN, INT_MAX, INT_MAX}}) {
            stage.camera->camera = flatCamera(viewport);
            drawUnsound(stage);
        }
    }
    EXPECT_TRUE(isSame(FrameRenderer::draw(sound.root), expected, "hauntedHost"));
}

std::string nameOf(testing::TestParamInfo<Technique> const& info)
{
    std::string name(sgview::nameOf(info.param));
    std::ranges::replace(name, '+', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(By, RestlessHost, testing::ValuesIn(sgview::allTechniques), nameOf);

} // namespace
