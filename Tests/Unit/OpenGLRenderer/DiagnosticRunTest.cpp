#include "OpenGLRenderer/DiagnosticRun.h"

#include "OpenGLRenderer/DiagnosticScene.h"
#include "OpenGLRenderer/Strategist.h"
#include "Tests/Unit/Maths/MathsTesting.h"
#include "Tests/Unit/OpenGLRenderer/DiagnosticLog.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedCard.h"
#include "Tests/Unit/OpenGLRenderer/StoredPrefs.h"

#include <cmath>

using namespace RendererTesting;
using namespace RendererTesting::DiagnosticLog;
using testing::ElementsAre;

namespace {

class DiagnosticRunTest : public RendererTest {
protected:
    ScriptedCard card{gl};
    StoredPrefs prefs;
    LogCapture log;
};

Capabilities const all{true, true, true};
Capabilities const buffersAndProgram{true, true, false};
Capabilities const buffersAndShader{true, false, true};
Capabilities const buffersOnly{true, false, false};

Lines repeated(Lines const& lines, int times)
{
    Lines result;
    for (int i = 0; i < times; ++i)
        result = result + lines;
    return result;
}

Lines fiveFrames(std::string const& how)
{
    return repeated({"- drew 1 by " + how, "- finished"}, 5);
}

} // namespace

TEST_F(DiagnosticRunTest, LogsAllThisAndNothingElse)
{
    card.perSurface = 5'000;
    card.plain.frame = 5'000;
    card.buffers.frame = 2'500;
    card.processor.frame = 30'000;
    card.program.frame = 5'000;
    GLRenderer::renderer->runDiagnostic();
    EXPECT_EQ(log.text(), "opengl: Running graphics diagnostics\n"
                          "opengl: Ran time test, got 100\n"
                          "opengl: Ran time test, got 66.6667\n"
                          "opengl: Done creating test scene -- number of surfaces = 2\n"
                          "opengl: GL_MAX_PROGRAM_INSTRUCTIONS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_TEMPORARIES_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_PARAMETERS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_ATTRIBS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_ENV_PARAMETERS_ARB = 128\n"
                          "opengl: GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB = 128\n"
                          "opengl: Card caps: VBO = Yes, vertex program = Yes, vertex shader = No\n"
                          "opengl: Checking VBO performance\n"
                          "opengl: Ran time test, got 66.6667\n"
                          "opengl: Ran time test, got 80\n"
                          "opengl: Checking base animation performance\n"
                          "opengl: Ran time test, got 25\n"
                          "opengl: Checking test image: white = 131072, nonWhite = 131072\n"
                          "opengl: Checking vertex program performance\n"
                          "opengl: Ran time test, got 66.6667\n"
                          "opengl: Compared images.  Mismatch = 0\n"
                          "opengl: Compared images.  Mismatch = 0.5\n"
                          "opengl: Compared images.  Mismatch = 0\n"
                          "opengl: vertex program is faster: enabling\n"
                          "opengl: Completed graphics diagnostics -- total time = 0.5375\n"
                          "opengl: Final caps: VBO = Yes, vertex program = Yes, vertex shader = No\n");
}

TEST_F(DiagnosticRunTest, DrawsReadsAndCleansInThisOrder)
{
    card.narrates = true;
    GLRenderer::renderer->runDiagnostic();
    Lines told;
    for (std::string const& line : string_split(log.text(), '\n'))
        if (line.starts_with("- ") || line.find("Checking") != std::string::npos)
            told.push_back(line);
    Lines const expected = fiveFrames("plain") + Lines{"opengl: Checking VBO performance"} +
                           fiveFrames("plain") + Lines{"- cleaned"} + fiveFrames("buffers, buffered") +
                           Lines{"opengl: Checking base animation performance"} + fiveFrames("processor") +
                           Lines{"- read", "opengl: Checking test image: white = 131072, nonWhite = 131072",
                                 "opengl: Checking vertex program performance", "- cleaned"} +
                           fiveFrames("program, buffered") +
                           Lines{"- read",      "- drew 1 by program, buffered, bent", "- read",
                                 "- cleaned",   "- drew 1 by processor, bent",         "- read",
                                 "- scene gone"};
    EXPECT_EQ(textOf(told), textOf(expected));
}

TEST_F(DiagnosticRunTest, CleansAgainWhereItRevertsToNoBuffers)
{
    card.narrates = true;
    card.claim("GL_ARB_vertex_buffer_object ");
    card.buffers.frame = 30'000;
    GLRenderer::renderer->runDiagnostic();
    EXPECT_THAT(log.text(),
                testing::HasSubstr("opengl: VBO is slower -- reverting\n- cleaned\nopengl: Completed"));
}

TEST_F(DiagnosticRunTest, TriesTheShaderFromTheRestPoseWithoutTheProgram)
{
    card.narrates = true;
    DiagnosticRun([] { return all; }).carryOut();
    std::string const text = log.text();
    Lines told;
    for (std::string const& line :
         string_split(text.substr(text.find("Checking vertex shader performance")), '\n'))
        if (line.starts_with("- "))
            told.push_back(line);
    Lines const expected = Lines{"- cleaned"} + fiveFrames("shader, buffered") +
                           Lines{"- read",      "- drew 1 by shader, buffered, bent", "- read",
                                 "- cleaned",   "- drew 1 by processor, bent",        "- read",
                                 "- scene gone"};
    EXPECT_EQ(textOf(told), textOf(expected));
}

TEST_F(DiagnosticRunTest, StoresTheVerdictAndAppliesIt)
{
    GLRenderer::renderer->runDiagnostic();
    EXPECT_THAT(prefs.store->notes,
                ElementsAre("set GL_VBO = True", "set GL_VertexProgram = True", "set GL_VertexShader = False",
                            "set GL_CARD = Vendor / Card / 2.1 Driver 7"));
    EXPECT_EQ(GLRenderer::renderer->strategy.size(), Strategist::computeStrategy(buffersAndProgram).size());
    EXPECT_EQ(GLRenderer::renderer->referenceCount(), 1);
}

TEST_F(DiagnosticRunTest, StoresTheVerdictOnceItIsAppliedAndBeforeTheLastLines)
{
    std::vector<std::vector<smart_ptr<SGNodeVisitor>>> applied;
    std::vector<std::string> said;
    prefs.store->whenAsked = [&] {
        applied.push_back(GLRenderer::renderer->strategy);
        said.push_back(log.text());
    };
    GLRenderer::renderer->runDiagnostic();
    EXPECT_THAT(applied, testing::AllOf(testing::SizeIs(4), testing::Each(GLRenderer::renderer->strategy)));
    EXPECT_THAT(said, testing::Each(testing::EndsWith("opengl: vertex program is faster: enabling\n")));
}

TEST_F(DiagnosticRunTest, ShowsTheHostFourPictures)
{
    std::vector<Picture> shown;
    GLRenderer::renderer->diagnosticImageSink = [&](std::span<unsigned char const> picture) {
        shown.emplace_back(picture.begin(), picture.end());
    };
    card.program.rest = changed(restPicture(), 1, 50);
    card.program.bent = changed(bentPicture(), 1, 50);
    GLRenderer::renderer->runDiagnostic();
    ASSERT_EQ(shown.size(), 4U);
    EXPECT_TRUE(shown[0] == restPicture()) << "the reference";
    EXPECT_TRUE(shown[1] == card.program.rest);
    EXPECT_TRUE(shown[2] == card.program.bent);
    EXPECT_TRUE(shown[3] == bentPicture()) << "the check";
    EXPECT_EQ(gl.count("glReadPixels"), 4);
}

TEST_F(DiagnosticRunTest, BendsBothBonesBy162DegreesAboutY)
{
    std::vector<std::vector<BoneTransform>> poses;
    GLRenderer::renderer->diagnosticImageSink = [&](std::span<unsigned char const>) {
        poses.push_back(card.firstSurface()->getBoneTransforms()->get().transforms);
    };
    GLRenderer::renderer->runDiagnostic();
    double const angle = 162.0 / 180.0 * MathsTesting::pi;
    Matrix3 const turn(
        {std::cos(angle), 0.0, std::sin(angle), 0.0, 1.0, 0.0, -std::sin(angle), 0.0, std::cos(angle)});
    ASSERT_EQ(poses.size(), 4U);
    for (std::size_t picture : {0, 1})
        EXPECT_EQ(poses[picture], std::vector<BoneTransform>(2)) << picture;
    for (std::size_t picture : {2, 3}) {
        ASSERT_EQ(poses[picture].size(), 2U);
        for (BoneTransform const& bone : poses[picture]) {
            EXPECT_CLOSE(bone.rotation, turn, 1e-15);
            EXPECT_EQ(bone.translation, Vector3());
        }
    }
}

TEST_F(DiagnosticRunTest, LeavesNothingOfItsSceneBehind)
{
    for (Capabilities const& claimed :
         {all, buffersAndProgram, buffersAndShader, buffersOnly, Capabilities()}) {
        DiagnosticRun([=] { return claimed; }).carryOut();
        EXPECT_GE(card.sceneObjects(), 6U);
        EXPECT_EQ(card.sceneObjectsLeft(), 0U);
        for (RecordingGL::Names const& names :
             {gl.buffers(), gl.programs(), gl.shaderObjects(), gl.textures()}) {
            EXPECT_TRUE(names.live.empty());
            EXPECT_EQ(names.generated, names.deleted);
        }
    }
    EXPECT_GT(gl.buffers().generated, 0);
    EXPECT_EQ(gl.programs().generated, 4);
    EXPECT_EQ(gl.shaderObjects().generated, 4);
}

TEST_F(DiagnosticRunTest, LeavesNothingBehindWhereItGivesUp)
{
    card.program.bent = restPicture();
    GLRenderer::renderer->runDiagnostic();
    card.processor.rest = Picture();
    GLRenderer::renderer->runDiagnostic();
    EXPECT_EQ(card.sceneObjectsLeft(), 0U);
    EXPECT_TRUE(gl.buffers().live.empty());
    EXPECT_TRUE(gl.programs().live.empty());
}

TEST_F(DiagnosticRunTest, IsTheSameTheNextTime)
{
    GLRenderer::renderer->runDiagnostic();
    std::string const first = log.text();
    GLRenderer::renderer->runDiagnostic();
    EXPECT_EQ(log.text(), first + first);
}

TEST_F(DiagnosticRunTest, IsAskedForAtLessThanAFramesCost)
{
    GLRenderer::renderer->runDiagnostic();
    GLRenderer::renderer->strategy = Strategist::computeStrategy({});
    static_cast<void>(gl.takeCalls());
    EXPECT_FALSE(GLRenderer::renderer->isDiagnosticNeeded());
    int const asked = gl.count();
    EXPECT_EQ(asked, gl.count("glGetString") + gl.count("glGetProgramivARB"));

    card.plain.frame = 100'000;
    auto const root = Diagnostic::createTestSceneGraph();
    GLRenderer::renderer->render(root);
    static_cast<void>(gl.takeCalls());
    GLRenderer::renderer->render(root);
    EXPECT_EQ(gl.count("glDrawElements"), 1);
    EXPECT_LT(asked, gl.count());
}

TEST_F(DiagnosticRunTest, OfACardThatOffersNothingTimesThePlainPathAlone)
{
    DiagnosticRun([] { return Capabilities(); }).carryOut();
    EXPECT_EQ(gl.count("glReadPixels"), 0);
    EXPECT_EQ(gl.count("glFinish"), 5);
}
