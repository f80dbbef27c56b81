#include "Tests/Command/Sgview.h"

#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr int failed = 1;
constexpr int badUsage = 2;

std::string cardInUse()
{
    sgview::HeadlessContext const context({8, 8});
    return sgview::cardInUse();
}

class Technique : public SgviewTest {
protected:
    [[nodiscard]] std::vector<std::string> drawing(std::vector<std::string> const& options) const
    {
        std::vector<std::string> arguments{"render", creature(), "--animation", "swim",     "--time",
                                           "0.3",    "--size",   "256x256",     "--output", "a.png"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return arguments;
    }

    /// What the renderer says it was told.
    [[nodiscard]] std::string logOf(std::vector<std::string> const& options,
                                    Circumstances const& circumstances = {}) const
    {
        std::vector<std::string> arguments = drawing(options);
        arguments.insert(arguments.end(), {"--log", "opengl"});
        Outcome const outcome = run(arguments, circumstances);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome.errors;
    }

    /// A user whose preferences hold a verdict.
    [[nodiscard]] Circumstances withVerdict(std::string const& text) const
    {
        std::filesystem::create_directories(folder / "user" / "OpenGLRenderer");
        writeFile("user/OpenGLRenderer/preferences", text);
        Circumstances circumstances;
        circumstances.environment["XDG_CONFIG_HOME"] = (folder / "user").string();
        return circumstances;
    }
};

std::string capsLine(char const* vbo, char const* program, char const* shader)
{
    return std::string("opengl: Read caps: VBO = ") + vbo + ", vertex program = " + program +
           ", vertex shader = " + shader + "\n";
}

TEST_F(Technique, RendererIsToldWhatWasAskedFor)
{
    EXPECT_THAT(logOf({"--technique", "plain"}), HasSubstr(capsLine("No", "No", "No")));
    EXPECT_THAT(logOf({"--technique", "vbo"}), HasSubstr(capsLine("Yes", "No", "No")));
    EXPECT_THAT(logOf({"--technique", "program"}), HasSubstr(capsLine("No", "Yes", "No")));
    EXPECT_THAT(logOf({"--technique", "program+vbo"}), HasSubstr(capsLine("Yes", "Yes", "No")));
    EXPECT_THAT(logOf({"--technique", "shader"}), HasSubstr(capsLine("No", "No", "Yes")));
    EXPECT_THAT(logOf({"--technique", "shader+vbo"}), HasSubstr(capsLine("Yes", "No", "Yes")));
    EXPECT_EQ(filesInFolder(), std::vector<std::string>{"a.png"}) << "no preferences are written";
}

TEST_F(Technique, AllDrawTheSame)
{
    EXPECT_EQ(runWell(drawing({"--technique", "plain"})), "");
    std::string const plainFile = contentOf("a.png");
    sgview::Picture const plain = readPng(folder / "a.png");
    EXPECT_EQ(runWell(drawing({})), "");
    EXPECT_EQ(contentOf("a.png"), plainFile) << "without a verdict";
    EXPECT_EQ(runWell(drawing({"--technique", "vbo"})), "");
    EXPECT_EQ(readPng(folder / "a.png").pixels, plain.pixels);
    for (char const* technique : {"program", "program+vbo", "shader", "shader+vbo"}) {
        EXPECT_EQ(runWell(drawing({"--technique", technique})), "");
        EXPECT_LE(countMismatches(readPng(folder / "a.png"), plain), 6U) << technique;
    }
}

TEST_F(Technique, DemoTakesOneToo)
{
    EXPECT_EQ(runWell({"demo", "--output", "plain.png", "--size", "256x192", "--technique", "plain"}), "");
    EXPECT_EQ(runWell({"demo", "--output", "shader.png", "--size", "256x192", "--technique", "shader+vbo"}),
              "");
    EXPECT_LE(countMismatches(readPng(folder / "plain.png"), readPng(folder / "shader.png")), 5U);
}

TEST_F(Technique, StoredVerdictIsTaken)
{
    std::string const verdict =
        "GL_CARD = " + cardInUse() + "\nGL_VBO = True\nGL_VertexProgram = True\nGL_VertexShader = False\n";
    Circumstances const user = withVerdict(verdict);
    EXPECT_THAT(logOf({}, user), HasSubstr(capsLine("Yes", "Yes", "No")));
    EXPECT_THAT(logOf({"--technique", "auto"}, user), HasSubstr(capsLine("Yes", "Yes", "No")));
    EXPECT_THAT(logOf({"--technique", "plain"}, user), HasSubstr(capsLine("No", "No", "No")));
    EXPECT_EQ(contentOf("user/OpenGLRenderer/preferences"), verdict) << "asking writes nothing";
}

TEST_F(Technique, VerdictThatDoesNotHoldIsMeasuredAnew)
{
    for (std::string const& verdict :
         {std::string("GL_CARD = another\nGL_VBO = True\nGL_VertexProgram = True\nGL_VertexShader = False\n"),
          "GL_CARD = " + cardInUse() + "\nGL_VBO = yes\nGL_VertexProgram = True\nGL_VertexShader = False\n",
          "GL_CARD = " + cardInUse() +
              "\nGL_VBO = True\nGL_VertexProgram = True\nGL_VertexShader = True\n"}) {
        EXPECT_THAT(logOf({}, withVerdict(verdict)), HasSubstr("opengl: Completed graphics diagnostics"));
        EXPECT_THAT(
            contentOf("user/OpenGLRenderer/preferences"),
            AllOf(HasSubstr("GL_CARD = " + cardInUse() + "\n"), HasSubstr("GL_VertexShader = False")));
        EXPECT_THAT(logOf({}, asNewUser()), Not(HasSubstr("Running graphics diagnostics")));
    }
}

TEST_F(Technique, UnknownNamesAreUsageErrors)
{
    for (char const* name : {"", "VBO", "vbo+program", "program+", "all"}) {
        expectFailure(
            drawing({"--technique", name}), badUsage,
            "--technique: '" + std::string(name) +
                "' is not a technique: auto, plain, vbo, program, program+vbo, shader or shader+vbo");
    }
}

TEST_F(Technique, MissingExtensionIsNamed)
{
    struct Case {
        char const* technique;
        char const* latestYear; ///< of the extensions that the driver offers
        char const* lacking;
    };
    for (auto const& [technique, latestYear, lacking] :
         {Case{"vbo", "2002", "GL_ARB_vertex_buffer_object"},
          Case{"program", "2001", "GL_ARB_vertex_program"},
          Case{"program+vbo", "2002", "GL_ARB_vertex_buffer_object"},
          Case{"program+vbo", "2001", "GL_ARB_vertex_buffer_object, GL_ARB_vertex_program"},
          Case{"shader", "2001", "GL_ARB_shader_objects, GL_ARB_vertex_shader"},
          Case{"shader+vbo", "2002", "GL_ARB_vertex_buffer_object"}}) {
        Circumstances old;
        old.environment["MESA_EXTENSION_MAX_YEAR"] = latestYear;
        expectFailure(drawing({"--technique", technique}), failed,
                      "technique " + std::string(technique) + ": the OpenGL in use lacks " + lacking, old);
    }
}

TEST_F(Technique, MissingAssetIsSaidInOneLine)
{
    namespace fs = std::filesystem;
    // The engine's libraries in a place of their own have no assets beside them.
    fs::create_directories(folder / "bare");
    for (fs::directory_entry const& entry : fs::directory_iterator(SG_LIBRARIES)) {
        fs::path const name = entry.path().filename();
        if (name.string().starts_with("libSG"))
            fs::copy(entry.path(), folder / "bare" / name, fs::copy_options::copy_symlinks);
    }
    Circumstances bare;
    bare.environment["SG_ASSET_PATH"] = std::nullopt;
    bare.environment["LD_LIBRARY_PATH"] = (folder / "bare").string();
    bare.environment["SG_MODULE_PATH"] = SG_LIBRARIES;
    for (auto const& [technique, asset] :
         {std::pair("program", "animationVertexProgram"), std::pair("shader+vbo", "animationVertexShader")}) {
        Outcome const outcome = run(drawing({"--technique", technique}), bare);
        EXPECT_EQ(outcome.status, failed);
        EXPECT_THAT(outcome.errors,
                    testing::StartsWith(std::string("sgview: technique ") + technique + ": Asset \"Shaders/" +
                                        asset + ".txt\" not found; tried: "));
        EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 1) << outcome.errors;
    }
    EXPECT_EQ(run(drawing({"--technique", "vbo"}), bare).status, 0) << "needs no asset";
}

} // namespace
