#include "Utilities/CompositeField.h"

#include "Utilities/MemberField.h"

#include <gtest/gtest.h>

namespace {

class Label : public Serializable {
public:
    std::string text;
    float size = 1.0F;

    smart_ptr<Field> makeField(std::string const& name) const override
    {
        std::vector<smart_ptr<Field>> fields{newMemberField<Label, std::string>("text", &Label::text),
                                             newMemberField<Label, float>("size", &Label::size)};
        return make_smart<CompositeField>(name, make_smart<ClassDesc>(std::move(fields)));
    }
};

} // namespace

TEST(CompositeField, WritesItsFieldsInOrderWithinOneElement)
{
    Label label;
    label.text = "hello";
    OutTag out;
    label.save(out, "label");
    EXPECT_EQ(out.getDocument(), "<label>\n  <text>hello</text>\n  <size>1</size>\n</label>\n");
}

TEST(CompositeField, ReadsItsFieldsInAnyOrderAndPassesOverOthers)
{
    Label label;
    InTag tag = InTag::parse("<label><size>2</size><colour>red</colour><text>bye</text></label>");
    label.load(tag, "label");
    EXPECT_EQ(label.text, "bye");
    EXPECT_EQ(label.size, 2.0F);
}

TEST(CompositeField, LoadTouchesTheObjectOnlyWhenAllIsRead)
{
    Label label;
    label.text = "before";
    InTag tag = InTag::parse("<label><text>after</text><size>big</size></label>");
    EXPECT_THROW(label.load(tag, "label"), TagError);
    EXPECT_EQ(label.text, "before");
}

TEST(CompositeField, KnowsItsName)
{
    EXPECT_EQ(Label().makeField("label")->getName(), "label");
}
