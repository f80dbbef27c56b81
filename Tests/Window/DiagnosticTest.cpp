#include "Tests/Window/WindowTesting.h"

#include <X11/keysym.h>

#include <csignal>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

std::string contentOf(fs::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The section of the panel, which its key brings to the panel's upper end where enough stands below it: its
/// buttons stand below its title.
class DiagnosticPanel : public WindowTest {
protected:
    static constexpr int buttonsY = 58;
    static constexpr int measureX = windowSize.width - panelWidth + 80;
    static constexpr int reportX = windowSize.width - panelWidth + 220;

    void openSection()
    {
        fs::create_directories(home / ".config/sgview");
        std::ofstream(home / ".config/sgview/preferences") << "panel.Timing = open\n";
        ASSERT_NO_FATAL_FAILURE(openModel(CREATURE, {"--technique", "plain"}));
        sgview::Picture const before = still(panel);
        user->type(XK_d);
        sgview::Picture const opened = changed(panel, before);
        EXPECT_GT(difference(opened, before), 0.02);
    }

    void clickOn(int x)
    {
        user->moveTo(x, buttonsY);
        user->click(1);
    }

    void awaitVerdict() const
    {
        ASSERT_TRUE(eventually([this] {
            return contentOf(settings / "preferences").find("GL_CARD") != std::string::npos &&
                   !fs::exists(settings / "diagnostic-journal");
        })) << contentOf(settings / "diagnostic-journal");
    }

    [[nodiscard]] fs::path report() const
    {
        std::error_code error;
        for (fs::directory_iterator entry(home / "Pictures", error), end; !error && entry != end;
             entry.increment(error))
            if (entry->path().extension() == ".html")
                return entry->path();
        return {};
    }

    /// The process that measures, once it has said in the journal that it does; 0 before.
    [[nodiscard]] pid_t measuringProcess() const
    {
        std::string const journal = contentOf(settings / "diagnostic-journal");
        std::size_t const at = journal.find("process");
        std::size_t const number = journal.find_first_of("0123456789", at);
        if (at == std::string::npos || number == std::string::npos)
            return 0;
        pid_t const process = std::stoi(journal.substr(number));
        std::string const arguments = contentOf("/proc/" + std::to_string(process) + "/cmdline");
        return arguments.find("--diagnostic-worker") != std::string::npos ? process : 0;
    }

    fs::path const settings = home / ".config/OpenGLRenderer";
};

TEST_F(DiagnosticPanel, MeasuresAndReports)
{
    ASSERT_NO_FATAL_FAILURE(openSection());
    EXPECT_FALSE(fs::exists(settings / "preferences"));
    clickOn(reportX); // nothing to report yet
    sgview::Picture const before = still(panel);
    sgview::Picture const name = still(statusLine);
    clickOn(measureX);
    ASSERT_NO_FATAL_FAILURE(awaitVerdict());
    EXPECT_GT(difference(changed(panel, before), before), 0.05);
    EXPECT_EQ(report(), "");
    EXPECT_LT(difference(still(statusLine), name), 1e-3) << "the technique changes by itself";

    clickOn(reportX);
    ASSERT_TRUE(eventually([this] { return !report().empty(); }));
    std::string const page = contentOf(report());
    EXPECT_NE(page.find("<h1><span>Graphics diagnostic </span>Drawn by "), std::string::npos);
    EXPECT_NE(page.find("</html>"), std::string::npos);
    quitWell();
}

TEST_F(DiagnosticPanel, KeepsTheWindowAliveAndLeavesNothingWhenItCloses)
{
    ASSERT_NO_FATAL_FAILURE(openSection());
    sgview::Picture const first = still(scene);
    clickOn(measureX);
    ASSERT_TRUE(eventually([this] { return fs::exists(settings / "diagnostic-journal"); }));
    user->drag(1, 300, 300, 380, 300);
    ASSERT_TRUE(eventually([&] { return difference(look(scene), first) > 0.01; }));
    quitWell();
    EXPECT_FALSE(fs::exists(settings / "diagnostic-journal"));
}

TEST_F(DiagnosticPanel, StopsWithoutAVerdict)
{
    ASSERT_NO_FATAL_FAILURE(openSection());
    clickOn(measureX);
    ASSERT_TRUE(eventually([this] { return fs::exists(settings / "diagnostic-journal"); }));
    user->type(XK_Escape);
    ASSERT_TRUE(eventually([this] { return !fs::exists(settings / "diagnostic-journal"); }));
    EXPECT_FALSE(fs::exists(settings / "preferences")) << "a run that was stopped has no verdict";
    quitWell();
}

TEST_F(DiagnosticPanel, OutlivesARunThatDies)
{
    ASSERT_NO_FATAL_FAILURE(openSection());
    sgview::Picture const before = still(panel);
    clickOn(measureX);
    pid_t process = 0;
    ASSERT_TRUE(eventually([&] { return (process = measuringProcess()) > 0; }));
    ASSERT_EQ(::kill(process, SIGKILL), 0);
    ASSERT_TRUE(eventually(
        [this] { return contentOf(settings / "diagnostic-journal").find("signal 9") != std::string::npos; }));
    EXPECT_GT(difference(changed(panel, before), before), 0.05);
    EXPECT_FALSE(fs::exists(settings / "preferences"));
    clickOn(reportX);
    ASSERT_TRUE(eventually([this] { return !report().empty(); }));
    EXPECT_NE(contentOf(report()).find("The run was ended by signal 9"), std::string::npos);
    quitWell();
}

} // namespace
