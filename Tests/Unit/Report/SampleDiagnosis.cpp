#include "Tests/Unit/Report/SampleDiagnosis.h"

#include "Viewer/Diagnosis/DiagnosisReport.h"

#include <algorithm>
#include <sstream>

using sgview::Diagnosis;
using sgview::Picture;

Picture plainPicture(std::uint8_t brightness)
{
    Picture picture({4, 3});
    std::ranges::fill(picture.pixels, brightness);
    return picture;
}

Diagnosis sampleDiagnosis()
{
    using Step = Diagnosis::Step;
    using View = Diagnosis::View;
    Diagnosis diagnosis;
    diagnosis.card = "Tungsten / Sample 4200 / 2.1 build 7";
    diagnosis.surfaces = 4;
    diagnosis.limits = {{"GL_MAX_PROGRAM_INSTRUCTIONS_ARB", 16384}, {"GL_MAX_PROGRAM_ATTRIBS_ARB", 16}};
    diagnosis.claims = sgview::TechniqueFlags{true, true, false};
    diagnosis.verdict = sgview::TechniqueFlags{true, true, false};
    diagnosis.timeTests = {{Step::scene, 1, 2345.6, false},  {Step::scene, 2, 141.5, false},
                           {Step::scene, 4, 71.25, false},   {Step::plain, 4, 72.12, false},
                           {Step::vbo, 4, 90.0625, false},   {Step::base, 4, 61.5, false},
                           {Step::program, 4, 123.75, false}};
    diagnosis.referencePixels = Diagnosis::PixelCount{250123, 12021};
    diagnosis.comparisons = {{View::reference, View::programAtRest, 0.0012, false},
                             {View::reference, View::programBent, 0.0345, true},
                             {View::programBent, View::programCheck, 0.0023, false}};
    diagnosis.images = {{View::reference, plainPicture(10)},
                        {View::programAtRest, plainPicture(11)},
                        {View::programBent, plainPicture(70)},
                        {View::programCheck, plainPicture(72)}};
    diagnosis.log = {"Running graphics diagnostics", "Done creating test scene -- number of surfaces = 4",
                     "Compared images.  Mismatch = 0.0012",
                     "Final caps: VBO = Yes, vertex program = Yes, vertex shader = No"};
    diagnosis.seconds = 0.8765;
    return diagnosis;
}

Diagnosis brokenOffDiagnosis()
{
    Diagnosis diagnosis = sampleDiagnosis();
    diagnosis.verdict.reset();
    diagnosis.timeTests.pop_back();
    diagnosis.comparisons.clear();
    diagnosis.images.erase(diagnosis.images.begin() + 1, diagnosis.images.end());
    diagnosis.log = {"Running graphics diagnostics", "Checking vertex program performance"};
    diagnosis.seconds = 0.0;
    return diagnosis;
}

std::string reportOn(Diagnosis const& diagnosis, std::string_view ending)
{
    std::ostringstream out;
    sgview::writeReport(out, diagnosis, ending, sampleTime);
    return out.str();
}
