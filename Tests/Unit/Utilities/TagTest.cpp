#include "Utilities/Tag.h"

#include "Utilities/TagError.h"

#include <gtest/gtest.h>

TEST(Tag, GivesBackItsAttributesInOrder)
{
    Tag tag("light");
    tag.addAttr("z", "1");
    tag.addAttr("a", "");
    EXPECT_EQ(tag.getName(), "light");
    EXPECT_EQ(tag.getPath(), "light");
    EXPECT_EQ(tag.getAttr("z"), "1");
    EXPECT_EQ(tag.getAttr("a"), "");
    EXPECT_EQ(tag.getAttributes(), (std::vector<Tag::Attribute>{{"z", "1"}, {"a", ""}}));
}

TEST(Tag, NamesAMissingAttributeAndItsElement)
{
    Tag const tag("light");
    try {
        static_cast<void>(tag.getAttr("colour"));
        FAIL();
    } catch (TagError const& error) {
        EXPECT_STREQ(error.what(), "light: no attribute \"colour\"");
    }
}
