#include "Tests/Unit/Report/Page.h"
#include "Tests/Unit/Report/SampleDiagnosis.h"

#include "Viewer/Platform/PictureDifference.h"
#include "Viewer/Platform/PngEncoder.h"
#include "Viewer/Report/Base64.h"

#include <gmock/gmock.h>

namespace {

using sgview::Diagnosis;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string textOfReport(Diagnosis const& diagnosis, std::string_view ending = {})
{
    return Page(reportOn(diagnosis, ending)).text();
}

std::string sourceOf(sgview::Picture const& picture)
{
    return "data:image/png;base64," + sgview::asBase64(sgview::encodePng(picture));
}

TEST(DiagnosisReport, TellsWhatTheCardIsAndClaims)
{
    EXPECT_THAT(textOfReport(sampleDiagnosis()),
                AllOf(HasSubstr("Tungsten / Sample 4200 / 2.1 build 7"),
                      HasSubstr("What it offersbuffer objects and vertex program"),
                      HasSubstr("GL_MAX_PROGRAM_INSTRUCTIONS_ARB16,384"),
                      HasSubstr("GL_MAX_PROGRAM_ATTRIBS_ARB16")));
}

TEST(DiagnosisReport, HasACardThatOffersNothing)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.claims = sgview::TechniqueFlags{};
    diagnosis.verdict = sgview::TechniqueFlags{};
    diagnosis.limits.clear();
    Page const page(reportOn(diagnosis));
    EXPECT_THAT(page.text(),
                AllOf(HasSubstr("Drawn by plain OpenGL alone"), HasSubstr("none of the techniques")));
    EXPECT_EQ(page.elements("table").size(), 1U) << "no table of limits";
}

TEST(DiagnosisReport, HasEveryRate)
{
    std::string const text = textOfReport(sampleDiagnosis());
    for (char const* const row :
         {"1 surface: 2,346. ", "2 surfaces: 141.5. ", "4 surfaces: 71.25. ", "Plain: 72.12. ",
          "Buffer objects, in use: 90.06. ", "Skinned on the processor: 61.50. ",
          "Skinned by the vertex program, in use: 123.8. "})
        EXPECT_THAT(text, HasSubstr(row));
}

TEST(DiagnosisReport, SaysWhatIsInUse)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.verdict = sgview::TechniqueFlags{};
    EXPECT_THAT(textOfReport(diagnosis), AllOf(HasSubstr("Plain, in use: "), HasSubstr("Buffer objects: "),
                                               HasSubstr("Skinned on the processor, in use: "),
                                               HasSubstr("Skinned by the vertex program: ")));
}

TEST(DiagnosisReport, SaysWhatIsInUseOfEachKind)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.verdict = sgview::TechniqueFlags{true, false, false};
    EXPECT_THAT(textOfReport(diagnosis), AllOf(HasSubstr("Buffer objects, in use: "),
                                               HasSubstr("Skinned on the processor, in use: ")));
    diagnosis.verdict = sgview::TechniqueFlags{false, true, false};
    EXPECT_THAT(textOfReport(diagnosis),
                AllOf(HasSubstr("Plain, in use: "), HasSubstr("Skinned by the vertex program, in use: ")));
}

TEST(DiagnosisReport, SaysThatAFirstFrameTookTooLong)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.timeTests.back() = {Diagnosis::Step::program, 4, 0.0, true};
    EXPECT_THAT(textOfReport(diagnosis),
                HasSubstr("Skinned by the vertex program, in use: first frame over 1 s. "));
}

TEST(DiagnosisReport, HasVerdictAndRules)
{
    Diagnosis const diagnosis = sampleDiagnosis();
    std::string const text = textOfReport(diagnosis);
    EXPECT_THAT(text, HasSubstr("Drawn by buffer objects and vertex program"));
    for (Diagnosis::Ruling const& ruling : diagnosis.rulings())
        EXPECT_THAT(text, HasSubstr(std::string(nameOf(ruling.flag)) + (ruling.granted ? "● on" : "○ off")));
    for (Diagnosis::Ruling const& ruling : diagnosis.rulings())
        EXPECT_THAT(text, HasSubstr(ruling.reason));
}

TEST(DiagnosisReport, HasEveryComparisonWithItsLimit)
{
    std::string const text = textOfReport(sampleDiagnosis());
    EXPECT_THAT(text, HasSubstr("0.12% (315 of 262,144) off, less than 1% wanted"));
    EXPECT_THAT(text, HasSubstr("3.45% (9,044 of 262,144) off, 1% or more wanted"));
    EXPECT_THAT(text, HasSubstr("0.23% (603 of 262,144) off, less than 1% wanted"));
    EXPECT_THAT(text, HasSubstr("250,123 white pixels and 12,021 others"));
    EXPECT_THAT(text, HasSubstr("3 of 3 right"));
    EXPECT_THAT(text, Not(HasSubstr("wrong")));
}

TEST(DiagnosisReport, SaysWhichComparisonFailed)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.comparisons[0].mismatch = 0.01;
    diagnosis.comparisons[1].mismatch = 0.0099;
    diagnosis.referencePixels = Diagnosis::PixelCount{2621, 259523};
    EXPECT_THAT(textOfReport(diagnosis),
                AllOf(HasSubstr("wrong: they differ"), HasSubstr("wrong: they are the same"),
                      HasSubstr("1 of 3 right"), HasSubstr("implausible")));
}

TEST(DiagnosisReport, HasEachPictureOnceAndTheirDifferences)
{
    Diagnosis const diagnosis = sampleDiagnosis();
    std::vector<std::string> sources;
    Page const page(reportOn(diagnosis));
    for (pugi::xml_node const image : page.elements("img"))
        sources.emplace_back(image.attribute("src").value());
    auto const view = [&](std::size_t which) -> sgview::Picture const& {
        return diagnosis.images[which].picture;
    };
    auto const difference = [&](std::size_t a, std::size_t b) {
        return sourceOf(amplifiedDifference(view(a), view(b), 32));
    };
    EXPECT_THAT(sources,
                ElementsAre(sourceOf(view(0)), sourceOf(view(1)), difference(0, 1), sourceOf(view(3)),
                            sourceOf(view(2)), difference(2, 3), difference(0, 2)));
}

TEST(DiagnosisReport, HasTheShadersPicturesToo)
{
    using View = Diagnosis::View;
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.images.push_back({View::shaderAtRest, plainPicture(99)});
    diagnosis.comparisons.push_back({View::reference, View::shaderAtRest, 0.5, false});
    Page const page(reportOn(diagnosis));
    EXPECT_EQ(page.elements("img").size(), 9U);
    EXPECT_THAT(page.source(), HasSubstr("Test scene: vertex shader, at rest"));
}

TEST(DiagnosisReport, LeavesOutADifferenceOfUnlikeSizes)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.images[1].picture = sgview::Picture({2, 2});
    Page const page(reportOn(diagnosis));
    EXPECT_EQ(page.elements("img").size(), 6U);
}

TEST(DiagnosisReport, HasTheWholeLog)
{
    Page const page(reportOn(sampleDiagnosis()));
    pugi::xml_node const log = page.elements("details").front();
    EXPECT_EQ(Page::textOf(log.child("pre")),
              "Running graphics diagnostics\n"
              "Done creating test scene -- number of surfaces = 4\n"
              "Compared images.  Mismatch = 0.0012\n"
              "Final caps: VBO = Yes, vertex program = Yes, vertex shader = No\n");
    EXPECT_EQ(Page::textOf(log.child("summary")), "All 4 lines");
}

TEST(DiagnosisReport, HasTimeAndSurfaces)
{
    EXPECT_THAT(textOfReport(sampleDiagnosis()),
                AllOf(HasSubstr("Surfaces in the test scene4"), HasSubstr("Time taken0.876 s")));
}

TEST(DiagnosisReport, SaysThatNothingWasInView)
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.referencePixels = Diagnosis::PixelCount{262144, 0};
    EXPECT_THAT(textOfReport(diagnosis), Not(HasSubstr("nothing was in view"))) << "a bad picture";
    diagnosis.surfaces = 1;
    EXPECT_THAT(textOfReport(diagnosis), HasSubstr("nothing was in view"));
}

TEST(DiagnosisReport, OnABrokenOffRunTellsHowFarItGot)
{
    EXPECT_THAT(textOfReport(brokenOffDiagnosis(), "The process was killed by signal 11."),
                AllOf(HasSubstr("No verdict"), HasSubstr("The process was killed by signal 11."),
                      HasSubstr("The log ends with: Checking vertex program performance"),
                      HasSubstr("undecided"), HasSubstr("Skinned on the processor: 61.50"),
                      HasSubstr("No two pictures were compared."), Not(HasSubstr("in use")),
                      Not(HasSubstr("Time taken"))));
}

TEST(DiagnosisReport, OnARunThatDidNotBeginSaysSo)
{
    EXPECT_THAT(textOfReport(Diagnosis()),
                AllOf(HasSubstr("No verdict"), HasSubstr("The card is not known."),
                      HasSubstr("No technique was timed."), HasSubstr("No picture was read back."),
                      HasSubstr("All 0 lines")));
}

} // namespace
