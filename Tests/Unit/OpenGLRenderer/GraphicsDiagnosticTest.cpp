#include "OpenGLRenderer/GraphicsDiagnostic.h"

#include "OpenGLRenderer/VBOCreator.h"
#include "OpenGLRenderer/VertexShaderVisitor.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"
#include "Tests/Unit/OpenGLRenderer/StoredPrefs.h"

using namespace RendererTesting;
using testing::ElementsAre;

namespace {

std::string const everything = "GL_ARB_vertex_buffer_object GL_ARB_vertex_program GL_ARB_vertex_shader ";

class DiagnosticNeed : public RendererTest {
protected:
    DiagnosticNeed()
    {
        gl.setString(GL_VENDOR, "Vendor");
        gl.setString(GL_RENDERER, "Card");
        gl.setString(GL_VERSION, "2.1");
        gl.setString(GL_EXTENSIONS, everything);
        gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB, 128);
        store("Vendor / Card / 2.1", "True", "True", "False");
    }

    void store(std::string const& card, std::string const& vbo, std::string const& program,
               std::string const& shader)
    {
        prefs.store->setString("GL_CARD", card);
        prefs.store->setString("GL_VBO", vbo);
        prefs.store->setString("GL_VertexProgram", program);
        prefs.store->setString("GL_VertexShader", shader);
        prefs.store->notes.clear();
    }

    void storeFlags(std::string const& vbo, std::string const& program, std::string const& shader)
    {
        store("Vendor / Card / 2.1", vbo, program, shader);
    }

    [[nodiscard]] static bool needed() { return GLRenderer::renderer->isDiagnosticNeeded(); }

    LogCapture log;
    StoredPrefs prefs;
};

} // namespace

TEST_F(DiagnosticNeed, IsNoneWhereTheVerdictFitsTheCard)
{
    static_cast<void>(gl.takeCalls());
    EXPECT_FALSE(needed());
    EXPECT_THAT(prefs.store->notes,
                ElementsAre("get GL_CARD", "get GL_VBO", "get GL_VertexProgram", "get GL_VertexShader"));
    EXPECT_EQ(gl.count("glGetProgramivARB"), 13);
}

TEST_F(DiagnosticNeed, IsThereWhereNothingIsStored)
{
    prefs.store->setString("GL_CARD", "");
    EXPECT_TRUE(needed());
    gl.setString(GL_VENDOR, std::nullopt);
    gl.setString(GL_RENDERER, std::nullopt);
    gl.setString(GL_VERSION, std::nullopt);
    EXPECT_TRUE(needed());
}

TEST_F(DiagnosticNeed, IsThereForAnotherCardWithoutAskingAnyFurther)
{
    gl.setString(GL_VERSION, "2.1 a newer driver");
    static_cast<void>(gl.takeCalls());
    EXPECT_TRUE(needed());
    EXPECT_THAT(prefs.store->notes, ElementsAre("get GL_CARD"));
    EXPECT_EQ(gl.count("glGetString"), 3);
    EXPECT_EQ(log.text(), "");
}

TEST_F(DiagnosticNeed, AcceptsEverySpellingForWhatTheCardHas)
{
    for (char const* const spelling : {"True", "true", "TRUE", "False", "false", "FALSE"}) {
        storeFlags(spelling, "True", "False");
        EXPECT_FALSE(needed()) << spelling;
        storeFlags("True", spelling, "False");
        EXPECT_FALSE(needed()) << spelling;
    }
}

TEST_F(DiagnosticNeed, IsThereWhereNothingIsSaidOfWhatTheCardHas)
{
    for (char const* const text : {"", "yes", "1", " True"}) {
        storeFlags(text, "True", "False");
        EXPECT_TRUE(needed()) << text;
        storeFlags("True", text, "False");
        EXPECT_TRUE(needed()) << text;
    }
}

TEST_F(DiagnosticNeed, IsThereWhereTheVerdictClaimsWhatTheCardLacks)
{
    gl.setString(GL_EXTENSIONS, "");
    storeFlags("False", "False", "False");
    EXPECT_FALSE(needed());
    storeFlags("", "yes", "1");
    EXPECT_FALSE(needed()) << "no claim";
    for (char const* const spelling : {"True", "true", "TRUE"}) {
        storeFlags(spelling, "False", "False");
        EXPECT_TRUE(needed()) << spelling;
        storeFlags("False", spelling, "False");
        EXPECT_TRUE(needed()) << spelling;
    }
}

TEST_F(DiagnosticNeed, IsThereWheneverTheVertexShaderIsClaimed)
{
    storeFlags("True", "True", "True");
    EXPECT_TRUE(needed());
    storeFlags("True", "True", "");
    EXPECT_FALSE(needed());
}

TEST_F(DiagnosticNeed, AsksForNoFlagAfterOneThatSettlesIt)
{
    storeFlags("", "True", "False");
    EXPECT_TRUE(needed());
    EXPECT_THAT(prefs.store->notes, ElementsAre("get GL_CARD", "get GL_VBO"));
}

TEST_F(DiagnosticNeed, ReadsAWordThatIsNeitherOnce)
{
    storeFlags("True", "", "False");
    EXPECT_TRUE(needed());
    EXPECT_THAT(prefs.store->notes, ElementsAre("get GL_CARD", "get GL_VBO", "get GL_VertexProgram"));
}

TEST_F(DiagnosticNeed, DoesNotStopStoredFlagsFromBeingApplied)
{
    gl.setString(GL_EXTENSIONS, "");
    store("another card", "True", "no", "TRUE");
    static_cast<void>(gl.takeCalls());
    GLRenderer& renderer = *GLRenderer::renderer;
    renderer.readDiagnosticResults();
    EXPECT_EQ(gl.takeCalls(), Calls());
    EXPECT_EQ(log.text(), "opengl: Reading graphics diagnostic results from preferences\n"
                          "opengl: Read caps: VBO = Yes, vertex program = No, vertex shader = Yes\n");
    ASSERT_EQ(renderer.strategy.size(), 9U);
    EXPECT_TRUE(
        dynamic_cast<VBOCreator*>(dynamic_cast<SGTraverser&>(*renderer.strategy[4]).getVisitor().get()));
    auto const& drawing = dynamic_cast<SGTraverser&>(*renderer.strategy[6]).getVisitor();
    EXPECT_TRUE(dynamic_cast<VertexShaderVisitor*>(
        dynamic_cast<SGCombinationVisitor&>(*drawing).getVisitors().at(2).get()));
    EXPECT_EQ(renderer.referenceCount(), 1);
}

TEST_F(DiagnosticNeed, SaysThatItReadsBeforeItDoes)
{
    std::vector<std::string> said;
    prefs.store->whenAsked = [&] { said.push_back(log.text()); };
    GLRenderer::renderer->readDiagnosticResults();
    EXPECT_THAT(said, testing::AllOf(testing::SizeIs(3),
                                     testing::Each("opengl: Reading graphics diagnostic results from "
                                                   "preferences\n")));
}

TEST_F(DiagnosticNeed, ReplacesTheWholeStrategyByWhatIsStored)
{
    GLRenderer& renderer = *GLRenderer::renderer;
    renderer.readDiagnosticResults();
    auto const first = renderer.strategy;
    EXPECT_EQ(first.size(), 9U);
    storeFlags("False", "False", "False");
    renderer.readDiagnosticResults();
    EXPECT_EQ(renderer.strategy.size(), 10U);
    EXPECT_EQ(first[0]->referenceCount(), 1);
    auto const plain = renderer.strategy;
    renderer.render(make_smart<SGRootNode>());
    EXPECT_EQ(renderer.strategy, plain);
}
