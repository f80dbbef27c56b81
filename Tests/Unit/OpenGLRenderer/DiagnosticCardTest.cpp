#include "OpenGLRenderer/DiagnosticCard.h"

#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

class Card : public testing::Test {
protected:
    [[nodiscard]] bool lists(std::string const& extensions, std::string const& name)
    {
        gl.setString(GL_EXTENSIONS, extensions);
        return Diagnostic::hasExtension(name);
    }

    [[nodiscard]] bool isRefused(std::string const& renderer)
    {
        gl.setString(GL_RENDERER, renderer);
        return Diagnostic::isATI8500to9250();
    }

    void offerVertexPrograms(GLint nativeInstructions)
    {
        gl.setString(GL_EXTENSIONS, "GL_ARB_vertex_program ");
        gl.setString(GL_RENDERER, "Card 3000");
        gl.setProgramLimit(GL_MAX_PROGRAM_INSTRUCTIONS_ARB, 128);
        gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB, nativeInstructions);
        gl.setProgramLimit(GL_MAX_PROGRAM_TEMPORARIES_ARB, 12);
        gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB, 13);
        gl.setProgramLimit(GL_MAX_PROGRAM_PARAMETERS_ARB, 256);
        gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB, 257);
        gl.setProgramLimit(GL_MAX_PROGRAM_ATTRIBS_ARB, 16);
        gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB, 17);
        gl.setProgramLimit(GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB, 1);
        gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB, 2);
        gl.setProgramLimit(GL_MAX_PROGRAM_ENV_PARAMETERS_ARB, 96);
        gl.setProgramLimit(GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB, -97);
    }

    RecordingGL gl;
    LogCapture log;
};

std::string limitLines(std::string const& nativeInstructions)
{
    return "opengl: GL_MAX_PROGRAM_INSTRUCTIONS_ARB = 128\n"
           "opengl: GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = " +
           nativeInstructions +
           "\n"
           "opengl: GL_MAX_PROGRAM_TEMPORARIES_ARB = 12\n"
           "opengl: GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB = 13\n"
           "opengl: GL_MAX_PROGRAM_PARAMETERS_ARB = 256\n"
           "opengl: GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB = 257\n"
           "opengl: GL_MAX_PROGRAM_ATTRIBS_ARB = 16\n"
           "opengl: GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB = 17\n"
           "opengl: GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB = 1\n"
           "opengl: GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB = 2\n"
           "opengl: GL_MAX_PROGRAM_ENV_PARAMETERS_ARB = 96\n"
           "opengl: GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB = -97\n";
}

std::string limitQuery(std::string const& name)
{
    return "glGetProgramivARB(GL_VERTEX_PROGRAM_ARB, GL_MAX_PROGRAM_" + name + "_ARB)";
}

Calls const limitQueries{limitQuery("INSTRUCTIONS"),
                         limitQuery("NATIVE_INSTRUCTIONS"),
                         limitQuery("TEMPORARIES"),
                         limitQuery("NATIVE_TEMPORARIES"),
                         limitQuery("PARAMETERS"),
                         limitQuery("NATIVE_PARAMETERS"),
                         limitQuery("ATTRIBS"),
                         limitQuery("NATIVE_ATTRIBS"),
                         limitQuery("ADDRESS_REGISTERS"),
                         limitQuery("NATIVE_ADDRESS_REGISTERS"),
                         limitQuery("ENV_PARAMETERS"),
                         limitQuery("LOCAL_PARAMETERS"),
                         limitQuery("NATIVE_INSTRUCTIONS")};

} // namespace

TEST_F(Card, IsIdentifiedByVendorRendererAndVersion)
{
    gl.setString(GL_VENDOR, "Vendor Inc. ");
    gl.setString(GL_RENDERER, "Card / 3000");
    gl.setString(GL_VERSION, "2.1 DRIVER 7");
    EXPECT_EQ(Diagnostic::getCard(), "Vendor Inc.  / Card / 3000 / 2.1 DRIVER 7");
    EXPECT_EQ(gl.calls(),
              (Calls{"glGetString(GL_VENDOR)", "glGetString(GL_RENDERER)", "glGetString(GL_VERSION)"}));
}

TEST_F(Card, IsNotEmptyEvenWhereTheDriverSaysNothing)
{
    EXPECT_EQ(Diagnostic::getCard(), " /  / ");
}

TEST_F(Card, HasAnExtensionThatABlankFollowsOrPrecedes)
{
    std::string const name = "ARB_vertex_buffer_object";
    EXPECT_TRUE(lists("GL_EXT_foo GL_ARB_vertex_buffer_object ", name));
    EXPECT_FALSE(lists("GL_EXT_foo GL_ARB_vertex_buffer_object", name)) << "last, without a blank";
    EXPECT_TRUE(lists("GL_ARB_vertex_buffer_object GL_EXT_foo", name)) << "first";
    EXPECT_TRUE(lists("EXT_foo ARB_vertex_buffer_object", name)) << "last, without GL_";
    EXPECT_FALSE(lists("ARB_vertex_buffer_object", name)) << "alone, with no blank at all";
    EXPECT_FALSE(lists("GL_ARB_vertex_buffer_object_two ", name));
    EXPECT_TRUE(lists("GL_OLD_ARB_vertex_buffer_object ", name)) << "the tail of another name";
    EXPECT_TRUE(lists("GL_EXT_a ARB_vertex_buffer_object_two", name)) << "the head of another name";
    EXPECT_FALSE(lists("GL_arb_vertex_buffer_object ", name));
    EXPECT_FALSE(lists("", name));
    gl.setString(GL_EXTENSIONS, std::nullopt);
    EXPECT_FALSE(Diagnostic::hasExtension(name));
}

TEST_F(Card, OfTheFamilyThatMisreportsIsRefused)
{
    for (char const* const renderer :
         {"ATI Radeon 9200 OpenGL Engine", "RADEON 8500", "radeon 9000 Pro", "ATI Radeon 9100 IGP",
          "Radeon 9250/9200 Series", "ALL-IN-WONDER 9000", "ATI All-in-Wonder 8500DV",
          "ATI FireMV 2400 OpenGL Engine", "firemv2400", "Radeon 19200"})
        EXPECT_TRUE(isRefused(renderer)) << renderer;
}

TEST_F(Card, OfAnotherFamilyIsNotRefused)
{
    for (char const* const renderer :
         {"ATI Radeon 9600 XT OpenGL Engine", "ATI Radeon 7500", "ATI Radeon 9550", "Radeon 920",
          "NVIDIA GeForce 9500 GT", "Card 9200", "FireGL 8500", "ATI FireMV 2200", "Card 2400",
          "All in Wonder 9200", "ALL-IN-WONDER X800", ""})
        EXPECT_FALSE(isRefused(renderer)) << renderer;
}

TEST_F(Card, WithoutTheExtensionIsNotAskedForLimits)
{
    gl.setString(GL_EXTENSIONS, "GL_ARB_vertex_shader ");
    EXPECT_FALSE(Diagnostic::tryVertexProgram());
    EXPECT_EQ(gl.calls(), Calls{"glGetString(GL_EXTENSIONS)"});
    EXPECT_EQ(log.text(), "");
}

TEST_F(Card, WithTheExtensionIsAskedForTwelveLimits)
{
    offerVertexPrograms(127);
    EXPECT_TRUE(Diagnostic::tryVertexProgram());
    EXPECT_EQ(log.text(), limitLines("127"));
    EXPECT_EQ(gl.calls(),
              Calls{"glGetString(GL_EXTENSIONS)"} + limitQueries + Calls{"glGetString(GL_RENDERER)"});
}

TEST_F(Card, IsAskedForTheLimitsThatNobodyReads)
{
    Log::getInstance().setEnabled("opengl", false);
    offerVertexPrograms(127);
    EXPECT_TRUE(Diagnostic::tryVertexProgram());
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(gl.calls(),
              Calls{"glGetString(GL_EXTENSIONS)"} + limitQueries + Calls{"glGetString(GL_RENDERER)"});
}

TEST_F(Card, ThatRunsProgramsOnTheProcessorIsLeftOutWithoutAWord)
{
    offerVertexPrograms(0);
    gl.setString(GL_RENDERER, "ATI Radeon 9200");
    EXPECT_FALSE(Diagnostic::tryVertexProgram());
    EXPECT_EQ(log.text(), limitLines("0"));
    EXPECT_EQ(gl.calls(), Calls{"glGetString(GL_EXTENSIONS)"} + limitQueries);
}

TEST_F(Card, ThatLiesIsLeftOutWithAWord)
{
    offerVertexPrograms(127);
    gl.setString(GL_RENDERER, "ATI Radeon 9200");
    EXPECT_FALSE(Diagnostic::tryVertexProgram());
    EXPECT_EQ(log.text(),
              limitLines("127") + "opengl: possibly lying ATI card detected--disabling vertex program\n");
}

TEST_F(Card, ThatAnswersNoLimitCountsAsHavingNone)
{
    gl.setString(GL_EXTENSIONS, "GL_ARB_vertex_program ");
    EXPECT_FALSE(Diagnostic::tryVertexProgram());
    EXPECT_THAT(log.text(), testing::EndsWith("GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB = 0\n"));
}

TEST_F(Card, IsBelievedInBuffersAndVertexPrograms)
{
    offerVertexPrograms(128);
    EXPECT_EQ(Diagnostic::getCardCaps(), (Capabilities{false, true, false}));
    gl.setString(GL_EXTENSIONS, "GL_ARB_vertex_buffer_object ");
    EXPECT_EQ(Diagnostic::getCardCaps(), (Capabilities{true, false, false}));
    gl.setString(GL_EXTENSIONS, "GL_ARB_vertex_buffer_object GL_ARB_vertex_program ");
    EXPECT_EQ(Diagnostic::getCardCaps(), (Capabilities{true, true, false}));
    gl.setString(GL_EXTENSIONS, "");
    EXPECT_EQ(Diagnostic::getCardCaps(), Capabilities());
}

TEST_F(Card, IsNeverBelievedInVertexShaders)
{
    offerVertexPrograms(128);
    gl.setString(GL_EXTENSIONS, "GL_ARB_vertex_buffer_object GL_ARB_vertex_program GL_ARB_vertex_shader ");
    EXPECT_FALSE(Diagnostic::getCardCaps().vertexShader);
}

TEST_F(Card, IsAskedInOrder)
{
    gl.setString(GL_EXTENSIONS, "");
    static_cast<void>(Diagnostic::getCardCaps());
    EXPECT_EQ(gl.calls(), Calls(3, "glGetString(GL_EXTENSIONS)"));
    EXPECT_EQ(log.text(), "");
}
