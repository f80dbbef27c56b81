#include "Viewer/Diagnosis/DiagnosisLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using sgview::Diagnosis;
using sgview::DiagnosisLog;
using sgview::TechniqueFlags;
using testing::ElementsAre;
using View = Diagnosis::View;
using Step = Diagnosis::Step;

using Shades = std::initializer_list<std::uint8_t>;

constexpr std::size_t rowBytes = std::size_t{4} * 512;

/// A picture that is told from others by its shade, and its bottom row from the rest of it.
std::vector<std::uint8_t> shade(std::uint8_t value)
{
    std::vector<std::uint8_t> pixels(rowBytes * 512, value);
    std::fill_n(pixels.begin(), rowBytes, 1);
    return pixels;
}

class DiagnosisLogTest : public testing::Test {
protected:
    void add(std::initializer_list<char const*> lines)
    {
        for (char const* const line : lines)
            log.addLine(line);
    }
    void add(std::uint8_t picture) { log.addPicture(shade(picture)); }

    void addUpToTheProgram()
    {
        log.addCard("a / b / c");
        add({"Running graphics diagnostics", "Ran time test, got 200.5", "Ran time test, got 80.01",
             "Ran time test, got 80", "Done creating test scene -- number of surfaces = 4",
             "GL_MAX_PROGRAM_INSTRUCTIONS_ARB = 128", "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = 96",
             "Card caps: VBO = Yes, vertex program = Yes, vertex shader = No", "Checking VBO performance",
             "Ran time test, got 50", "Ran time test, got 1e+06", "Checking base animation performance",
             "Ran time test, got 49.5"});
        add(10);
        add({"Checking test image: white = 200000, nonWhite = 62144", "Checking vertex program performance",
             "Ran time test, got 75.25"});
    }

    [[nodiscard]] Diagnosis const& diagnosis() const { return log.diagnosis(); }

    DiagnosisLog log;
};

TEST_F(DiagnosisLogTest, WholeRun)
{
    addUpToTheProgram();
    add(20);
    add({"Compared images.  Mismatch = 0.00123"});
    add(30);
    add({"Compared images.  Mismatch = 0.25"});
    add(40);
    add({"Compared images.  Mismatch = 3.8147e-06", "vertex program is faster: enabling",
         "Completed graphics diagnostics -- total time = 0.625",
         "Final caps: VBO = Yes, vertex program = Yes, vertex shader = No"});

    EXPECT_EQ(diagnosis().card, "a / b / c");
    EXPECT_EQ(diagnosis().surfaces, 4);
    EXPECT_EQ(diagnosis().claims, (TechniqueFlags{true, true, false}));
    EXPECT_EQ(diagnosis().verdict, (TechniqueFlags{true, true, false}));
    EXPECT_EQ(diagnosis().seconds, 0.625);
    EXPECT_EQ(diagnosis().referencePixels->white, 200000);
    EXPECT_EQ(diagnosis().referencePixels->nonWhite, 62144);
    ASSERT_EQ(diagnosis().limits.size(), 2U);
    EXPECT_EQ(diagnosis().limits[1].name, "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB");
    EXPECT_EQ(diagnosis().limits[1].value, 96);
    EXPECT_EQ(diagnosis().log.size(), 22U);
    EXPECT_EQ(diagnosis().log.front(), "Running graphics diagnostics");
}

TEST_F(DiagnosisLogTest, TimeTestsBelongToSteps)
{
    addUpToTheProgram();
    std::vector<Step> steps;
    std::vector<int> surfaces;
    std::vector<double> rates;
    for (Diagnosis::TimeTest const& test : diagnosis().timeTests) {
        steps.push_back(test.step);
        surfaces.push_back(test.surfaces);
        rates.push_back(test.rate);
    }
    EXPECT_THAT(steps, ElementsAre(Step::scene, Step::scene, Step::scene, Step::plain, Step::vbo, Step::base,
                                   Step::program));
    EXPECT_THAT(surfaces, ElementsAre(1, 2, 4, 4, 4, 4, 4));
    EXPECT_THAT(rates, ElementsAre(200.5, 80.01, 80.0, 50.0, 1e6, 49.5, 75.25));
    EXPECT_EQ(diagnosis().timeTest(Step::scene)->rate, 80.0) << "the last";
    EXPECT_EQ(diagnosis().timeTest(Step::shader), nullptr);
}

TEST_F(DiagnosisLogTest, BailingOutIsNoRate)
{
    add({"Running graphics diagnostics", "Done creating test scene -- number of surfaces = 1",
         "Checking VBO performance", "Ran time test, got 50",
         "Ran time test, but first render took too long, so bailing out", "VBO is slower -- reverting"});
    EXPECT_TRUE(diagnosis().timeTest(Step::vbo)->bailedOut);
    EXPECT_EQ(diagnosis().timeTest(Step::vbo)->rate, 0.0);
    EXPECT_FALSE(diagnosis().timeTest(Step::plain)->bailedOut);
}

TEST_F(DiagnosisLogTest, PicturesAreWhatTheLinesAroundThemSay)
{
    addUpToTheProgram();
    for (std::uint8_t const picture : Shades{20, 30, 40})
        add(picture);
    add({"Checking vertex shader performance"});
    for (std::uint8_t const picture : Shades{50, 60, 70, 80})
        add(picture);
    std::vector<View> views;
    std::vector<int> shades;
    for (Diagnosis::Image const& image : diagnosis().images) {
        views.push_back(image.view);
        shades.push_back(image.picture.pixels.front());
    }
    EXPECT_THAT(views,
                ElementsAre(View::reference, View::programAtRest, View::programBent, View::programCheck,
                            View::shaderAtRest, View::shaderBent, View::shaderCheck));
    EXPECT_THAT(shades, ElementsAre(10, 20, 30, 40, 50, 60, 70));
}

TEST_F(DiagnosisLogTest, TopRowComesFirst)
{
    addUpToTheProgram();
    std::vector<std::uint8_t> const& pixels = diagnosis().image(View::reference)->pixels;
    EXPECT_EQ(pixels.front(), 10);
    EXPECT_EQ(pixels[rowBytes * 511 - 1], 10);
    EXPECT_EQ(pixels[rowBytes * 511], 1);
}

TEST_F(DiagnosisLogTest, ComparisonsAreOfTheRightPictures)
{
    addUpToTheProgram();
    add({"Compared images.  Mismatch = 0.009", "Compared images.  Mismatch = 0.009",
         "Compared images.  Mismatch = 0.01", "Checking vertex shader performance",
         "Compared images.  Mismatch = 0.01", "Compared images.  Mismatch = 0.01"});
    struct Expected {
        View a;
        View b;
        bool mustDiffer;
        bool passed;
    };
    std::vector<Expected> const expected{{View::reference, View::programAtRest, false, true},
                                         {View::reference, View::programBent, true, false},
                                         {View::programBent, View::programCheck, false, false},
                                         {View::reference, View::shaderAtRest, false, false},
                                         {View::reference, View::shaderBent, true, true}};
    ASSERT_EQ(diagnosis().comparisons.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(diagnosis().comparisons[i].a, expected[i].a);
        EXPECT_EQ(diagnosis().comparisons[i].b, expected[i].b);
        EXPECT_EQ(diagnosis().comparisons[i].mustDiffer, expected[i].mustDiffer);
        EXPECT_EQ(diagnosis().comparisons[i].passed(), expected[i].passed);
    }
}

TEST_F(DiagnosisLogTest, StepIsWhatComesNext)
{
    std::vector<std::string> steps{log.step()};
    auto const note = [&] {
        if (steps.back() != log.step())
            steps.push_back(log.step());
    };
    log.addCard("a");
    note();
    for (char const* const line :
         {"Running graphics diagnostics", "Ran time test, got 200", "Ran time test, got 70",
          "Done creating test scene -- number of surfaces = 2",
          "Card caps: VBO = Yes, vertex program = Yes, vertex shader = No", "Checking VBO performance",
          "Ran time test, got 50", "Ran time test, got 60", "Checking base animation performance",
          "Ran time test, got 49.5", "Checking vertex program performance", "Ran time test, got 75",
          "Compared images.  Mismatch = 0", "Compared images.  Mismatch = 0.5",
          "Compared images.  Mismatch = 0", "vertex program is faster: enabling",
          "Final caps: VBO = Yes, vertex program = Yes, vertex shader = No"}) {
        log.addLine(line);
        note();
    }
    EXPECT_THAT(steps,
                ElementsAre("opening an OpenGL context", "loading the renderer",
                            "growing the test scene, surfaces: 1", "growing the test scene, surfaces: 2",
                            "growing the test scene, surfaces: 4", "asking what the card offers",
                            "timing the plain technique", "timing buffer objects",
                            "timing skinning on the processor", "reading the reference picture back",
                            "timing the vertex program", "reading the vertex program's picture at rest",
                            "drawing by the vertex program, bent", "drawing by the plain technique, bent",
                            "storing the verdict", "closing OpenGL"));
}

TEST_F(DiagnosisLogTest, StepAfterARejectionIsStoring)
{
    for (char const* const line :
         {"Bad vertex program performance--disabling", "Images differ--disabling vertex program",
          "Second images differ--disabling vertex program",
          "Images that should differ are the same--disabling everything"}) {
        log = DiagnosisLog();
        addUpToTheProgram();
        add({line});
        EXPECT_EQ(log.step(), "storing the verdict") << line;
    }
}

TEST_F(DiagnosisLogTest, BelievesNothing)
{
    log.addPicture(std::vector<std::uint8_t>(12));
    add({"", "Ran time test, got nonsense", "Done creating test scene -- number of surfaces = ",
         "Compared images.  Mismatch = ", "GL_MAX_PROGRAM_", "Final caps: ", "Checking test image: "});
    EXPECT_TRUE(diagnosis().images.empty());
    EXPECT_TRUE(diagnosis().comparisons.empty());
    EXPECT_TRUE(diagnosis().limits.empty());
    EXPECT_EQ(diagnosis().verdict, TechniqueFlags());
    EXPECT_EQ(diagnosis().log.size(), 7U);
}

} // namespace
