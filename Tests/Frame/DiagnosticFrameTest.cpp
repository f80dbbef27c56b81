#include "Tests/Frame/DiagnosticRecord.h"
#include "Tests/Frame/DriverCheck.h"
#include "Tests/Frame/LiveAllocations.h"
#include "Tests/Frame/NameCount.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/Technique.h"

#include "SceneGraph/SGRendererManager.h"
#include "Utilities/AssetManager.h"
#include "Utilities/MemoryPrefs.h"
#include "Utilities/Strings.h"
#include "Viewer/Import/Importer.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/OpenGLErrors.h"
#include "Viewer/Scene/DemoScene.h"

#include <epoxy/gl.h>
#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <regex>

namespace {

using Image = std::vector<unsigned char>;
using Lines = std::vector<std::string>;
using Store = RogueSingleton<Prefs, PrefsFactory>;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;

constexpr int side = 512;
constexpr std::size_t pixelCount = std::size_t{side} * side;

/// The pictures of a run in which the vertex program passes, in the order in which they are read.
enum { REFERENCE, PROGRAM_AT_REST, PROGRAM_BENT, PLAIN_BENT };

int countWhite(Image const& image)
{
    int count = 0;
    for (std::size_t i = 0; i < image.size(); i += 4)
        count += image[i] + image[i + 1] + image[i + 2] == 3 * 255 ? 1 : 0;
    return count;
}

/// The share of pixels whose distance in RGBA is above 10.
double mismatch(Image const& a, Image const& b)
{
    int count = 0;
    for (std::size_t i = 0; i < a.size(); i += 4) {
        int sum = 0;
        for (std::size_t c = i; c < i + 4; ++c)
            sum += (a[c] - b[c]) * (a[c] - b[c]);
        count += sum > 100 ? 1 : 0;
    }
    return static_cast<double>(count) / static_cast<double>(pixelCount);
}

std::string const comparison = "Compared images.  Mismatch = ";

std::string pixelLine(Image const& image)
{
    int const white = countWhite(image);
    return "Checking test image: white = " + std::to_string(white) +
           ", nonWhite = " + std::to_string(static_cast<int>(pixelCount) - white);
}

/// What the log says of a vertex program that passes, given the pictures.
Lines comparisonLines(std::vector<Image> const& images)
{
    Lines lines;
    for (auto const& [a, b] : {std::pair{REFERENCE, PROGRAM_AT_REST}, std::pair{REFERENCE, PROGRAM_BENT},
                               std::pair{PROGRAM_BENT, PLAIN_BENT}})
        lines.push_back(comparison + stringize(mismatch(images.at(a), images.at(b))));
    return lines;
}

/// Limits are the driver's own.
Lines withoutLimits(Lines lines)
{
    std::regex const limit("(GL_MAX_PROGRAM_[A-Z_]+_ARB) = [0-9]+");
    for (std::string& line : lines)
        line = std::regex_replace(line, limit, "$1");
    return lines;
}

Lines startingWith(Lines const& lines, std::string const& start)
{
    Lines found;
    std::ranges::copy_if(lines, std::back_inserter(found),
                         [&](std::string const& line) { return line.starts_with(start); });
    return found;
}

/// What was measured at a step of the log, which does not end there; 0 for a frame that took too long.
std::vector<double> ratesAfter(Lines const& log, std::string const& step)
{
    std::string const rate = "Ran time test, got ";
    std::string const tooSlow = "Ran time test, but ";
    std::vector<double> rates;
    auto line = std::ranges::find(log, step);
    if (line == log.end())
        return rates;
    for (++line; line->starts_with(rate) || line->starts_with(tooSlow); ++line)
        rates.push_back(line->starts_with(rate) ? std::stod(line->substr(rate.size())) : 0.0);
    return rates;
}

std::string textOf(GLenum name)
{
    return reinterpret_cast<char const*>(glGetString(name));
}

/// Renderer and diagnostic as a host has them.
class DiagnosticFrame : public testing::Test {
protected:
    DiagnosticFrame()
    {
        PrefsFactory::setMaker([] { return make_smart<MemoryPrefs>(); });
        Store::reset();
    }

    /// By the scripted clock and with the places of surfaces that a fresh process has.
    [[nodiscard]] DiagnosticRecord runAsFresh()
    {
        std::srand(1);
        return runScriptedDiagnostic(log);
    }

    /// Whether the stored flag is a true or a false one, in the log's words.
    [[nodiscard]] static std::string stored(char const* key)
    {
        std::string const text = Store::getInstance().getString(key);
        return text == "True" ? "Yes" : text == "False" ? "No" : "neither: " + text;
    }

    LogRecord log;
    sgview::OffscreenRenderer renderer{{side, side}};
};

/// What a process of its own wrote.
std::string outputOf(char const* program)
{
    std::string output;
    std::FILE* const pipe = ::popen(program, "r");
    std::array<char, 65536> buffer{};
    for (std::size_t size = 1; size > 0; output.append(buffer.data(), size))
        size = std::fread(buffer.data(), 1, buffer.size(), pipe);
    EXPECT_EQ(::pclose(pipe), 0);
    return output;
}

} // namespace

TEST_F(DiagnosticFrame, EndsWithAVerdictThatItsPicturesBearOut)
{
    EXPECT_TRUE(SGRendererManager::getRenderer()->isDiagnosticNeeded());
    DiagnosticRecord const run = runDiagnostic(log);
    EXPECT_EQ(run.log.front(), "Running graphics diagnostics");
    std::string const program = stored("GL_VertexProgram");
    EXPECT_EQ(run.log.back(), "Final caps: VBO = " + stored("GL_VBO") + ", vertex program = " + program +
                                  ", vertex shader = " + stored("GL_VertexShader"));
    EXPECT_EQ(Store::getInstance().getString("GL_CARD"),
              textOf(GL_VENDOR) + " / " + textOf(GL_RENDERER) + " / " + textOf(GL_VERSION));
    EXPECT_FALSE(SGRendererManager::getRenderer()->isDiagnosticNeeded());
    EXPECT_TRUE(sgview::takeOpenGLErrors().empty());

    if (std::ranges::count(run.log, "Could not read image correctly--disabling vertex program and VBO") > 0) {
        // A machine under load may never get beyond the first surface, which is out of sight.
        EXPECT_EQ(stored("GL_VBO") + program, "NoNo");
        return;
    }
    std::vector<double> const buffers = ratesAfter(run.log, "Checking VBO performance");
    ASSERT_EQ(buffers.size(), 2U);
    EXPECT_EQ(stored("GL_VBO"), buffers[0] > buffers[1] ? "No" : "Yes");
    if (program == "No") {
        EXPECT_THAT(run.log, Contains("Bad vertex program performance--disabling"));
        EXPECT_GT(ratesAfter(run.log, "Checking base animation performance").at(0),
                  ratesAfter(run.log, "Checking vertex program performance").at(0));
        return;
    }
    ASSERT_EQ(run.images.size(), 4U);
    EXPECT_EQ(startingWith(run.log, "Checking test image"), Lines{pixelLine(run.images[REFERENCE])});
    EXPECT_EQ(startingWith(run.log, comparison), comparisonLines(run.images));
    EXPECT_LT(mismatch(run.images[REFERENCE], run.images[PROGRAM_AT_REST]), 0.01);
    EXPECT_GT(mismatch(run.images[REFERENCE], run.images[PROGRAM_BENT]), 0.01);
    EXPECT_LT(mismatch(run.images[PROGRAM_BENT], run.images[PLAIN_BENT]), 0.01);
}

TEST_F(DiagnosticFrame, HasAKnownLogByAKnownClock)
{
    DiagnosticRecord const run = runAsFresh();
    EXPECT_TRUE(run.clockUsedUp);
    ASSERT_EQ(run.images.size(), 4U);
    Lines const comparisons = comparisonLines(run.images);
    EXPECT_EQ(withoutLimits(run.log),
              (Lines{"Running graphics diagnostics",
                     "Ran time test, got 300",
                     "Ran time test, got 100",
                     "Ran time test, got 80",
                     "Done creating test scene -- number of surfaces = 4",
                     "GL_MAX_PROGRAM_INSTRUCTIONS_ARB",
                     "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB",
                     "GL_MAX_PROGRAM_TEMPORARIES_ARB",
                     "GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB",
                     "GL_MAX_PROGRAM_PARAMETERS_ARB",
                     "GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB",
                     "GL_MAX_PROGRAM_ATTRIBS_ARB",
                     "GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB",
                     "GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB",
                     "GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB",
                     "GL_MAX_PROGRAM_ENV_PARAMETERS_ARB",
                     "GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB",
                     "Card caps: VBO = Yes, vertex program = Yes, vertex shader = No",
                     "Checking VBO performance",
                     "Ran time test, got 40",
                     "Ran time test, got 48",
                     "Checking base animation performance",
                     "Ran time test, got 50",
                     pixelLine(run.images[REFERENCE]),
                     "Checking vertex program performance",
                     "Ran time test, got 60",
                     comparisons[0],
                     comparisons[1],
                     comparisons[2],
                     "vertex program is faster: enabling",
                     "Completed graphics diagnostics -- total time = 0.325",
                     "Final caps: VBO = Yes, vertex program = Yes, vertex shader = No"}));
}

TEST_F(DiagnosticFrame, IsTheSameInEveryFreshProcess)
{
    std::string const first = outputOf(DIAGNOSTIC_PROBE);
    EXPECT_THAT(first, HasSubstr("Final caps: VBO = Yes, vertex program = Yes, vertex shader = No\n"));
    EXPECT_GT(first.size(), 4 * 4 * pixelCount) << "the pictures are there";
    EXPECT_TRUE(outputOf(DIAGNOSTIC_PROBE) == first);
}

TEST_F(DiagnosticFrame, LeavesNothingBehind)
{
    NameCount const names;
    std::array<std::int64_t, 6> allocations{};
    for (std::int64_t& after : allocations) {
        static_cast<void>(runAsFresh());
        after = liveAllocations();
    }
    // What the first one has left is kept for good. One driver keeps a little of every program in its own
    // memory.
    bool const driverKeepsSome = textOf(GL_RENDERER).starts_with("zink");
    EXPECT_THAT(allocations,
                Each(AllOf(Ge(allocations.front()), Le(allocations.front() + (driverKeepsSome ? 60 : 0)))));
    for (NameCount::Kind const& kind :
         {names.buffers(), names.textures(), names.programs(), names.shaderObjects()}) {
        EXPECT_EQ(kind.left, 0);
        EXPECT_EQ(kind.wrongFrees, 0);
    }
    EXPECT_TRUE(sgview::takeOpenGLErrors().empty());
    EXPECT_GT(names.buffers().made, 0);
    EXPECT_GT(names.programs().made, 0);
}

TEST_F(DiagnosticFrame, DoesNotShowInTheFramesAfterIt)
{
    sgview::DemoScene scene(
        sgview::importModel(AssetManager::getInstance().findFile("Assets/creature.glb"), {}));
    scene.pose(0.7);
    scene.setView(side, side);
    switchTo(sgview::Technique::programAndVBO);
    sgview::Picture const without = renderer.draw(scene.root());
    DiagnosticRecord const run = runAsFresh();
    EXPECT_EQ(run.log.back(), "Final caps: VBO = Yes, vertex program = Yes, vertex shader = No");
    EXPECT_TRUE(isSame(renderer.draw(scene.root()), without, "afterDiagnostic"));
}

TEST_F(DiagnosticFrame, IsTheSameWhateverStateTheHostLeftBefore)
{
    DiagnosticRecord const expected = runAsFresh();
    for (GLenum ability : {GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_FOG, GL_COLOR_MATERIAL,
                           GL_POLYGON_STIPPLE, GL_CULL_FACE})
        glEnable(ability);
    glScissor(0, 0, 1, 1);
    glDepthMask(GL_FALSE);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    for (GLenum part : {GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS})
        glPixelStorei(part, 3);
    glPixelStorei(GL_PACK_SWAP_BYTES, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    DiagnosticRecord const run = runAsFresh();
    EXPECT_EQ(run.log, expected.log);
    EXPECT_TRUE(run.images == expected.images);
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new DriverCheck);
    return RUN_ALL_TESTS();
}
