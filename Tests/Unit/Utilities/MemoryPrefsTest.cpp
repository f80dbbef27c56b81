#include "Utilities/MemoryPrefs.h"

#include <gtest/gtest.h>

TEST(MemoryPrefs, GivesBackWhatWasSet)
{
    MemoryPrefs prefs;
    EXPECT_EQ(prefs.getString("key"), "");
    prefs.setString("key", "one");
    prefs.setString("other", "two");
    EXPECT_EQ(prefs.getString("key"), "one");
    prefs.setString("key", "three");
    EXPECT_EQ(prefs.getString("key"), "three");
    EXPECT_EQ(prefs.getString("other"), "two");
}

TEST(MemoryPrefs, KeepsNothingForTheNextOne)
{
    MemoryPrefs().setString("key", "one");
    EXPECT_EQ(MemoryPrefs().getString("key"), "");
}
