#include "Utilities/FileLock.h"

#include "Tests/Unit/Utilities/ChildProcess.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <csignal>

using namespace std::chrono_literals;

TEST(FileLock, KeepsOthersOutForAsLongAsItLives)
{
    TemporaryFolder const folder;
    {
        FileLock const lock(folder / "lock");
        EXPECT_THROW(FileLock(folder / "lock", 10ms), std::system_error);
        EXPECT_EQ(ChildProcess::run([&] {
                      FileLock const other(folder / "lock", 10ms);
                      return 0;
                  }),
                  125)
            << "another process has to wait as well";
    }
    EXPECT_NO_THROW(FileLock(folder / "lock", 0ms));
}

TEST(FileLock, WaitsForItsTurn)
{
    TemporaryFolder const folder;
    auto lock = std::make_unique<FileLock>(folder / "lock");
    pid_t const waiting = ChildProcess::start([&] {
        FileLock const other(folder / "lock", 10s);
        return 0;
    });
    lock.reset();
    EXPECT_EQ(ChildProcess::wait(waiting), 0);
}

TEST(FileLock, EndsWithAProcessThatIsKilled)
{
    TemporaryFolder const folder;
    EXPECT_EQ(ChildProcess::run([&] {
                  FileLock const lock(folder / "lock");
                  raise(SIGKILL);
                  return 0;
              }),
              128 + SIGKILL);
    EXPECT_NO_THROW(FileLock(folder / "lock", 0ms));
}

TEST(FileLock, IsNotLeftToAChildThatWasForkedMeanwhile)
{
    TemporaryFolder const folder;
    auto lock = std::make_unique<FileLock>(folder / "lock");
    pid_t const child = ChildProcess::start([] {
        pause();
        return 0;
    });
    lock.reset();
    EXPECT_NO_THROW(FileLock(folder / "lock", 0ms));
    kill(child, SIGKILL);
    EXPECT_EQ(ChildProcess::wait(child), 128 + SIGKILL);
}

TEST(FileLock, IsForItsOwnerAlone)
{
    TemporaryFolder const folder;
    mode_t const before = umask(0);
    FileLock const lock(folder / "lock");
    umask(before);
    EXPECT_EQ(std::filesystem::status(folder / "lock").permissions(), std::filesystem::perms{0600});
}

TEST(FileLock, NamesAFileThatCannotBeMade)
{
    TemporaryFolder const folder;
    try {
        FileLock const lock(folder / "none/lock");
        FAIL();
    } catch (std::system_error const& error) {
        EXPECT_EQ(error.what(), (folder / "none/lock").string() + ": No such file or directory");
    }
    std::filesystem::create_symlink(folder / "elsewhere", folder / "link");
    EXPECT_THROW(FileLock(folder / "link"), std::system_error) << "a link is not followed";
    EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere"));
}
