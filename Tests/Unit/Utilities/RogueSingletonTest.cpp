#include "Utilities/RogueSingleton.h"

#include "Utilities/Log.h"

#include <gtest/gtest.h>

namespace {

class Thing : public smart_base {
public:
    Thing() { ++alive; }
    ~Thing() override { --alive; }
    static inline int alive = 0;
};

class ThingFactory {
public:
    static smart_ptr<Thing> newInstance()
    {
        ++made;
        return make_smart<Thing>();
    }
    static inline int made = 0;
};

using Singleton = RogueSingleton<Thing, ThingFactory>;

} // namespace

TEST(RogueSingleton, IsMadeOnFirstUseAndOnlyOnce)
{
    int const before = ThingFactory::made;
    Thing& first = Singleton::getInstance();
    EXPECT_EQ(&first, &Singleton::getInstance());
    EXPECT_EQ(ThingFactory::made, before + 1);
    Singleton::reset();
}

TEST(RogueSingleton, ResetDropsTheInstanceAndTheNextUseMakesAnother)
{
    int const before = ThingFactory::made;
    static_cast<void>(Singleton::getInstance());
    Singleton::reset();
    EXPECT_EQ(Thing::alive, 0);
    static_cast<void>(Singleton::getInstance());
    EXPECT_EQ(ThingFactory::made, before + 2);
    Singleton::reset();
}

TEST(RogueSingleton, ProgramAndLibraryShareTheInstance)
{
    // The first is compiled into this program, the second into the library.
    EXPECT_EQ((&RogueSingleton<Log, LogFactory>::getInstance()), &Log::getInstance());
}
