#include "Tests/Unit/OpenGLRenderer/SceneOfEveryKind.h"
#include "Tests/Unit/OpenGLRenderer/Technique.h"

#include <algorithm>
#include <iterator>
#include <memory>

using namespace RendererTesting;

namespace {

/// Where bones move a vertex, as a skinning program says from what reaches it.
std::array<float, 3> moved(RecordingGL::Draw const& draw, std::size_t vertex,
                           std::vector<BoneTransform> const& pose)
{
    auto const [x, y, z] = draw.positions.at(vertex);
    auto const bones = draw.attributes.at(14).at(vertex);
    auto const weights = draw.attributes.at(15).at(vertex);
    Vector3 sum;
    for (std::size_t i = 0; i < 4; ++i)
        sum += double(weights[i]) * pose.at(static_cast<std::size_t>(bones[i])).transform({x, y, z});
    return {static_cast<float>(sum.x), static_cast<float>(sum.y), static_cast<float>(sum.z)};
}

class TechniqueFrame : public TechniqueTest {
protected:
    TechniqueFrame() { choose(GetParam()); }

    std::vector<RecordingGL::Draw> draws(SceneOfEveryKind const& drawn)
    {
        std::size_t const before = gl.draws().size();
        static_cast<void>(render(drawn.root));
        return {gl.draws().begin() + static_cast<std::ptrdiff_t>(before), gl.draws().end()};
    }

    [[nodiscard]] int generated() const
    {
        return gl.buffers().generated + gl.programs().generated + gl.shaderObjects().generated +
               gl.textures().generated;
    }

    void expectBalanced(RecordingGL::Names const& names, char const* kind)
    {
        EXPECT_EQ(names.generated, names.deleted) << kind;
        EXPECT_TRUE(names.live.empty()) << kind;
    }

    std::unique_ptr<SceneOfEveryKind> scene = std::make_unique<SceneOfEveryKind>();
};

class CardSkinningFrame : public TechniqueFrame {};

auto const onTheCard = [] {
    std::vector<Technique> result;
    std::ranges::copy_if(techniques, std::back_inserter(result), &Technique::skinsOnTheCard);
    return result;
}();

INSTANTIATE_TEST_SUITE_P(Every, TechniqueFrame, testing::ValuesIn(techniques), nameOf);
INSTANTIATE_TEST_SUITE_P(Every, CardSkinningFrame, testing::ValuesIn(onTheCard), nameOf);

} // namespace

TEST_P(TechniqueFrame, LeavesTheSceneAsItWasGiven)
{
    auto const before = scene->references();
    for (int frame = 0; frame < 3; ++frame) {
        static_cast<void>(render(scene->root));
        EXPECT_EQ(scene->references(), before);
        EXPECT_TRUE(scene->mirrored->textureLayers[0].colorize);
        for (auto const& surface : scene->surfaces) {
            for (SGExtraDataKey const& key :
                 {ExtraDataKeys::viewMatrix, ExtraDataKeys::unanimatedData,
                  ExtraDataKeys::unflippedTriangleData, ExtraDataKeys::uncolorizedTextureData})
                EXPECT_FALSE(surface->findExtraData(key)) << key.name();
        }
        EXPECT_FALSE(scene->textured->hasExtraData());
        EXPECT_EQ(scene->skinned->hasExtraData(), !GetParam().skinsOnTheCard()) << "GLNoVBO";
    }
}

TEST_P(TechniqueFrame, DrawsEverySurfaceAsThePlainPipelineDoes)
{
    choose(techniques[0]);
    auto const expected = draws(SceneOfEveryKind());
    choose(GetParam());
    ASSERT_EQ(expected.size(), std::size_t(DRAWS));
    for (int frame = 0; frame < 2; ++frame) {
        auto const drawn = draws(*scene);
        ASSERT_EQ(drawn.size(), std::size_t(DRAWS));
        for (std::size_t i = 0; i < DRAWS; ++i) {
            bool const skinned = i == SKINNED || i == UNLIT || i == MIRRORED;
            EXPECT_EQ(drawn[i] == expected[i], !(skinned && GetParam().skinsOnTheCard())) << i;
        }
    }
}

TEST_P(CardSkinningFrame, HasBonesMoveVerticesToTheSamePlaces)
{
    choose(techniques[0]);
    auto const expected = draws(SceneOfEveryKind());
    choose(GetParam());
    auto const drawn = draws(*scene);
    auto const& pose = scene->skinned->getBoneTransforms()->get().transforms;
    for (std::size_t vertex = 0; vertex < 3; ++vertex) {
        EXPECT_EQ(moved(drawn[SKINNED], vertex, pose), expected[SKINNED].positions[vertex]);
        EXPECT_EQ(moved(drawn[UNLIT], vertex, pose), expected[UNLIT].positions[vertex]);
    }
    // The card's back colours do for a mirrored skin what flipping does on the processor.
    EXPECT_EQ(moved(drawn[MIRRORED], 0, pose), expected[MIRRORED].positions[1]);
    EXPECT_EQ(moved(drawn[MIRRORED], 1, pose), expected[MIRRORED].positions[0]);
    EXPECT_EQ(drawn[MIRRORED].textureCoordinates.at(GL_TEXTURE0_ARB)[1],
              expected[MIRRORED].textureCoordinates.at(GL_TEXTURE0_ARB)[0]);
}

TEST_P(TechniqueFrame, LeavesNothingBoundOrEnabled)
{
    Calls const calls = render(scene->root);
    EXPECT_EQ(gl.boundBuffers[GL_ARRAY_BUFFER_ARB], 0U);
    EXPECT_EQ(gl.boundBuffers[GL_ELEMENT_ARRAY_BUFFER_ARB], 0U);
    EXPECT_TRUE(gl.enabledArrays.empty());
    EXPECT_TRUE(gl.enabledAttributes.empty());
    EXPECT_TRUE(gl.enabledTextureCoordinates.empty());
    EXPECT_EQ(gl.clientUnit, GLenum(GL_TEXTURE0_ARB));
    EXPECT_EQ(std::ranges::count(calls, "glEnable(GL_VERTEX_PROGRAM_ARB)"),
              GetParam().caps.vertexProgram ? 3 : 0);
    EXPECT_EQ(std::ranges::count(calls, "glDisable(GL_VERTEX_PROGRAM_ARB)"),
              GetParam().caps.vertexProgram ? 3 : 0);
    EXPECT_EQ(std::ranges::count(calls, "glUseProgramObjectARB(0)"), GetParam().caps.vertexShader ? 3 : 0);
}

TEST_P(TechniqueFrame, MakesNamesInTheFirstFrameAlone)
{
    static_cast<void>(render(scene->root));
    int const first = generated();
    for (int frame = 0; frame < 20; ++frame)
        static_cast<void>(render(scene->root));
    EXPECT_EQ(generated(), first);
    EXPECT_EQ(gl.programs().generated, GetParam().caps.vertexProgram ? 2 : 0);
    EXPECT_EQ(gl.shaderObjects().generated, GetParam().caps.vertexShader ? 2 : 0);
    EXPECT_EQ(gl.textures().generated, 3);
    // Curve 1; textured 5; half-skinned 3; plain mirrored 3; each skin of three on the card 5, one with
    // coordinates.
    int const buffers = GetParam().skinsOnTheCard() ? 12 + 3 * 5 + 1 : 12;
    EXPECT_EQ(gl.buffers().generated, GetParam().caps.vbo ? buffers : 0);
}

TEST_P(TechniqueFrame, FreesEveryNameOnceAfterAThousandFrames)
{
    for (int frame = 0; frame < 1000; ++frame) {
        scene->mirroring->transform = frame / 40 % 2 == 0 ? mirror : Transform();
        scene->mirrored->textureLayers[0].colorize = frame / 60 % 2 == 0;
        static_cast<void>(render(scene->root));
    }
    EXPECT_GT(gl.textures().deleted, 0) << "tints come and go";
    EXPECT_EQ(gl.buffers().deleted > 0, GetParam().caps.vbo) << "flipped facets come and go";
    scene.reset();
    expectBalanced(gl.buffers(), "buffers");
    expectBalanced(gl.programs(), "programs");
    expectBalanced(gl.shaderObjects(), "shaders");
    expectBalanced(gl.textures(), "textures");
    EXPECT_EQ(gl.count("glDeleteBuffersARB") > 0, GetParam().caps.vbo);
    EXPECT_EQ(gl.count("glDeleteProgramsARB"), GetParam().caps.vertexProgram ? 2 : 0);
    EXPECT_EQ(gl.count("glDeleteObjectARB"), GetParam().caps.vertexShader ? 2 : 0);
}

TEST_P(TechniqueFrame, DeletesNothingDuringShutdown)
{
    static_cast<void>(render(scene->root));
    SGRendererManager::shutdown = true;
    scene.reset();
    SGRendererManager::shutdown = false;
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_P(TechniqueFrame, FollowsAnyOtherTechnique)
{
    for (Technique const& other : techniques) {
        choose(other);
        static_cast<void>(draws(*scene));
        for (auto const& surface : scene->surfaces)
            if (surface != scene->tagged)
                surface->setExtraData(ExtraDataKeys::noVBO, nullptr);
        choose(GetParam());
        auto const after = draws(*scene);
        SceneOfEveryKind const fresh;
        EXPECT_EQ(after, draws(fresh)) << "after " << other;
    }
}
