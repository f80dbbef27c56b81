#include "OpenGLRenderer/RecentAccessDatabase.h"

#include "SceneGraph/SGSharedObject.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Database = RecentAccessDatabase<std::string, SGSharedObject, 17>;

class RecentAccess : public testing::Test {
protected:
    void runFrames(int count)
    {
        for (int i = 0; i < count; ++i) {
            database.beginFrame();
            database.endFrame();
        }
    }

    /// A result that the database alone holds.
    weak_ptr<SGSharedObject> addUnheld(std::string const& key)
    {
        auto const value = make_smart<SGSharedObject>();
        database.add(key, value);
        return weak_ptr<SGSharedObject>(value);
    }

    Database database;
};

} // namespace

TEST_F(RecentAccess, KnowsNothingAtFirst)
{
    EXPECT_FALSE(database.contains("key"));
    runFrames(20);
    EXPECT_FALSE(database.contains("key"));
}

TEST_F(RecentAccess, ReturnsWhatWasAdded)
{
    auto const value = make_smart<SGSharedObject>();
    database.add("key", value);
    EXPECT_TRUE(database.contains("key"));
    EXPECT_FALSE(database.contains("other"));
    EXPECT_EQ(database.get("key"), value);
    EXPECT_EQ(value->referenceCount(), 2);
}

TEST_F(RecentAccess, HoldsAResultForSixteenUnusedFramesAndDropsItAfterTheSeventeenth)
{
    database.beginFrame();
    auto const watch = addUnheld("key");
    database.endFrame();
    for (int frame = 1; frame <= 16; ++frame) {
        runFrames(1);
        EXPECT_FALSE(watch.expired()) << "after unused frame " << frame;
    }
    database.beginFrame();
    EXPECT_FALSE(watch.expired());
    EXPECT_TRUE(database.contains("key"));
    database.endFrame();
    EXPECT_TRUE(watch.expired());
    EXPECT_FALSE(database.contains("key"));
}

TEST_F(RecentAccess, CountsFromTheLastUse)
{
    auto const watch = addUnheld("key");
    runFrames(16);
    database.beginFrame();
    EXPECT_TRUE(database.get("key"));
    database.endFrame();
    runFrames(16);
    EXPECT_FALSE(watch.expired());
    runFrames(1);
    EXPECT_TRUE(watch.expired());
}

TEST_F(RecentAccess, NeverDropsWhatIsUsedEveryFrame)
{
    auto const watch = addUnheld("key");
    for (int frame = 0; frame < 100; ++frame) {
        database.beginFrame();
        ASSERT_TRUE(database.contains("key"));
        EXPECT_EQ(database.get("key"), watch.lock());
        database.endFrame();
    }
}

TEST_F(RecentAccess, DoesNotTakeAskingForUse)
{
    auto const watch = addUnheld("key");
    for (int frame = 0; frame < 17; ++frame) {
        EXPECT_TRUE(database.contains("key"));
        runFrames(1);
    }
    EXPECT_TRUE(watch.expired());
}

TEST_F(RecentAccess, FindsADroppedResultWhileSomebodyHoldsIt)
{
    auto held = make_smart<SGSharedObject>();
    database.add("key", held);
    runFrames(17);
    EXPECT_EQ(held->referenceCount(), 1);
    runFrames(30);
    EXPECT_TRUE(database.contains("key"));

    EXPECT_EQ(database.get("key"), held);
    EXPECT_EQ(held->referenceCount(), 2);
    weak_ptr<SGSharedObject> const watch(held);
    held.reset();
    runFrames(16);
    EXPECT_FALSE(watch.expired()) << "its age was reset";
    runFrames(1);
    EXPECT_TRUE(watch.expired());
}

TEST_F(RecentAccess, GivesNullForWhatItDoesNotContain)
{
    EXPECT_FALSE(database.get("key"));
    EXPECT_FALSE(database.contains("key"));
    auto held = make_smart<SGSharedObject>();
    database.add("gone", held);
    runFrames(17);
    held.reset();
    EXPECT_FALSE(database.get("gone"));
    runFrames(18);
    EXPECT_FALSE(database.contains("gone"));
}

TEST_F(RecentAccess, ReplacesAnEarlierResult)
{
    auto const first = addUnheld("key");
    auto const second = make_smart<SGSharedObject>();
    database.add(std::string("k") + "ey", second);
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(database.get("key"), second);
    EXPECT_EQ(second->referenceCount(), 2);
}

TEST_F(RecentAccess, DropsItsResultsWithItself)
{
    auto temporary = make_smart<Database>();
    auto const value = make_smart<SGSharedObject>();
    temporary->add("key", value);
    temporary.reset();
    EXPECT_EQ(value->referenceCount(), 1);
}

TEST_F(RecentAccess, KeepsEntriesApart)
{
    auto const old = addUnheld("old");
    runFrames(10);
    auto const young = addUnheld("young");
    runFrames(7);
    EXPECT_TRUE(old.expired());
    EXPECT_FALSE(young.expired());
    runFrames(10);
    EXPECT_TRUE(young.expired());
}

TEST_F(RecentAccess, LetsGoOfAKeyWhenItsResultIsGone)
{
    using ByObject = RecentAccessDatabase<smart_ptr<SGSharedObject>, SGSharedObject, 17>;
    ByObject byObject;
    auto const key = make_smart<SGSharedObject>();
    byObject.add(key, make_smart<SGSharedObject>());
    EXPECT_EQ(key->referenceCount(), 4) << "one a map";
    for (int frame = 0; frame < 17; ++frame) {
        byObject.beginFrame();
        byObject.endFrame();
    }
    EXPECT_EQ(key->referenceCount(), 1);
}
