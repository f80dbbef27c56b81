#include "Utilities/PrefsFile.h"

#include "Utilities/MemoryPrefs.h"

#include "Tests/Unit/Utilities/CapturedLog.h"
#include "Tests/Unit/Utilities/ChildProcess.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

class PrefsBatchTest : public testing::Test {
protected:
    /// What another process would read.
    [[nodiscard]] std::string onDisk(std::string const& key) const
    {
        return PrefsFile(folder).getString(key);
    }

    void standInTheWay() { writeFile(parent / "preferences-folder", "in the way"); }
    void makeWay() { fs::remove(parent / "preferences-folder"); }

    TemporaryFolder parent;
    fs::path folder = parent / "preferences-folder";
    PrefsFile prefs{folder};
};

} // namespace

TEST_F(PrefsBatchTest, HoldsEntriesBackUntilItIsCommitted)
{
    prefs.setString("a", "old");
    Prefs::Batch batch(prefs);
    prefs.setString("a", "new");
    prefs.setString("b", "new");
    EXPECT_EQ(prefs.getString("a") + prefs.getString("b"), "newnew") << "there for whoever set them";
    EXPECT_EQ(onDisk("a") + onDisk("b"), "old");
    batch.commit();
    EXPECT_EQ(onDisk("a") + onDisk("b"), "newnew");
}

TEST_F(PrefsBatchTest, IsOverOnceItIsCommitted)
{
    Prefs::Batch batch(prefs);
    prefs.setString("a", "1");
    batch.commit();
    prefs.setString("b", "2");
    EXPECT_EQ(onDisk("b"), "2");
    batch.commit();
    prefs.setString("c", "3");
    EXPECT_EQ(onDisk("c"), "3");
}

TEST_F(PrefsBatchTest, WritesOnce)
{
    std::vector<long> const calls = ChildProcess::systemCallsOf([&] {
        PrefsFile fresh(folder);
        Prefs::Batch batch(fresh);
        for (char const* const key : {"a", "b", "c", "d"})
            fresh.setString(key, "1");
        batch.commit();
    });
    if (calls.empty())
        GTEST_SKIP() << "this process may not trace its children";
    EXPECT_EQ(std::ranges::count(calls, ChildProcess::renameNumber), 1);
    EXPECT_EQ(std::ranges::count(calls, SYS_flock), 2) << "taken once, released once";
}

TEST_F(PrefsBatchTest, WritesNothingThatIsThereAlready)
{
    prefs.setString("a", "1");
    auto const before = fs::last_write_time(folder / "preferences");
    Prefs::Batch batch(prefs);
    prefs.setString("a", "2");
    prefs.setString("a", "1");
    batch.commit();
    EXPECT_EQ(fs::last_write_time(folder / "preferences"), before);
}

TEST_F(PrefsBatchTest, LeftByAnExceptionIsAsIfItHadNotBeen)
{
    prefs.setString("a", "old");
    auto const setHalf = [&] {
        Prefs::Batch const batch(prefs);
        prefs.setString("a", "new");
        prefs.setString("b", "new");
        throw std::runtime_error("before the rest");
    };
    EXPECT_THROW(setHalf(), std::runtime_error);
    EXPECT_EQ(prefs.getString("a") + prefs.getString("b"), "old");
    prefs.setString("c", "later");
    EXPECT_EQ(onDisk("a") + onDisk("b") + onDisk("c"), "oldlater");
}

TEST_F(PrefsBatchTest, OfSeveralTheOutermostWrites)
{
    Prefs::Batch outer(prefs);
    prefs.setString("a", "1");
    {
        Prefs::Batch inner(prefs);
        prefs.setString("b", "2");
        inner.commit();
    }
    prefs.setString("c", "3");
    EXPECT_FALSE(fs::exists(folder)) << "nothing is written so far";
    outer.commit();
    EXPECT_EQ(onDisk("a") + onDisk("b") + onDisk("c"), "123");
}

TEST_F(PrefsBatchTest, AnInnerOneThatIsLeftTakesBackItsOwn)
{
    Prefs::Batch outer(prefs);
    prefs.setString("a", "1");
    {
        Prefs::Batch const inner(prefs);
        prefs.setString("a", "2");
        prefs.setString("b", "2");
    }
    outer.commit();
    EXPECT_EQ(onDisk("a") + onDisk("b"), "1");
}

TEST_F(PrefsBatchTest, AnOuterOneThatIsLeftTakesBackAll)
{
    {
        Prefs::Batch const outer(prefs);
        Prefs::Batch inner(prefs);
        prefs.setString("a", "1");
        inner.commit();
    }
    EXPECT_EQ(prefs.getString("a"), "");
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(PrefsBatchTest, ThatCannotBeWrittenIsReportedOnceAndGoesOutLaterAsAWhole)
{
    CapturedLog const log;
    standInTheWay();
    Prefs::Batch batch(prefs);
    prefs.setString("a", "1");
    prefs.setString("b", "2");
    EXPECT_EQ(log.text(), "");
    batch.commit();
    EXPECT_EQ(log.text(),
              "error: Preferences not saved: " + (folder / "preferences").string() + ": Not a directory\n");
    EXPECT_EQ(prefs.getString("a") + prefs.getString("b"), "12") << "they last in memory";
    makeWay();
    prefs.setString("c", "3");
    EXPECT_EQ(onDisk("a") + onDisk("b") + onDisk("c"), "123");
}

TEST_F(PrefsBatchTest, ThatIsLeftKeepsWhatCouldNotBeWrittenBefore)
{
    CapturedLog const log;
    standInTheWay();
    prefs.setString("a", "1");
    {
        Prefs::Batch const batch(prefs);
        prefs.setString("a", "2");
        makeWay();
    }
    EXPECT_EQ(prefs.getString("a"), "1");
    EXPECT_FALSE(fs::exists(folder));
    prefs.setString("b", "2");
    EXPECT_EQ(onDisk("a") + onDisk("b"), "12");
}

TEST_F(PrefsBatchTest, KeepsEntriesThatOthersHaveWrittenMeanwhile)
{
    Prefs::Batch batch(prefs);
    prefs.setString("a", "1");
    PrefsFile(folder).setString("b", "2");
    batch.commit();
    EXPECT_EQ(onDisk("a") + onDisk("b"), "12");
}

TEST(PrefsBatch, MeansNothingToAStoreThatWritesNothingDown)
{
    MemoryPrefs prefs;
    {
        Prefs::Batch const batch(prefs);
        prefs.setString("a", "1");
    }
    EXPECT_EQ(prefs.getString("a"), "1");
    Prefs::Batch batch(prefs);
    prefs.setString("b", "2");
    batch.commit();
    EXPECT_EQ(prefs.getString("b"), "2");
}
