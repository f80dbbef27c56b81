#include "Utilities/InTag.h"

#include <gtest/gtest.h>

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

InTag element(std::string const& text)
{
    return InTag::parse("<e>" + text + "</e>").getChild("e");
}

template <typename T>
T valueOf(std::string const& text)
{
    InTag tag = element(text);
    T value{};
    tag >> value;
    tag.checkEndText();
    return value;
}

} // namespace

TEST(InTag, FindsChildrenByName)
{
    InTag const document = InTag::parse("<a><b x='1'/><c>text</c></a><d/>");
    EXPECT_EQ(document.getName(), "");
    EXPECT_EQ(document.getChild("a").getChild("b").getAttr("x"), "1");
    EXPECT_EQ(document.getChild("a").getChild("c").getText(), "text");
    EXPECT_EQ(document.getChild("a").getChild("c").getPath(), "a/c");
    EXPECT_EQ(document.getChild("d").getName(), "d");
}

TEST(InTag, OutlivesTheTextAndTheElementsAround)
{
    auto text = std::make_unique<std::string>("<a><b>kept</b></a>");
    InTag const b = InTag::parse(*text).getChild("a").getChild("b");
    text.reset();
    EXPECT_EQ(b.getText(), "kept");
}

TEST(InTag, NamesAMissingOrAmbiguousChild)
{
    InTag const document = InTag::parse("<a><b/><b/></a>");
    EXPECT_EQ(messageOf([&] { static_cast<void>(document.getChild("z")); }), "z: no such element");
    EXPECT_EQ(messageOf([&] { static_cast<void>(document.getChild("a").getChild("b")); }),
              "a/b: more than one such element");
    EXPECT_EQ(messageOf([&] { static_cast<void>(document.getChild("a").getAttr("x")); }),
              "a: no attribute \"x\"");
}

TEST(InTag, TextIsWholeAndUnchanged)
{
    EXPECT_EQ(element("").getText(), "");
    EXPECT_EQ(element("  ").getText(), "  ");
    EXPECT_EQ(element("\n a\tb\r\nc \n").getText(), "\n a\tb\r\nc \n");
    EXPECT_EQ(element("&lt;&#38;&gt; &#xe9;").getText(), "<&> \xc3\xa9");
    EXPECT_EQ(element("one<!-- not this -->, two<![CDATA[ <three>]]>").getText(), "one, two <three>");
    EXPECT_EQ(element("own<child>not this</child> too").getText(), "own too");
}

TEST(InTag, ExtractsValues)
{
    EXPECT_EQ(valueOf<float>("1.5"), 1.5F);
    EXPECT_EQ(valueOf<float>("-3e-2"), -3e-2F);
    EXPECT_EQ(valueOf<float>(" 2"), 2.0F) << "extraction passes over blanks in front";
    EXPECT_TRUE(valueOf<bool>("1"));
    EXPECT_FALSE(valueOf<bool>("0"));
    EXPECT_EQ(valueOf<int>("-7"), -7);
}

TEST(InTag, ExtractsOneValueAfterAnother)
{
    InTag tag = element("1 2 3");
    int a = 0;
    int b = 0;
    int c = 0;
    tag >> a >> b >> c;
    tag.checkEndText();
    EXPECT_EQ(a + 10 * b + 100 * c, 321);
}

TEST(InTag, RefusesWhatIsNoValue)
{
    for (std::string const text : {"", " ", "x", "inf", "nan", "-", "1e", "1e99", "&#49;e99", "."})
        EXPECT_THROW(valueOf<float>(text), TagError) << text;
    for (std::string const text : {"", "2", "-1", "true", "yes"})
        EXPECT_THROW(valueOf<bool>(text), TagError) << text;
    EXPECT_EQ(messageOf([] { valueOf<float>("x"); }), "e: \"x\" cannot be read as such a value");
}

TEST(InTag, RefusesTextThatGoesOn)
{
    for (std::string const text : {"1 ", "1\n", "1 2", "1x", "1.5.5", "0x10", "1,5"})
        EXPECT_THROW(valueOf<float>(text), TagError) << text;
    EXPECT_EQ(messageOf([] { valueOf<float>("1,5"); }), "e: \"1,5\" goes on after the value");
    InTag nothing = element("");
    EXPECT_NO_THROW(nothing.checkEndText());
}

TEST(InTag_readAttr, ReadsTheWholeAttribute)
{
    Tag tag("point");
    tag.addAttr("x", "-0.25");
    tag.addAttr("y", "1 2");
    tag.addAttr("z", "");
    EXPECT_EQ(InTag_readAttr<float>(tag, "x"), -0.25F);
    EXPECT_EQ(messageOf([&] { static_cast<void>(InTag_readAttr<float>(tag, "y")); }),
              "point/y: \"1 2\" goes on after the value");
    EXPECT_EQ(messageOf([&] { static_cast<void>(InTag_readAttr<float>(tag, "z")); }),
              "point/z: \"\" cannot be read as such a value");
    EXPECT_EQ(messageOf([&] { static_cast<void>(InTag_readAttr<float>(tag, "w")); }),
              "point: no attribute \"w\"");
}

TEST(InTag, NamesTheLineOfAnErrorInTheText)
{
    EXPECT_EQ(messageOf([] { static_cast<void>(InTag::parse("<a>\n<b>\n</a>")); }).substr(0, 8), "line 3: ");
    EXPECT_EQ(messageOf([] { static_cast<void>(InTag::parse(std::string_view("<a/>\n\0", 6))); }),
              "line 2: a zero byte is no text");
    for (std::string const text :
         {"", "plain", "<a", "<a>", "<a/", "<a x=1/>", "<a x='1/>", "</a>", "<a></b>"})
        EXPECT_THROW(static_cast<void>(InTag::parse(text)), TagError) << text;
}

TEST(InTag, DoesNotExpandEntitiesOfTheDocument)
{
    InTag const document = InTag::parse("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a>&e;</a>");
    EXPECT_EQ(document.getChild("a").getText(), "&e;");
}

TEST(InTag, SurvivesElementsNestedWithoutEnd)
{
    constexpr int depth = 300000;
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += "<a>";
    EXPECT_THROW(static_cast<void>(InTag::parse(text)), TagError);
    for (int i = 0; i < depth; ++i)
        text += "</a>";
    EXPECT_EQ(InTag::parse(text).getChild("a").getChild("a").getText(), "");
}
