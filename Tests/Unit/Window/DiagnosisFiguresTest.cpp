#include "Viewer/Diagnosis/DiagnosisFigures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace sgview {
namespace {

using Step = Diagnosis::Step;
using View = Diagnosis::View;

Picture grey(std::uint8_t brightness)
{
    Picture picture({2, 1});
    std::ranges::fill(picture.pixels, brightness);
    return picture;
}

TEST(DiagnosisFigures, RatesAreSharesOfTheFastest)
{
    Diagnosis diagnosis;
    EXPECT_TRUE(rateFigures(diagnosis).empty());
    diagnosis.timeTests = {{Step::scene, 4, 500.0, false},
                           {Step::vbo, 4, 25.0, false},
                           {Step::plain, 4, 100.0, false},
                           {Step::vbo, 4, 50.0, false},
                           {Step::program, 4, 0.0, true}};
    auto const figures = rateFigures(diagnosis);
    ASSERT_EQ(figures.size(), 3U);
    EXPECT_EQ(figures[0].step, Step::plain);
    EXPECT_EQ(figures[0].share, 1.0);
    EXPECT_EQ(figures[0].text, "100.0");
    EXPECT_EQ(figures[1].share, 0.5) << "a step's last time test counts";
    EXPECT_EQ(figures[1].remark, "");
    EXPECT_EQ(figures[2].text, "-");
    EXPECT_EQ(figures[2].remark, "first frame took over a second");
}

TEST(DiagnosisFigures, NothingIsFastWhereNothingWasMeasured)
{
    Diagnosis diagnosis;
    diagnosis.timeTests = {{Step::plain, 1, 0.0, true}};
    EXPECT_EQ(rateFigures(diagnosis).front().share, 0.0);
}

TEST(DiagnosisFigures, ComparisonsInWords)
{
    Diagnosis::Comparison comparison{View::reference, View::programBent, 0.02, true};
    EXPECT_EQ(pairOf(comparison), "vertex program, bent | plain, at rest");
    EXPECT_EQ(resultOf(comparison), "1% or more wanted: good");
    comparison.mustDiffer = false;
    EXPECT_EQ(resultOf(comparison), "under 1% wanted: bad");
}

TEST(DiagnosisFigures, DifferencesAreAmplified)
{
    Diagnosis diagnosis;
    diagnosis.images = {{View::reference, grey(10)}, {View::programAtRest, grey(12)}};
    auto const difference = differenceOf(diagnosis, {View::reference, View::programAtRest, 0.0, false});
    ASSERT_TRUE(difference);
    EXPECT_EQ(difference->size, (PictureSize{2, 1}));
    EXPECT_EQ(difference->pixels[0], 2 * differenceAmplification);
    EXPECT_FALSE(differenceOf(diagnosis, {View::reference, View::programBent, 0.0, true}));
    diagnosis.images[1].picture = Picture({1, 1});
    EXPECT_FALSE(differenceOf(diagnosis, {View::reference, View::programAtRest, 0.0, false}));
}

TEST(DiagnosisFigures, RulingsSayOnOrOffWhereThereIsAVerdict)
{
    Diagnosis::Ruling const ruling{Diagnosis::Flag::vbo, true, "fast"};
    EXPECT_EQ(inWords(ruling, true), "on, fast");
    EXPECT_EQ(inWords(ruling, false), "fast");
    EXPECT_EQ(inWords(Diagnosis::Ruling{Diagnosis::Flag::vbo, false, "slow"}, true), "off, slow");
}

TEST(DiagnosisFigures, TheSceneAndWhatIsTheMatterWithIt)
{
    Diagnosis diagnosis;
    diagnosis.surfaces = 1;
    EXPECT_EQ(sceneInWords(diagnosis), "1 surface of 10,000 vertices");
    EXPECT_NE(remarkOnScene(diagnosis), "");
    diagnosis.surfaces = 16;
    diagnosis.seconds = 3.5;
    diagnosis.verdict = TechniqueFlags{};
    EXPECT_EQ(sceneInWords(diagnosis), "16 surfaces of 10,000 vertices, in 3.500 s");
    EXPECT_EQ(remarkOnScene(diagnosis), "");
}

TEST(DiagnosisFigures, AVerdictIsATechnique)
{
    EXPECT_EQ(bestTechnique({}), Technique::plain);
    EXPECT_EQ(bestTechnique({true, true, false}), techniqueWith(true, true, false));
    EXPECT_NE(bestTechnique({true, true, false}), bestTechnique({true, false, true}));
}

} // namespace
} // namespace sgview
