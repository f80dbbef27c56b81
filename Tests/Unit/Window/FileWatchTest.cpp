#include "Viewer/Window/FileWatch.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace sgview {
namespace {

namespace fs = std::filesystem;

class FileWatchTest : public testing::Test {
protected:
    FileWatchTest() { write("first"); }

    void write(std::string const& content) const { std::ofstream(file) << content; }

    /// A look one interval later.
    bool look()
    {
        now += FileWatch::interval;
        return watch.hasChanged(now);
    }

    TemporaryFolder folder;
    fs::path file = folder.path() / "model.obj";
    FileWatch watch;
    FileWatch::Time now{std::chrono::hours(1)};
};

TEST_F(FileWatchTest, TellsAChangeOnceItHasPaused)
{
    watch = FileWatch(file);
    EXPECT_FALSE(look());
    write("second one");
    EXPECT_FALSE(look()); // may still be written
    EXPECT_TRUE(look());
    EXPECT_FALSE(look());
}

TEST_F(FileWatchTest, WaitsWhileItGoesOnChanging)
{
    watch = FileWatch(file);
    for (int i = 0; i < 5; ++i) {
        write(std::string(static_cast<std::size_t>(20 + i), 'x'));
        EXPECT_FALSE(look());
    }
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, AFilePutInItsPlaceIsAChange)
{
    watch = FileWatch(file);
    std::ofstream(folder.path() / "new") << "fifth"; // as long as the first
    fs::last_write_time(folder.path() / "new", fs::last_write_time(file) + std::chrono::seconds(1));
    fs::rename(folder.path() / "new", file);
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, AFileThatIsGoneIsWaitedFor)
{
    watch = FileWatch(file);
    fs::remove(file);
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(look());
    write("back again");
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, DoesNotLookMoreOftenThanItSays)
{
    watch = FileWatch(file);
    EXPECT_FALSE(look());
    write("second one");
    EXPECT_FALSE(look());
    EXPECT_FALSE(watch.hasChanged(now + FileWatch::interval / 2));
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, WatchesWhatTheModelRefersTo)
{
    fs::path const texture = folder.path() / "a.png";
    fs::path const missing = folder.path() / "b.png";
    std::ofstream(texture) << "one";
    watch = FileWatch(file);
    SourceFiles sources;
    add(sources, texture);
    add(sources, missing);
    watch.follow(sources);
    EXPECT_FALSE(look());
    EXPECT_FALSE(look());
    std::ofstream(texture) << "edited";
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
    EXPECT_FALSE(look());
    std::ofstream(missing) << "no more";
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());

    fs::remove(texture);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(look());
    write("a model without it");
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
    watch.follow({});
    std::ofstream(texture) << "back again";
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(look());
}

TEST_F(FileWatchTest, WhatIsWrittenWhileItIsReadIsAChange)
{
    fs::path const texture = folder.path() / "a.png";
    std::ofstream(texture) << "one";
    watch = FileWatch(file);
    SourceFiles sources;
    add(sources, texture);
    std::ofstream(texture) << "later";
    watch.follow(sources);
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
}

TEST_F(FileWatchTest, WaitsUntilAllHavePaused)
{
    fs::path const texture = folder.path() / "a.png";
    std::ofstream(texture) << "one";
    watch = FileWatch(file);
    SourceFiles sources;
    add(sources, texture);
    watch.follow(sources);
    write("second one");
    EXPECT_FALSE(look());
    std::ofstream(texture) << "edited";
    EXPECT_FALSE(look());
    EXPECT_TRUE(look());
    EXPECT_FALSE(look());
}

TEST_F(FileWatchTest, WhatIsAcceptedIsNoNews)
{
    watch = FileWatch(file);
    EXPECT_EQ(watch.file(), file);
    write("second one");
    watch.accept();
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(look());
}

TEST_F(FileWatchTest, NoFileNoNews)
{
    EXPECT_FALSE(look());
    EXPECT_FALSE(look());
}

} // namespace
} // namespace sgview
