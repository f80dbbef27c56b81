#include "Viewer/Window/BackgroundDiagnostic.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"
#include "Viewer/Diagnosis/DiagnosticGate.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

namespace sgview {
namespace {

using namespace std::chrono_literals;

bool isBlocked(int signal)
{
    sigset_t mask;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    return ::sigismember(&mask, signal) == 1;
}

/// A user whose journal somebody else has locked: no run begins.
class LockedOut : public testing::Test {
protected:
    LockedOut()
    {
        ::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
        journal = DiagnosticJournal::usual();
        lock = journal->lock(0ms);
    }
    ~LockedOut() override { ::unsetenv("XDG_CONFIG_HOME"); }

    static bool isDoneSoon(BackgroundDiagnostic const& run)
    {
        auto const deadline = std::chrono::steady_clock::now() + 20s;
        while (!run.isDone() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(5ms);
        return run.isDone();
    }

    TemporaryFolder folder;
    std::optional<DiagnosticJournal> journal;
    std::unique_ptr<FileLock> lock;
};

TEST_F(LockedOut, RunWaitsAndCanBeStopped)
{
    BackgroundDiagnostic run(std::nullopt, {"card", "offscreen"});
    std::this_thread::sleep_for(100ms);
    EXPECT_FALSE(run.isDone());
    EXPECT_EQ(run.step(), waitingForOthers);
    run.cancel();
    ASSERT_TRUE(isDoneSoon(run));
    EXPECT_THROW(static_cast<void>(run.take()), DiagnosticBusy);
    EXPECT_FALSE(journal->read());
}

TEST_F(LockedOut, RunThatGoesIsStopped)
{
    auto const start = std::chrono::steady_clock::now();
    {
        BackgroundDiagnostic const run(std::nullopt, {"card", "offscreen"});
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, DiagnosticOptions::usualTimeLimit / 2);
}

TEST_F(LockedOut, RunHoldsBackSignalsForTheMainThread)
{
    {
        BackgroundDiagnostic const run(std::nullopt, {"card", "offscreen"});
        for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            EXPECT_TRUE(isBlocked(signal));
    }
    EXPECT_FALSE(isBlocked(SIGTERM));
}

TEST_F(LockedOut, NoRunThatIsOnHasDied)
{
    journal->write(makeEntry("card", "timing"));
    EXPECT_FALSE(deadRunOn("card", journal));
    EXPECT_TRUE(deadRunOn("card", journal, lock.get()));
    lock.reset();
    ASSERT_TRUE(deadRunOn("card", journal));
    EXPECT_EQ(deadRunOn("card", journal)->step, "timing");
    EXPECT_FALSE(deadRunOn("another card", journal));
    EXPECT_FALSE(deadRunOn("card", std::nullopt));
}

TEST_F(LockedOut, WhatHasEndedBadlyIsToldWhileAnotherRunIsOn)
{
    JournalEntry entry = makeEntry("card", "timing");
    entry.end = "was cut off";
    journal->write(entry);
    EXPECT_TRUE(deadRunOn("card", journal));
}

TEST_F(LockedOut, GoneOthersLetIn)
{
    lock.reset();
    EXPECT_TRUE(lockOut(journal));
    std::optional<DiagnosticJournal> nobodys;
    EXPECT_FALSE(lockOut(nobodys));
}

TEST_F(LockedOut, NoLockAndNoJournalInAFolderThatCannotBe)
{
    std::ofstream(folder.path() / "file") << "in the way";
    std::optional<DiagnosticJournal> unwritable(folder.path() / "file");
    EXPECT_FALSE(lockOut(unwritable));
    EXPECT_FALSE(unwritable);
}

} // namespace
} // namespace sgview
