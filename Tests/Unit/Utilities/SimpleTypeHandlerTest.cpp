#include "Utilities/SimpleTypeHandler.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

template <typename T>
std::string textOf(T const& value)
{
    OutTag out;
    SimpleTypeHandler<T>::save(out, "x", value);
    return out.getDocument();
}

template <typename T>
T loaded(std::string const& text)
{
    return SimpleTypeHandler<T>::load(InTag::parse(text), "x");
}

} // namespace

TEST(SimpleTypeHandler, WritesValuesAsText)
{
    EXPECT_EQ(textOf(12.5F), "<x>12.5</x>\n");
    EXPECT_EQ(textOf(true), "<x>1</x>\n");
    EXPECT_EQ(textOf(false), "<x>0</x>\n");
    EXPECT_EQ(textOf(std::string("a b")), "<x>a b</x>\n");
    EXPECT_EQ(textOf(Color{1.0F, 0.5F, 0.25F, 0.1F}), "<x r=\"1\" g=\"0.5\" b=\"0.25\" a=\"0.1\" />\n");
}

TEST(SimpleTypeHandler, ReadsWhatItWrites)
{
    EXPECT_EQ(loaded<float>(textOf(0.1F)), 0.1F);
    EXPECT_TRUE(loaded<bool>(textOf(true)));
    Color const color{1.0F / 3.0F, 1e-40F, -0.0F, 3e38F};
    EXPECT_EQ(loaded<Color>(textOf(color)), color);
}

TEST(SimpleTypeHandler, KeepsStringsWhole)
{
    for (std::string const& text :
         {std::string(), std::string(" "), std::string("  two  words  "), std::string("\n"),
          std::string("\t\n "), std::string("line\nline\r\nline\r"), std::string("<&>\"'"),
          std::string("]]>"), std::string("&amp;"), std::string("<!-- -->"),
          std::string("\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80"), std::string("\x01\x02\x1f\x7f"),
          std::string("\xff\xfe not UTF-8"), std::string(100000, 'x')}) {
        SCOPED_TRACE(testing::PrintToString(text.substr(0, 40)));
        EXPECT_EQ(loaded<std::string>(textOf(text)), text);
    }
}

TEST(SimpleTypeHandler, RefusesAColourThatLacksAComponent)
{
    EXPECT_THROW(loaded<Color>("<x r='1' g='1' b='1'/>"), TagError);
    EXPECT_THROW(loaded<Color>("<x r='1' g='1' b='1' a=''/>"), TagError);
    EXPECT_THROW(loaded<Color>("<x r='1' g='1' b='1 ' a='1'/>"), TagError);
    EXPECT_THROW(loaded<Color>("<y/>"), TagError);
}

TEST(SimpleTypeHandler, RefusesAColourThatIsNotFinite)
{
    OutTag out;
    Color const color{0.0F, std::numeric_limits<float>::quiet_NaN(), 0.0F, 1.0F};
    EXPECT_THROW(SimpleTypeHandler<Color>::save(out, "x", color), TagError);
    EXPECT_EQ(out.getDocument(), "");
}

TEST(SimpleTypeHandler, NamesTheAttributesOfAColour)
{
    EXPECT_EQ(std::string(SimpleTypeHandler<Color>::_attrs[0]) + SimpleTypeHandler<Color>::_attrs[1] +
                  SimpleTypeHandler<Color>::_attrs[2] + SimpleTypeHandler<Color>::_attrs[3],
              "rgba");
}
