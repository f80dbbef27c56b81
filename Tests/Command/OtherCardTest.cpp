#include "Tests/Command/OtherCard.h"
#include "Tests/Command/Sgview.h"

#include "Viewer/Diagnosis/DiagnosticJournal.h"
#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

namespace fs = std::filesystem;
using sgview::DiagnosticJournal;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Who measures gets another card than who draws.
class OtherCard : public SgviewTest {
protected:
    OtherCard() : journal(folder / "user" / "OpenGLRenderer")
    {
        sgview::HeadlessContext const context({8, 8});
        ownCard = sgview::cardInUse();
    }

    [[nodiscard]] Circumstances withOtherCard(std::string const& where) const
    {
        Circumstances circumstances = asNewUser();
        circumstances.environment.merge(environmentOfOtherCard(where));
        return circumstances;
    }
    [[nodiscard]] Outcome draw(Circumstances const& circumstances) const
    {
        return run({"demo", "--output", "a.png", "--size", "64x64", "--module", FAULTY_MODULE, "--log",
                    "opengl,error"},
                   circumstances);
    }
    [[nodiscard]] Outcome diagnose(std::vector<std::string> const& options,
                                   Circumstances const& circumstances) const
    {
        std::vector<std::string> arguments{"diagnose", "--module", FAULTY_MODULE};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(arguments, circumstances);
    }

    DiagnosticJournal journal;
    std::string ownCard;
};

TEST_F(OtherCard, IsNeitherMeasuredNorStored)
{
    std::string const failure =
        "failed ('" + ownCard + "' cannot be measured; without a screen: the card is '";
    for (int start = 0; start < 2; ++start) {
        Outcome const outcome = draw(withOtherCard("everywhere"));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.errors,
                    AllOf(HasSubstr("sgview: warning: drawn by the plain technique: the last run of the "
                                    "graphics diagnostic " +
                                    failure),
                          HasSubstr("softpipe"),
                          HasSubstr("opengl: Read caps: VBO = No, vertex program = No"),
                          Not(HasSubstr("Running graphics diagnostics")), Not(HasSubstr("hidden window"))));
        EXPECT_TRUE(fs::exists(folder / "a.png"));
        EXPECT_FALSE(fs::exists(folder / "user/OpenGLRenderer/preferences"));
    }
    ASSERT_TRUE(journal.read());
    EXPECT_EQ(journal.read()->card, ownCard);
    EXPECT_EQ(journal.read()->step, "opening an OpenGL context");
    EXPECT_THAT(journal.read()->end, StartsWith(failure));
}

TEST_F(OtherCard, IsTriedOnceAndAgainWhenAskedTo)
{
    EXPECT_EQ(draw(withOtherCard("everywhere")).status, 0);
    std::string const first = contentOf("user/OpenGLRenderer/diagnostic-journal");
    EXPECT_EQ(draw(withOtherCard("everywhere")).status, 0);
    EXPECT_EQ(contentOf("user/OpenGLRenderer/diagnostic-journal"), first);
    EXPECT_THAT(diagnose({"--why"}, withOtherCard("everywhere")).output,
                AllOf(HasSubstr("failed ('"), HasSubstr("softpipe"), HasSubstr("--force")));

    Outcome const again = diagnose({"--force", "--json", "a.json"}, withOtherCard("everywhere"));
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.errors, StartsWith("sgview: the run failed ('" + ownCard));
    nlohmann::json const run = nlohmann::json::parse(contentOf("a.json"));
    EXPECT_EQ(run["card"], ownCard);
    EXPECT_EQ(run["verdict"], nullptr);
    EXPECT_NE(contentOf("user/OpenGLRenderer/diagnostic-journal"), first);

    EXPECT_EQ(diagnose({"--force"}, asNewUser()).status, 0);
    EXPECT_FALSE(journal.read());
    EXPECT_THAT(draw(withOtherCard("everywhere")).errors,
                AllOf(HasSubstr("Read caps: VBO = Yes, vertex program = Yes"), Not(HasSubstr("warning"))));
}

TEST_F(OtherCard, ThatAWindowDrawsByIsToldOf)
{
    sgview::JournalEntry entry = sgview::makeEntry("Card of windows", "opening an OpenGL context");
    entry.end = "failed (for a reason)";
    fs::create_directories(journal.file().parent_path());
    journal.write(entry);
    Outcome const why = diagnose({"--why"}, asNewUser());
    EXPECT_THAT(why.output, AllOf(HasSubstr("on another card     Card of windows\n"),
                                  HasSubstr("failed (for a reason) while opening an OpenGL context")));
}

TEST_F(OtherCard, GrantsNoTechniqueThatTheOpenGLInUseLacks)
{
    Circumstances circumstances = withOtherCard("richer");
    circumstances.environment["MESA_EXTENSION_OVERRIDE"] = "-GL_ARB_vertex_program";
    Outcome const outcome = draw(circumstances);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors,
                AllOf(HasSubstr("opengl: Final caps: VBO = Yes, vertex program = Yes"),
                      HasSubstr("sgview: warning: drawn by the plain technique: technique program+vbo: the "
                                "OpenGL in use lacks GL_ARB_vertex_program\n"),
                      EndsWith("opengl: Read caps: VBO = No, vertex program = No, vertex shader = No\n")));
    EXPECT_TRUE(fs::exists(folder / "a.png"));
}

} // namespace
