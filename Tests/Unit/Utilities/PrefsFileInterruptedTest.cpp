#include "Utilities/PrefsFile.h"

#include "Tests/Unit/Utilities/CapturedLog.h"
#include "Tests/Unit/Utilities/ChildProcess.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/syscall.h>

#include <algorithm>
#include <csignal>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr char const* oldText =
    "# Preferences of OpenGLRenderer, written by the program.\na = old\nb = kept\n";
constexpr char const* newText =
    "# Preferences of OpenGLRenderer, written by the program.\na = new\nb = kept\n";

class PrefsFileInterruptedTest : public testing::Test {
protected:
    PrefsFileInterruptedTest() { writeFile(folder / "preferences", oldText); }

    /// Sets "a" and says whether that failed as it should: one line in the log, the value in memory.
    [[nodiscard]] bool failsToSet() const
    {
        CapturedLog const log;
        PrefsFile prefs(folder.path());
        prefs.setString("a", "new");
        std::string const text = log.text();
        return text.starts_with("error: Preferences not saved: ") &&
               std::count(text.begin(), text.end(), '\n') == 1 && prefs.getString("a") == "new";
    }

    [[nodiscard]] std::string text() const { return readFile(folder / "preferences"); }

    void expectUsable() const
    {
        PrefsFile(folder.path()).setString("c", "later");
        EXPECT_EQ(PrefsFile(folder.path()).getString("c"), "later");
        EXPECT_EQ(PrefsFile(folder.path()).getString("b"), "kept");
        EXPECT_FALSE(fs::exists(folder / "preferences.new"));
    }

    TemporaryFolder folder;
};

class PrefsFileFailingCallTest : public PrefsFileInterruptedTest,
                                 public testing::WithParamInterface<ChildProcess::SystemCall> {
protected:
    static constexpr int cannotTry = 77;
};

} // namespace

TEST_F(PrefsFileInterruptedTest, ADiskThatIsFullKeepsTheOldFile)
{
    int const result = ChildProcess::run([&] {
        signal(SIGXFSZ, SIG_IGN);
        rlimit const limit{20, 20};
        setrlimit(RLIMIT_FSIZE, &limit);
        return failsToSet() ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(text(), oldText);
    EXPECT_FALSE(fs::exists(folder / "preferences.new"));
    expectUsable();
}

TEST_F(PrefsFileInterruptedTest, AWriterKilledAtAnySystemCallLeavesAWholeFile)
{
    int kept = 0;
    int replaced = 0;
    bool const traced =
        ChildProcess::killAtEverySystemCall([&] { writeFile(folder / "preferences", oldText); },
                                            [&] { PrefsFile(folder.path()).setString("a", "new"); },
                                            [&] {
                                                SCOPED_TRACE(kept + replaced);
                                                std::string const left = text();
                                                EXPECT_TRUE(left == oldText || left == newText) << left;
                                                ++(left == oldText ? kept : replaced);
                                                expectUsable();
                                            });
    if (!traced)
        GTEST_SKIP() << "this process may not trace its children";
    EXPECT_GT(kept, 10);
    EXPECT_GT(replaced, 2);
}

TEST_F(PrefsFileInterruptedTest, ReachesTheDiskBeforeItTakesTheOldFilesPlace)
{
    std::vector<long> calls =
        ChildProcess::systemCallsOf([&] { PrefsFile(folder.path()).setString("a", "new"); });
    if (calls.empty())
        GTEST_SKIP() << "this process may not trace its children";
    std::erase_if(calls, [](long call) {
        return call != SYS_fsync && call != ChildProcess::renameNumber && call != SYS_flock;
    });
    // The last fsync is the folder's, which holds the name.
    EXPECT_EQ(calls,
              (std::vector<long>{SYS_flock, SYS_fsync, ChildProcess::renameNumber, SYS_fsync, SYS_flock}));
}

TEST_P(PrefsFileFailingCallTest, AnySystemCallThatFailsIsReportedAndLeavesAWholeFile)
{
    int const result = ChildProcess::run([&] {
        if (!ChildProcess::failSystemCall(GetParam().number, EIO))
            return cannotTry;
        return failsToSet() ? 0 : 1;
    });
    if (result == cannotTry)
        GTEST_SKIP() << "the kernel lets no process filter its system calls here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(text(), oldText);
    EXPECT_FALSE(fs::exists(folder / "preferences.new"));
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(All, PrefsFileFailingCallTest, testing::ValuesIn(ChildProcess::callsOfSaving),
                         [](auto const& test) { return test.param.name; });
