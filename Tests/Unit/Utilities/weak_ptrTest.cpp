#include "Utilities/smart_ptr.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

class Watched : public weak_base {
public:
    int value = 1;
};

/// Looks at itself through a weak pointer on its way out.
class Introspective : public weak_base {
public:
    explicit Introspective(bool& couldBeRevived) : couldBeRevived_(couldBeRevived) {}
    ~Introspective() override { couldBeRevived_ = !self.expired() || self.lock(); }

    weak_ptr<Introspective> self;

private:
    bool& couldBeRevived_;
};

} // namespace

static_assert(!std::is_convertible_v<weak_ptr<Watched>, smart_ptr<Watched>>, "only lock() gives an owner");

TEST(weak_ptr, WatchesNothingByDefault)
{
    weak_ptr<Watched> const none;
    EXPECT_TRUE(none.expired());
    EXPECT_FALSE(none.lock());
    EXPECT_TRUE(weak_ptr<Watched>(smart_ptr<Watched>()).expired());
}

TEST(weak_ptr, LockGivesTheObjectAndAReference)
{
    auto const object = make_smart<Watched>();
    weak_ptr<Watched> const weak = object;
    EXPECT_EQ(object->referenceCount(), 1) << "watching does not own";
    auto const locked = weak.lock();
    EXPECT_EQ(locked, object);
    EXPECT_EQ(object->referenceCount(), 2);
}

TEST(weak_ptr, IsNullOnceTheObjectIsGone)
{
    auto object = make_smart<Watched>();
    weak_ptr<Watched> const first = object;
    weak_ptr<Watched> const second = first;
    object.reset();
    EXPECT_TRUE(first.expired());
    EXPECT_FALSE(first.lock());
    EXPECT_FALSE(second.lock());
}

TEST(weak_ptr, ALockedObjectOutlivesItsOtherOwners)
{
    auto object = make_smart<Watched>();
    weak_ptr<Watched> const weak = object;
    auto locked = weak.lock();
    object.reset();
    EXPECT_EQ(locked->value, 1);
    EXPECT_FALSE(weak.expired());
    locked.reset();
    EXPECT_TRUE(weak.expired());
}

TEST(weak_ptr, AnObjectOnItsWayOutCannotBeRevived)
{
    bool couldBeRevived = true;
    auto object = make_smart<Introspective>(couldBeRevived);
    object->self = object;
    object.reset();
    EXPECT_FALSE(couldBeRevived);
}

TEST(weak_ptr, SeesTheEndOfAnObjectThatIsNotCounted)
{
    weak_ptr<Watched> weak;
    {
        // The count must not drop to zero: nobody may delete what lies on the stack.
        Watched onTheStack;
        onTheStack.addRef();
        weak = weak_ptr<Watched>(smart_ptr<Watched>(&onTheStack));
        EXPECT_FALSE(weak.expired());
    }
    EXPECT_TRUE(weak.expired());
}

TEST(weak_ptr, ACopiedObjectIsWatchedByItself)
{
    auto original = make_smart<Watched>();
    weak_ptr<Watched> const weak = original;
    auto const copy = make_smart<Watched>(*original);
    weak_ptr<Watched> const weakCopy = copy;
    *copy = *original;
    original.reset();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(weakCopy.lock(), copy);
}
