#include "SceneGraph/SGExtraData.h"
#include "SceneGraph/SGSharedObject.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

namespace {

class Record : public SGExtraData {
public:
    explicit Record(std::function<void()> atEnd_ = {}) : atEnd(std::move(atEnd_)) { ++alive; }
    Record(Record const&) = delete;
    Record& operator=(Record const&) = delete;
    ~Record() override
    {
        --alive;
        if (atEnd)
            atEnd();
    }

    static int alive;

private:
    std::function<void()> atEnd;
};
int Record::alive = 0;

class OtherRecord : public SGExtraData {};

/// A record that keeps a further carrier alive.
class Holder : public SGExtraData {
public:
    explicit Holder(smart_ptr<SGObject> held_) : held(std::move(held_)) {}

    smart_ptr<SGObject> held;
};

template <typename T>
smart_ptr<T> read(SGObject const& object, std::string const& key)
{
    return boost::dynamic_pointer_cast<T>(object.privateGetExtraData(key));
}

/// A module's static that purges records at the end of the process.
struct Purger {
    Purger() = default;
    Purger(Purger const&) = delete;
    Purger& operator=(Purger const&) = delete;
    ~Purger() { SGObject::removeExtraDataEverywhere("GL"); }
};

} // namespace

TEST(SGObject, HasNoRecordAtFirst)
{
    SGSharedObject const object;
    EXPECT_FALSE(object.privateGetExtraData("GLTexture"));
    EXPECT_FALSE(object.hasExtraData());
}

TEST(SGObject, KeepsARecordUnderEachKey)
{
    SGSharedObject object;
    auto const first = make_smart<Record>();
    auto const second = make_smart<Record>();
    object.setExtraData("first", first);
    object.setExtraData("second", second);
    EXPECT_EQ(object.privateGetExtraData("first"), first);
    EXPECT_EQ(object.privateGetExtraData("second"), second);
    EXPECT_FALSE(object.privateGetExtraData("third"));
    EXPECT_TRUE(object.hasExtraData());
}

TEST(SGObject, ReplacesARecord)
{
    SGSharedObject object;
    object.setExtraData("key", make_smart<Record>());
    auto const second = make_smart<Record>();
    object.setExtraData("key", second);
    EXPECT_EQ(object.privateGetExtraData("key"), second);
    EXPECT_EQ(Record::alive, 1);
    object.setExtraData("key", second);
    EXPECT_EQ(second->referenceCount(), 2);
}

TEST(SGObject, RemovesARecordByAnEmptyOne)
{
    SGSharedObject object;
    object.setExtraData("key", nullptr);
    EXPECT_FALSE(object.hasExtraData());
    object.setExtraData("key", make_smart<Record>());
    object.setExtraData("key", nullptr);
    EXPECT_FALSE(object.privateGetExtraData("key"));
    EXPECT_FALSE(object.hasExtraData());
    EXPECT_EQ(Record::alive, 0);
    auto const again = make_smart<Record>();
    object.setExtraData("key", again);
    EXPECT_EQ(object.privateGetExtraData("key"), again);
}

TEST(SGObject, ReadsARecordOfAnotherTypeAsAbsent)
{
    SGSharedObject object;
    object.setExtraData("key", make_smart<OtherRecord>());
    EXPECT_FALSE(read<Record>(object, "key"));
    EXPECT_TRUE(read<OtherRecord>(object, "key"));
}

TEST(SGObject, FindsARecordByAnyKeyOfItsName)
{
    SGSharedObject object;
    auto const record = make_smart<Record>();
    EXPECT_FALSE(object.mayHaveExtraData());
    EXPECT_EQ(object.findExtraData(SGExtraDataKey("key")), nullptr);
    object.setExtraData(SGExtraDataKey("key"), record);
    EXPECT_TRUE(object.mayHaveExtraData());
    EXPECT_EQ(object.findExtraData(SGExtraDataKey(std::string("ke") + "y")), record.get());
    EXPECT_EQ(object.findExtraData(SGExtraDataKey("keys")), nullptr);
    EXPECT_EQ(object.privateGetExtraData("key"), record);
    object.setExtraData("key", nullptr);
    EXPECT_EQ(object.findExtraData(SGExtraDataKey("key")), nullptr);
    EXPECT_EQ(SGExtraDataKey("key").name(), "key");
}

TEST(SGObject, DropsEveryRecordWhenAsked)
{
    SGSharedObject object;
    object.setExtraData("first", make_smart<Record>());
    object.setExtraData("second", make_smart<Record>());
    object.clearExtraData();
    EXPECT_EQ(Record::alive, 0);
    EXPECT_FALSE(object.hasExtraData());
    object.clearExtraData();
    object.setExtraData("first", make_smart<Record>());
    EXPECT_TRUE(object.hasExtraData());
}

TEST(SGObject, DropsItsRecordsWithItself)
{
    auto object = make_smart<SGSharedObject>();
    object->setExtraData("key", make_smart<Record>());
    object.reset();
    EXPECT_EQ(Record::alive, 0);
}

TEST(SGObject, IsInOrderWhenARecordsDestructorLooksAtIt)
{
    SGSharedObject object;
    bool seen = true;
    object.setExtraData("key", make_smart<Record>([&] {
                            seen = static_cast<bool>(object.privateGetExtraData("key"));
                            object.setExtraData("other", make_smart<OtherRecord>());
                        }));
    object.setExtraData("key", nullptr);
    EXPECT_FALSE(seen);
    EXPECT_TRUE(read<OtherRecord>(object, "other"));
}

TEST(SGObject, RemovesRecordsOfAPrefixFromAllObjects)
{
    SGSharedObject a;
    SGSharedObject b;
    a.setExtraData("GLTexture", make_smart<Record>());
    a.setExtraData("HostData", make_smart<OtherRecord>());
    a.setExtraData("G", make_smart<OtherRecord>());
    b.setExtraData("GLVBO", make_smart<Record>());
    b.setExtraData("GL", make_smart<Record>());
    SGObject::removeExtraDataEverywhere("GL");
    EXPECT_EQ(Record::alive, 0);
    EXPECT_FALSE(b.hasExtraData());
    EXPECT_TRUE(read<OtherRecord>(a, "HostData"));
    EXPECT_TRUE(read<OtherRecord>(a, "G"));
    a.setExtraData("GLTexture", make_smart<Record>());
    EXPECT_TRUE(read<Record>(a, "GLTexture"));
}

TEST(SGObject, RemovesRecordsWhoseDestructorsDestroyFurtherCarriers)
{
    SGSharedObject first;
    auto inner = make_smart<SGSharedObject>();
    auto innermost = make_smart<SGSharedObject>();
    SGSharedObject last;
    last.setExtraData("GLkeep", make_smart<Record>());
    innermost->setExtraData("GLdata", make_smart<Record>());
    innermost->setExtraData("HostData", make_smart<Record>());
    inner->setExtraData("GLdata", make_smart<Holder>(innermost));
    inner->setExtraData("HostData", make_smart<Record>());
    first.setExtraData("GLdata", make_smart<Holder>(inner));
    weak_ptr<SGSharedObject> const watchInner(inner);
    weak_ptr<SGSharedObject> const watchInnermost(innermost);
    inner.reset();
    innermost.reset();
    SGObject::removeExtraDataEverywhere("GL");
    EXPECT_TRUE(watchInner.expired());
    EXPECT_TRUE(watchInnermost.expired());
    EXPECT_EQ(Record::alive, 0);
}

TEST(SGObject, RemovesRecordsThatOtherThingsStillHold)
{
    SGSharedObject object;
    auto const record = make_smart<Record>();
    object.setExtraData("GLdata", record);
    SGObject::removeExtraDataEverywhere("GL");
    EXPECT_FALSE(object.hasExtraData());
    EXPECT_EQ(record->referenceCount(), 1);
}

// The purger is older than the first key, so at the end of the process it acts after younger statics have
// gone.
TEST(SGObjectDeathTest, RemovesRecordsAtTheVeryEndOfTheProcess)
{
    EXPECT_EXIT(
        {
            static Purger const purger;
            static SGSharedObject object;
            object.addRef();
            auto const leftOver = make_smart<SGSharedObject>();
            leftOver->addRef();
            leftOver->setExtraData("GLaKeyTooLongForShortStrings",
                                   make_smart<Record>([] { std::fputs("purged", stderr); }));
            std::exit(0);
        },
        testing::ExitedWithCode(0), "purged");
}
