#include "Utilities/smart_ptr.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <unordered_set>

namespace {

class Base : public smart_base {
public:
    Base() { ++alive; }
    Base(Base const& other) : smart_base(other) { ++alive; }
    Base& operator=(Base const&) = default;
    ~Base() override { --alive; }

    static inline int alive = 0;
};

class Derived : public Base {
public:
    int value = 7;
};

class Other : public Base {};

class Interface {
public:
    virtual ~Interface() = default;
    virtual int answer() const = 0;
};

/// Its Interface does not lie where its smart_base does.
class Implementation : public Base, public Interface {
public:
    int answer() const override { return 42; }
};

class Link : public Base {
public:
    Link() = default;
    explicit Link(smart_ptr<Link> next_) : next(std::move(next_)) {}

    smart_ptr<Link> next;
};

class smart_ptrTest : public testing::Test {
protected:
    ~smart_ptrTest() override { EXPECT_EQ(Base::alive, 0) << "every object is destroyed once"; }
};

} // namespace

static_assert(!std::is_convertible_v<Base*, smart_ptr<Base>>, "taking ownership must be asked for");
static_assert(!std::is_convertible_v<smart_ptr<Base>, smart_ptr<Derived>>, "down only by a checked cast");
static_assert(!std::is_convertible_v<smart_ptr<Other>, smart_ptr<Derived>>);
static_assert(!std::is_convertible_v<smart_ptr<Base const>, smart_ptr<Base>>, "const stays");
static_assert(!std::is_convertible_v<smart_ptr<Base>, bool>);
static_assert(std::is_convertible_v<smart_ptr<Derived>, smart_ptr<Base const>>);
static_assert(std::is_nothrow_move_constructible_v<smart_ptr<Base>>);
static_assert(std::is_nothrow_swappable_v<smart_ptr<Base>>);
static_assert(sizeof(smart_ptr<Base>) == 2 * sizeof(void*));

TEST_F(smart_ptrTest, CountStartsAtZero)
{
    Base onTheStack;
    EXPECT_EQ(onTheStack.referenceCount(), 0);
    Base* const counted = new Base;
    EXPECT_EQ(counted->addRef(), counted);
    EXPECT_EQ(counted->referenceCount(), 1);
    counted->release();
    EXPECT_EQ(Base::alive, 1) << "only the one on the stack is left";
}

TEST_F(smart_ptrTest, NullHoldsNothing)
{
    smart_ptr<Base> const null;
    EXPECT_FALSE(null);
    EXPECT_EQ(null.get(), nullptr);
    EXPECT_TRUE(null == nullptr);
    EXPECT_EQ(null, smart_ptr<Base>(nullptr));
    EXPECT_EQ(null, smart_ptr<Base>(static_cast<Base*>(nullptr)));
}

TEST_F(smart_ptrTest, CopiesShare)
{
    auto const first = make_smart<Derived>();
    smart_ptr<Derived> const second = first;
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->referenceCount(), 2);
    EXPECT_EQ(Base::alive, 1);
}

TEST_F(smart_ptrTest, MovingHandsTheReferenceOn)
{
    auto first = make_smart<Derived>();
    Derived* const object = first.get();
    smart_ptr<Derived> second = std::move(first);
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(second.get(), object);
    EXPECT_EQ(second->referenceCount(), 1);
    smart_ptr<Base> third = std::move(second);
    EXPECT_EQ(second.get(), nullptr);
    EXPECT_EQ(third->referenceCount(), 1);
}

TEST_F(smart_ptrTest, AssigningDropsTheOldObject)
{
    auto pointer = make_smart<Base>();
    pointer = make_smart<Base>();
    EXPECT_EQ(Base::alive, 1);
    pointer = nullptr;
    EXPECT_EQ(Base::alive, 0);
}

TEST_F(smart_ptrTest, CanBeAssignedToItself)
{
    auto pointer = make_smart<Base>();
    auto& same = pointer;
    pointer = same;
    EXPECT_EQ(pointer->referenceCount(), 1);
    pointer = std::move(same);
    EXPECT_EQ(Base::alive, 1);
    ASSERT_TRUE(pointer);
    EXPECT_EQ(pointer->referenceCount(), 1);
}

TEST_F(smart_ptrTest, CanTakeOverWhatItsOwnObjectHolds)
{
    auto head = make_smart<Link>(make_smart<Link>(make_smart<Link>()));
    head = std::move(head->next);
    EXPECT_EQ(Base::alive, 2);
    smart_ptr<Link> const& next = head->next;
    head = next;
    EXPECT_EQ(Base::alive, 1);
    EXPECT_FALSE(head->next);
}

TEST_F(smart_ptrTest, ResetAndSwap)
{
    auto first = make_smart<Derived>();
    smart_ptr<Derived> second;
    first.swap(second);
    EXPECT_FALSE(first);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->referenceCount(), 1);
    second.reset();
    EXPECT_FALSE(second);
    EXPECT_EQ(Base::alive, 0);
}

TEST_F(smart_ptrTest, ConvertsUpwards)
{
    auto const derived = make_smart<Derived>();
    smart_ptr<Base> const base = derived;
    smart_ptr<Base const> const constant = base;
    EXPECT_EQ(base, derived);
    EXPECT_EQ(derived->referenceCount(), 3);
    EXPECT_EQ(constant.get(), derived.get());
}

TEST_F(smart_ptrTest, ConvertsToABaseThatLiesElsewhere)
{
    auto const whole = make_smart<Implementation>();
    smart_ptr<Interface> part = boost::dynamic_pointer_cast<Implementation>(smart_ptr<Base>(whole));
    EXPECT_NE(static_cast<void*>(part.get()), static_cast<void*>(whole.get()));
    EXPECT_EQ(part->answer(), 42);
    EXPECT_EQ(whole->referenceCount(), 2);
}

TEST_F(smart_ptrTest, CastsDownWhereTheObjectIsOne)
{
    smart_ptr<Base> const base = make_smart<Derived>();
    auto const derived = boost::dynamic_pointer_cast<Derived>(base);
    ASSERT_TRUE(derived);
    EXPECT_EQ(derived->value, 7);
    EXPECT_EQ(base->referenceCount(), 2);
    EXPECT_FALSE(boost::dynamic_pointer_cast<Other>(base));
    EXPECT_FALSE(boost::dynamic_pointer_cast<Derived>(smart_ptr<Base>()));
    EXPECT_EQ(base->referenceCount(), 2) << "a failed cast takes no reference";
}

TEST_F(smart_ptrTest, CountBelongsToTheObjectNotToItsValue)
{
    auto const first = make_smart<Derived>();
    auto const copy = make_smart<Derived>(*first);
    EXPECT_EQ(copy->referenceCount(), 1);
    *copy = *first;
    EXPECT_EQ(copy->referenceCount(), 1);
    EXPECT_EQ(first->referenceCount(), 1);
}

TEST_F(smart_ptrTest, DestroyCanBeReplaced)
{
    class Kept : public Base {
    public:
        void destroy() override { ++destroyed; }
        int destroyed = 0;
    };
    Kept kept;
    smart_ptr<Base>(&kept).reset();
    EXPECT_EQ(kept.destroyed, 1) << "the temporary was the last reference";
}

TEST_F(smart_ptrTest, HashFollowsIdentity)
{
    auto const first = make_smart<Base>();
    auto const second = make_smart<Base>();
    std::unordered_set<smart_ptr<Base>> set{first, second, first};
    EXPECT_EQ(set.size(), 2U);
    EXPECT_TRUE(set.contains(second));
}

TEST_F(smart_ptrTest, MakeSmartForwardsItsArguments)
{
    class Named : public Base {
    public:
        Named(std::string const& name_, int& count) : name(name_) { ++count; }
        std::string name;
    };
    int count = 0;
    EXPECT_EQ(make_smart<Named>("name", count)->name, "name");
    EXPECT_EQ(count, 1);
}
