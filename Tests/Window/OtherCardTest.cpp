#include "Tests/Command/OtherCard.h"
#include "Tests/Window/WindowTesting.h"

#include <gmock/gmock.h>

#include <X11/keysym.h>

#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// A machine that may give a context without a screen to another card than windows.
class OtherCard : public WindowTest {
protected:
    [[nodiscard]] Environment displayEnvironment() const override
    {
        Environment environment = WindowTest::displayEnvironment();
        environment.merge(environmentOfOtherCard(where));
        if (!lacking.empty())
            environment["MESA_EXTENSION_OVERRIDE"] = "-" + lacking;
        return environment;
    }

    void openDemo(std::vector<std::string> const& options = {})
    {
        std::vector<std::string> arguments{"demo", "--window", "--module", FAULTY_MODULE};
        arguments.insert(arguments.end(), options.begin(), options.end());
        ASSERT_NO_FATAL_FAILURE(open(arguments));
    }

    void quit()
    {
        user->type(XK_q);
        ASSERT_TRUE(eventually([this] { return program->status().has_value(); }));
        EXPECT_EQ(program->status(), 0);
    }

    [[nodiscard]] std::string setting(std::string const& name) const
    {
        std::ifstream stream(home / ".config/OpenGLRenderer" / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string where;
    std::string lacking;
};

TEST_F(OtherCard, IsAvoidedInAHiddenWindow)
{
    where = "offscreen";
    ASSERT_NO_FATAL_FAILURE(openDemo());
    quitWell();
    std::string const verdict = setting("preferences");
    EXPECT_THAT(verdict, AllOf(HasSubstr("llvmpipe"), HasSubstr("GL_VertexProgram = True")));
    EXPECT_EQ(setting("diagnostic-journal"), "");

    ASSERT_NO_FATAL_FAILURE(openDemo({"--log", "opengl"}));
    quit();
    EXPECT_THAT(errors(), AllOf(HasSubstr("opengl: Read caps: VBO = Yes, vertex program = Yes"),
                                Not(HasSubstr("Running graphics diagnostics"))));
    EXPECT_EQ(setting("preferences"), verdict);
}

TEST_F(OtherCard, DoesNotKeepAModelsWindowFromOpening)
{
    where = "everywhere";
    ASSERT_NO_FATAL_FAILURE(openModel(CREATURE));
    quit();
    EXPECT_THAT(errors(),
                AllOf(HasSubstr("sgview: warning: drawn by the plain technique: the last run of the graphics "
                                "diagnostic failed ('"),
                      HasSubstr("without a screen: the card is '"),
                      HasSubstr("; in a hidden window (x11): the card is '"), HasSubstr("llvmpipe"),
                      HasSubstr("softpipe")));
    EXPECT_EQ(setting("preferences"), "");
    EXPECT_THAT(setting("diagnostic-journal"), HasSubstr("llvmpipe"));
}

TEST_F(OtherCard, IsNotMeasuredWhereAHiddenWindowCannotBeRead)
{
    where = "unreadable";
    ASSERT_NO_FATAL_FAILURE(openDemo());
    quit();
    EXPECT_THAT(errors(), HasSubstr("; in a hidden window (x11): what is drawn cannot be read back)"));
    EXPECT_EQ(setting("preferences"), "");
}

TEST_F(OtherCard, OffersWhatTheWindowLacks)
{
    where = "richer";
    lacking = "GL_ARB_vertex_program";
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{"demo", "--window"}, std::vector<std::string>{CREATURE}}) {
        std::error_code ignored;
        fs::remove_all(home / ".config", ignored);
        std::vector<std::string> all = arguments;
        all.insert(all.end(), {"--module", FAULTY_MODULE});
        ASSERT_NO_FATAL_FAILURE(open(all));
        quit();
        EXPECT_EQ(errors(),
                  "sgview: warning: drawn by the plain technique: technique program+vbo: the OpenGL "
                  "in use lacks GL_ARB_vertex_program\n");
    }
}

} // namespace
