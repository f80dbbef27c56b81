#include "Viewer/Report/Base64.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace {

std::string encoded(std::string_view text)
{
    std::vector<std::uint8_t> const bytes(text.begin(), text.end());
    return sgview::asBase64(bytes);
}

TEST(Base64, IsThatOfTheStandardsExamples) // RFC 4648, section 10
{
    EXPECT_EQ(encoded(""), "");
    EXPECT_EQ(encoded("f"), "Zg==");
    EXPECT_EQ(encoded("fo"), "Zm8=");
    EXPECT_EQ(encoded("foo"), "Zm9v");
    EXPECT_EQ(encoded("foob"), "Zm9vYg==");
    EXPECT_EQ(encoded("fooba"), "Zm9vYmE=");
    EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
}

TEST(Base64, UsesAllDigitsInOrder)
{
    // Groups of six bits that count from 0 to 63.
    std::vector<std::uint8_t> bytes;
    for (unsigned i = 0; i < 64; i += 4) {
        unsigned const group = i << 18 | (i + 1) << 12 | (i + 2) << 6 | (i + 3);
        for (unsigned const shift : {16U, 8U, 0U})
            bytes.push_back(static_cast<std::uint8_t>(group >> shift & 0xFF));
    }
    EXPECT_EQ(sgview::asBase64(bytes), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

} // namespace
