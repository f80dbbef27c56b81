#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/NameCount.h"
#include "Tests/Frame/SceneParts.h"
#include "Tests/Frame/Technique.h"

#include "SceneGraph/SGRendererManager.h"
#include "Viewer/Platform/HostState.h"
#include "Viewer/Platform/OpenGLErrors.h"

#include <algorithm>

namespace {

using sgview::Technique;

constexpr Color white{1.0F, 1.0F, 1.0F, 1.0F};

/// Few vertices and pixels, but all that names are made for: buffers, textures, tinted copies, flipped
/// triangles, programs.
class SmallStage : public Stage {
public:
    SmallStage()
    {
        camera->camera = flatCamera({0, 0, 16, 16});
        for (double scale : {0.5, -0.5}) {
            auto const parent = addTransform(lit, Transform(Matrix3(), Vector3(-scale, 0.0, 0.0), scale));
            texture(*addSurface(parent, squareGeometry(-0.5, 0.0), matt(white)));
            auto const skinned = addSurface(parent, squareGeometry(0.0, 0.5), matt(white));
            texture(*skinned);
            skinned->unlit = scale < 0.0;
            skinned->setBoneWeights(make_smart<SharedBoneWeights>(weights()));
            skinned->setBoneTransforms(pose_);
        }
    }

    void move(int frame) { pose_->edit().transforms[1].translation.x = frame % 2 == 0 ? 0.1 : -0.1; }

private:
    static void texture(SGSurfaceGeometryReferenceNode& surface)
    {
        SGTextureLayer tinted = squareLayer(picture());
        tinted.colorize = true;
        surface.textureLayers = {tinted, squareLayer(picture())};
    }

    static smart_ptr<SharedImage> picture()
    {
        return imageOf(2, 2, {{0, 0, 0}, {255, 255, 255}, {255, 0, 0}, {0, 0, 255}});
    }

    static smart_ptr<BoneWeightsData const> weights()
    {
        auto weights = make_smart<BoneWeightsData>();
        for (int i = 0; i < 4; ++i)
            weights->addVertex(std::array{BoneInfluence{i / 2, 1.0}});
        return weights;
    }

    smart_ptr<SharedBoneTransforms> pose_ =
        make_smart<SharedBoneTransforms>(BoneTransformVector(std::vector<BoneTransform>(2)));
};

void drawFrames(SmallStage& stage, int first, int end)
{
    for (int frame = first; frame < end; ++frame) {
        stage.move(frame);
        sgview::setHostState();
        SGRendererManager::getRenderer()->render(stage.root);
        sgview::checkOpenGL("while drawing");
    }
}

class NameBalance : public testing::TestWithParam<Technique> {
protected:
    void SetUp() override
    {
        if (std::string const extension = sgview::lackingFor(GetParam()); !extension.empty())
            GTEST_SKIP() << "the driver lacks " << extension;
        switchTo(GetParam());
    }
    ~NameBalance() override { switchTo(Technique::plain); }
};

void expectNoneLeft(NameCount const& count)
{
    for (NameCount::Kind const& kind :
         {count.buffers(), count.textures(), count.programs(), count.shaderObjects()}) {
        EXPECT_EQ(kind.left, 0);
        EXPECT_EQ(kind.wrongFrees, 0);
    }
}

TEST_P(NameBalance, EveryNameIsMadeOnceAndFreedOnce)
{
    NameCount const count;
    {
        SmallStage stage;
        drawFrames(stage, 0, 1);
        long const buffers = count.buffers().made;
        long const textures = count.textures().made;
        drawFrames(stage, 1, 1000);
        EXPECT_EQ(count.buffers().made, buffers);
        EXPECT_EQ(count.textures().made, textures);
        EXPECT_EQ(count.buffers().left, buffers);
        EXPECT_EQ(count.textures().left, textures);
        EXPECT_EQ(textures, 8);
        EXPECT_EQ(buffers > 0, sgview::usesVBO(GetParam()));
        EXPECT_EQ(count.programs().made, sgview::usesProgram(GetParam()) ? 2 : 0);
        EXPECT_EQ(count.shaderObjects().made, sgview::usesShader(GetParam()) ? 2 : 0);
    }
    expectNoneLeft(count);
}

TEST_P(NameBalance, ChangingTheTechniqueLeavesNothingBehind)
{
    NameCount const count;
    {
        SmallStage stage;
        for (Technique const other : {Technique::plain, Technique::vbo, Technique::plain}) {
            switchTo(GetParam());
            drawFrames(stage, 0, 2);
            switchTo(sgview::lackingFor(other).empty() ? other : Technique::plain);
            drawFrames(stage, 0, 2);
        }
    }
    expectNoneLeft(count);
}

INSTANTIATE_TEST_SUITE_P(Techniques, NameBalance, testing::ValuesIn(sgview::allTechniques),
                         [](auto const& technique) {
                             std::string name(sgview::nameOf(technique.param));
                             std::ranges::replace(name, '+', '_');
                             return name;
                         });

} // namespace
