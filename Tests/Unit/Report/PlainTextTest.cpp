#include "Viewer/Report/PlainText.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using sgview::asPlainText;

TEST(PlainText, LeavesValidTextAlone)
{
    for (std::string const& text : {"GeForce 6800 / 2.1"s, "tab\tline\nfeed"s, "é € 😀 \U0010FFFD"s, ""s})
        EXPECT_EQ(asPlainText(text), text);
}

TEST(PlainText, ReplacesEachByteThatIsNoPartOfACode)
{
    EXPECT_EQ(asPlainText("a\xFFz"), "a\uFFFDz");
    EXPECT_EQ(asPlainText("\x80"), "\uFFFD") << "a later byte in front";
    EXPECT_EQ(asPlainText("\xC3"), "\uFFFD") << "cut off";
    EXPECT_EQ(asPlainText("\xE2\x82"), "\uFFFD\uFFFD") << "cut off";
    EXPECT_EQ(asPlainText("\xE2(z"), "\uFFFD(z") << "what follows is kept";
    EXPECT_EQ(asPlainText("\xC0\xBC"), "\uFFFD\uFFFD") << "'<' in too long a form";
    EXPECT_EQ(asPlainText("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD") << "half a pair";
    EXPECT_EQ(asPlainText("\xF4\x90\x80\x80"), "\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond Unicode's end";
}

TEST(PlainText, ReplacesWhatAPageMustNotHold)
{
    EXPECT_EQ(asPlainText("a\0z"s), "a\uFFFDz");
    EXPECT_EQ(asPlainText("\x1B[31m\r"), "\uFFFD[31m\uFFFD");
    EXPECT_EQ(asPlainText("\x7F\xC2\x85"), "\uFFFD\uFFFD");
    EXPECT_EQ(asPlainText("\xEF\xBF\xBE\xEF\xB7\x90"), "\uFFFD\uFFFD") << "U+FFFE and U+FDD0";
    EXPECT_EQ(asPlainText("\xF0\x9F\xBF\xBF"), "\uFFFD") << "U+1FFFF";
}

} // namespace
