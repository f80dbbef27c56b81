#include "Viewer/Diagnosis/DiagnosisLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using sgview::Diagnosis;
using testing::HasSubstr;

std::vector<std::string> const beginning{"Running graphics diagnostics",
                                         "Done creating test scene -- number of surfaces = 4",
                                         "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = 96"};
std::string const bothOffered = "Card caps: VBO = Yes, vertex program = Yes, vertex shader = No";
std::string const goodPixels = "Checking test image: white = 200000, nonWhite = 62144";

/// A run's log after its beginning, and what must be said of a flag.
struct Case {
    std::string name;
    std::vector<std::string> log;
    Diagnosis::Flag flag = Diagnosis::Flag::vbo;
    bool granted = false;
    std::string reason; ///< a part of it
};

void PrintTo(Case const& one, std::ostream* stream)
{
    *stream << one.name;
}

std::string verdict(char const* vbo, char const* program)
{
    return std::string("Final caps: VBO = ") + vbo + ", vertex program = " + program + ", vertex shader = No";
}

std::vector<std::string> const buffersTimed{bothOffered, "Checking VBO performance", "Ran time test, got 50",
                                            "Ran time test, got 60"};
std::vector<std::string> const programTimed{bothOffered,
                                            "Checking VBO performance",
                                            "Ran time test, got 50",
                                            "Ran time test, got 60",
                                            "Checking base animation performance",
                                            "Ran time test, got 40",
                                            goodPixels,
                                            "Checking vertex program performance",
                                            "Ran time test, got 45"};

std::vector<std::string> operator+(std::vector<std::string> first, std::vector<std::string> const& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::vector<Case> cases()
{
    using enum Diagnosis::Flag;
    std::string const noBuffers = "Card caps: VBO = No, vertex program = Yes, vertex shader = No";
    std::string const noProgram = "Card caps: VBO = Yes, vertex program = No, vertex shader = No";
    std::string const unreadable = "Could not read image correctly--disabling vertex program and VBO";
    std::string const stiff = "Images that should differ are the same--disabling everything";
    std::vector<std::string> const stiffRun =
        programTimed + std::vector<std::string>{"Compared images.  Mismatch = 0",
                                                "Compared images.  Mismatch = 0.002", stiff,
                                                verdict("No", "No")};
    std::vector<std::string> const unreadableRun = {bothOffered,
                                                    "Checking VBO performance",
                                                    "Ran time test, got 50",
                                                    "Ran time test, got 60",
                                                    "Checking base animation performance",
                                                    "Ran time test, got 40",
                                                    "Checking test image: white = 262144, nonWhite = 0",
                                                    unreadable,
                                                    verdict("No", "No")};
    return {
        {"BuffersNotOffered", {noBuffers, verdict("No", "No")}, vbo, false, "the card does not offer them"},
        {"BuffersNotSlower", buffersTimed + std::vector{verdict("Yes", "No")}, vbo, true,
         "not slower: 60.00 frames per second with them, 50.00 without"},
        {"BuffersSlower",
         {bothOffered, "Checking VBO performance", "Ran time test, got 50", "Ran time test, got 49",
          "VBO is slower -- reverting", verdict("No", "No")},
         vbo,
         false,
         "slower: 49.00 frames per second with them, 50.00 without"},
        {"BuffersSlowerByLessThanIsPrinted",
         {bothOffered, "Checking VBO performance", "Ran time test, got 50", "Ran time test, got 50",
          "VBO is slower -- reverting", verdict("No", "No")},
         vbo,
         false,
         "slower: 50.00"},
        {"BuffersBailedOut",
         {bothOffered, "Checking VBO performance", "Ran time test, got 50",
          "Ran time test, but first render took too long, so bailing out", "VBO is slower -- reverting",
          verdict("No", "No")},
         vbo,
         false,
         "the first frame took more than a second"},
        {"BuffersNotTrustedAfterAnUnreadablePicture", unreadableRun, vbo, false,
         "the reference picture has 262,144 white pixels and 0 others"},
        {"BuffersNotTrustedAfterStiffBones", stiffRun, vbo, false, "hardly change the picture (0.2%"},
        {"ProgramNotOffered",
         {noProgram, verdict("Yes", "No")},
         vertexProgram,
         false,
         "the card does not offer them"},
        {"ProgramInSoftware",
         {"GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = 0", noProgram, verdict("Yes", "No")},
         vertexProgram,
         false,
         "0 native instructions"},
        {"ProgramOfALyingCard",
         {"possibly lying ATI card detected--disabling vertex program", noProgram, verdict("Yes", "No")},
         vertexProgram,
         false,
         "claims them and gets them wrong"},
        {"ProgramRight",
         programTimed + std::vector<std::string>{"Compared images.  Mismatch = 0.001",
                                                 "Compared images.  Mismatch = 0.3",
                                                 "Compared images.  Mismatch = 0.002",
                                                 "vertex program is faster: enabling", verdict("Yes", "Yes")},
         vertexProgram, true,
         "45.00 frames per second with it, 40.00 with the processor; 0.1% of the pixels off at rest, 0.2% "
         "bent"},
        {"ProgramSlower",
         programTimed +
             std::vector<std::string>{"Bad vertex program performance--disabling", verdict("Yes", "No")},
         vertexProgram, false, "slower: 45.00 frames per second with it, 40.00 with the processor"},
        {"ProgramWrongAtRest",
         programTimed + std::vector<std::string>{"Compared images.  Mismatch = 0.0100021",
                                                 "Images differ--disabling vertex program",
                                                 verdict("Yes", "No")},
         vertexProgram, false, "its picture at rest is wrong: 1.0002%"},
        {"ProgramWrongBent",
         programTimed +
             std::vector<std::string>{"Compared images.  Mismatch = 0", "Compared images.  Mismatch = 0.3",
                                      "Compared images.  Mismatch = 0.04",
                                      "Second images differ--disabling vertex program", verdict("Yes", "No")},
         vertexProgram, false, "its picture with bent bones is wrong: 4%"},
        {"ProgramStiff", stiffRun, vertexProgram, false, "hardly change the picture (0.2%"},
        {"ProgramUnreadable", unreadableRun, vertexProgram, false, "less than 2,622 of either"},
        {"Shader", {bothOffered, verdict("No", "No")}, vertexShader, false, "on every card"},
        {"NothingDecided", buffersTimed, vbo, false, "not decided"},
        {"NothingDecidedOfProgram", programTimed, vertexProgram, false, "not decided"},
    };
}

class Rulings : public testing::TestWithParam<Case> {};

TEST_P(Rulings, FlagHasItsReason)
{
    sgview::DiagnosisLog log;
    for (std::string const& line : GetParam().log.front().starts_with("GL_MAX")
                                       ? std::vector(beginning.begin(), beginning.end() - 1)
                                       : beginning)
        log.addLine(line);
    for (std::string const& line : GetParam().log)
        log.addLine(line);
    Diagnosis::Ruling const ruling = log.diagnosis().rulings()[static_cast<std::size_t>(GetParam().flag)];
    EXPECT_EQ(ruling.flag, GetParam().flag);
    EXPECT_EQ(ruling.granted, GetParam().granted);
    EXPECT_THAT(ruling.reason, HasSubstr(GetParam().reason));
    EXPECT_EQ(ruling.reason.starts_with("not slower"), ruling.granted);
}

INSTANTIATE_TEST_SUITE_P(Every, Rulings, testing::ValuesIn(cases()),
                         [](auto const& one) { return one.param.name; });

} // namespace
