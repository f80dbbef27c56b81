#include "Utilities/OutTag.h"

#include "Utilities/InTag.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::string messageOf(std::function<void()> const& work)
{
    try {
        work();
    } catch (TagError const& error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(OutTag, WritesNothingByItself)
{
    EXPECT_EQ(OutTag().getDocument(), "");
}

TEST(OutTag, WritesElementsWithinElements)
{
    OutTag out;
    out.writeTag("outer", [&] {
        out.writeTag("first", [&] { out << 1.5F; });
        out.writeTag("second", [&] { out << true << std::string(" & more"); });
    });
    out.writeTag("after", [] {});
    EXPECT_EQ(out.getDocument(), "<outer>\n"
                                 "  <first>1.5</first>\n"
                                 "  <second>1 &amp; more</second>\n"
                                 "</outer>\n"
                                 "<after />\n");
}

TEST(OutTag, WritesSingleTagsWithTheirAttributes)
{
    Tag tag("point");
    OutTag_setAttr<float>(tag, "x", 0.25F);
    OutTag_setAttr<std::string>(tag, "name", "a \"<&>\"");
    OutTag out;
    out.writeSingleTag(tag);
    EXPECT_EQ(out.getDocument(), "<point x=\"0.25\" name=\"a &quot;&lt;&amp;>&quot;\" />\n");
    EXPECT_EQ(InTag::parse(out.getDocument()).getChild("point").getAttr("name"), "a \"<&>\"");
}

TEST(OutTag, RefusesNumbersThatAreNotFinite)
{
    OutTag out;
    float const infinite = std::numeric_limits<float>::infinity();
    EXPECT_EQ(messageOf([&] { out.writeTag("a", [&] { out.writeTag("b", [&] { out << infinite; }); }); }),
              "a/b: inf is not a finite number");
    Tag tag("point");
    EXPECT_EQ(messageOf([&] { OutTag_setAttr<float>(tag, "x", std::numeric_limits<float>::quiet_NaN()); }),
              "point/x: nan is not a finite number");
}

TEST(OutTag, LeavesNothingOfAnElementThatFailed)
{
    OutTag out;
    out.writeTag("outer", [&] {
        out.writeTag("kept", [&] { out << 1; });
        EXPECT_THROW(out.writeTag("dropped",
                                  [&] {
                                      out.writeTag("inner", [&] { out << 2; });
                                      throw std::runtime_error("on the way");
                                  }),
                     std::runtime_error);
        out.writeTag("next", [&] { out << 3; });
    });
    EXPECT_EQ(out.getDocument(), "<outer>\n  <kept>1</kept>\n  <next>3</next>\n</outer>\n");
}

TEST(OutTag, RefusesNamesThatXmlCannotHold)
{
    for (std::string const name : {"", "two words", "1st", "-a", "a<b", "a>", "a\"", "a/", "a=b", "a&b"}) {
        SCOPED_TRACE(name);
        OutTag out;
        EXPECT_THROW(out.writeTag(name, [] {}), TagError);
        Tag tag("good");
        tag.addAttr(name, "value");
        EXPECT_THROW(out.writeSingleTag(tag), TagError);
        EXPECT_THROW(out.writeSingleTag(Tag(name)), TagError);
        EXPECT_EQ(out.getDocument(), "");
    }
    OutTag out;
    out.writeTag("_A-1.b\xc3\xa9", [] {});
    EXPECT_NO_THROW(static_cast<void>(InTag::parse(out.getDocument()).getChild("_A-1.b\xc3\xa9")));
}

TEST(OutTag, RefusesTextWithAZeroByte)
{
    OutTag out;
    std::string const text("a\0b", 3);
    EXPECT_EQ(messageOf([&] { out.writeTag("t", [&] { out.writeText(text); }); }),
              "t: the text holds a zero byte");
    Tag tag("t");
    tag.addAttr("x", text);
    EXPECT_EQ(messageOf([&] { out.writeSingleTag(tag); }), "t/x: the text holds a zero byte");
}
