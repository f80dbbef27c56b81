#include "Viewer/Import/ImportError.h"

#include <gtest/gtest.h>

namespace sgview {

namespace {

using namespace std::string_literals;

} // namespace

TEST(OneLine, LeavesTextAlone)
{
    for (std::string const& text : {"model.glb: no such file"s, "Häuser 家 😀"s, ""s})
        EXPECT_EQ(oneLine(text), text);
}

TEST(OneLine, ControlCharactersBecomeOneBlank)
{
    EXPECT_EQ(oneLine("\ttwo\r\n\nlines\x1b[31m\0red\x7f "s), "two lines [31m red");
    EXPECT_EQ(oneLine("a\xC2\x9B"
                      "31mz"),
              "a 31mz")
        << "U+009B starts an order to a terminal, as escape and [ do";
    EXPECT_EQ(oneLine("a\u2028z\u0085"), "a z") << "line ends of Unicode";
}

TEST(OneLine, NothingTurnsTheTextAround)
{
    EXPECT_EQ(oneLine("model\u202Egpj.exe"), "model gpj.exe");
    EXPECT_EQ(oneLine("\u2066שלום\u2069"), "שלום") << "letters turn themselves";
}

TEST(OneLine, IsValidUtf8)
{
    EXPECT_EQ(oneLine("a\xFFz\x9B"), "a\uFFFDz\uFFFD");
    EXPECT_EQ(oneLine("\xC3"), "\uFFFD") << "cut off";
}

TEST(OneLine, KeepsBothEndsOfWhatIsTooLong)
{
    std::string const line = oneLine(std::string(4000, 'n') + ".glb: there is no such file");
    EXPECT_LT(line.size(), 1100U);
    EXPECT_TRUE(line.starts_with("nnn"));
    EXPECT_TRUE(line.ends_with("nnn.glb: there is no such file"));
}

} // namespace sgview
