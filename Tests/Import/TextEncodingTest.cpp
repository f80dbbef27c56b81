#include "Viewer/Import/TextEncoding.h"

#include <gtest/gtest.h>

#include <string>

namespace sgview {

namespace {

std::string converted(Bytes const& content)
{
    Bytes const text = asUtf8(content);
    return {text.begin(), text.end()};
}

} // namespace

TEST(TextEncoding, ConvertsByByteOrderMark)
{
    EXPECT_EQ(converted({0xFF, 0xFE, 'a', 0, 0xE4, 0}), "a\xC3\xA4");
    EXPECT_EQ(converted({0xFE, 0xFF, 0, 'a', 0x20, 0xAC}), "a\xE2\x82\xAC");
    EXPECT_EQ(converted({0xFF, 0xFE, 0, 0, 'a', 0, 0, 0}), "a");
    EXPECT_EQ(converted({0, 0, 0xFE, 0xFF, 0, 1, 0xF6, 0}), "\xF0\x9F\x98\x80");
    EXPECT_EQ(converted({0xFE, 0xFF, 0xD8, 0x3D, 0xDE, 0x00}), "\xF0\x9F\x98\x80");
}

TEST(TextEncoding, LeavesOtherContentAlone)
{
    EXPECT_EQ(converted({'a', 0xFF, 0xFE}), "a\xFF\xFE");
    EXPECT_EQ(converted({}), "");
    EXPECT_EQ(converted({0xFF}), "\xFF");
}

TEST(TextEncoding, ReplacesWhatIsNoCode)
{
    EXPECT_EQ(converted({0xFE, 0xFF, 0xD8, 0x3D}), "\xEF\xBF\xBD");
    EXPECT_EQ(converted({0xFE, 0xFF, 0xDC, 0x00, 0, 'a'}), "\xEF\xBF\xBD"
                                                           "a");
    EXPECT_EQ(converted({0xFE, 0xFF, 0, 'a', 0}), "a");
}

} // namespace sgview
