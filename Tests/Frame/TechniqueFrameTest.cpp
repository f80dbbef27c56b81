#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/Technique.h"
#include "Tests/Frame/TechniqueScenes.h"

#include "Viewer/Platform/PictureDifference.h"

#include <epoxy/gl.h>

#include <array>

namespace {

using sgview::Picture;
using sgview::Technique;

/// Lights keep their colours when they are switched off, and programs sum all that they hold: another scene's
/// lights must not stay behind.
void forgetLights()
{
    constexpr GLfloat black[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; ++light)
        for (GLenum part : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR})
            glLightfv(light, part, black);
}

/// The first frame makes what is kept, the second uses it with another pose.
using Frames = std::array<Picture, 2>;

Frames drawBy(Technique technique, TechniqueScene const& scene)
{
    forgetLights();
    TechniqueStage stage;
    scene.fill(stage);
    if (scene.special == TechniqueScene::Special::afterPlain) {
        switchTo(Technique::plain);
        static_cast<void>(FrameRenderer::draw(stage.root));
    }
    switchTo(technique);
    Picture first = FrameRenderer::draw(stage.root);
    stage.advance();
    return {std::move(first), FrameRenderer::draw(stage.root)};
}

/// The diagnostic would tolerate one in a hundred.
std::size_t toleratedMismatches(Picture const& picture)
{
    std::size_t const pixels = picture.pixels.size() / 4;
    bool const isSoftpipe = sgview::OffscreenRenderer::driver().find("softpipe") != std::string::npos;
    return isSoftpipe ? pixels / 1000 : pixels / 10000;
}

void record(std::string const& name, Picture const& picture, Picture const& plain)
{
    auto const difference = sgview::measureDifference(picture, plain);
    testing::Test::RecordProperty(name, std::to_string(difference.mismatches) + " mismatch, " +
                                            std::to_string(difference.largestElsewhere) + " elsewhere");
}

testing::AssertionResult agrees(Technique technique, Picture const& picture, Picture const& plain,
                                std::string const& name)
{
    if (technique == Technique::vbo)
        return isSame(picture, plain, name);
    return differsLittle(picture, plain, toleratedMismatches(plain), name);
}

class TechniqueFrame : public testing::TestWithParam<TechniqueScene> {};

TEST_P(TechniqueFrame, LooksLikePlain)
{
    std::string lacking;
    Frames const plain = drawBy(Technique::plain, GetParam());
    EXPECT_GT(countMismatches(plain[0], FrameRenderer::draw(TechniqueStage().root)), 2000U)
        << "there is little to see";
    for (Technique const technique : sgview::allTechniques) {
        if (sgview::usesShader(technique) && GetParam().special == TechniqueScene::Special::beyondShaders)
            continue;
        std::string const title(sgview::nameOf(technique));
        if (std::string const extension = sgview::lackingFor(technique); !extension.empty()) {
            lacking += " " + title + ": " + extension + ".";
            continue;
        }
        Frames const frames = drawBy(technique, GetParam());
        for (std::size_t i = 0; i < frames.size(); ++i) {
            std::string const name = GetParam().name + "-" + title + "-" + std::to_string(i + 1);
            record(name, frames[i], plain[i]);
            EXPECT_TRUE(agrees(technique, frames[i], plain[i], name)) << name;
        }
    }
    if (!lacking.empty())
        GTEST_SKIP() << "what the driver lacks for" << lacking;
}

GLint integerOf(GLenum name)
{
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

TEST_P(TechniqueFrame, LeavesNothingBoundForTheHost)
{
    for (Technique const technique : sgview::allTechniques) {
        if (!sgview::lackingFor(technique).empty())
            continue;
        SCOPED_TRACE(sgview::nameOf(technique));
        static_cast<void>(drawBy(technique, GetParam()));
        for (GLenum const array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
            EXPECT_FALSE(glIsEnabled(array)) << array;
        EXPECT_EQ(integerOf(GL_CLIENT_ACTIVE_TEXTURE), GL_TEXTURE0);
        EXPECT_EQ(integerOf(GL_ARRAY_BUFFER_BINDING), 0);
        EXPECT_EQ(integerOf(GL_CURRENT_PROGRAM), 0);
        EXPECT_FALSE(glIsEnabled(GL_VERTEX_PROGRAM_ARB));
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, TechniqueFrame, testing::ValuesIn(techniqueScenes()),
                         [](auto const& scene) { return scene.param.name; });

} // namespace
