#include "Utilities/Strings.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <random>

namespace {

class CommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

float readBack(std::string const& text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    float value = 0.0F;
    stream >> value;
    EXPECT_TRUE(stream) << text;
    EXPECT_EQ(stream.peek(), EOF) << text;
    return value;
}

using Pieces = std::vector<std::string>;

} // namespace

TEST(stringize, PrintsAsStreamsDoByDefault)
{
    EXPECT_EQ(stringize(42), "42");
    EXPECT_EQ(stringize(true), "1");
    EXPECT_EQ(stringize(false), "0");
    EXPECT_EQ(stringize(0.1), "0.1");
    EXPECT_EQ(stringize(std::string("a b")), "a b");
}

TEST(stringize, GivesFloatsSixDigitsWhereThoseReadBack)
{
    EXPECT_EQ(stringize(0.0F), "0");
    EXPECT_EQ(stringize(-0.0F), "-0");
    EXPECT_EQ(stringize(0.2F), "0.2");
    EXPECT_EQ(stringize(128.0F), "128");
    EXPECT_EQ(stringize(1e6F), "1e+06");
    EXPECT_EQ(stringize(-2.5e-7F), "-2.5e-07");
}

TEST(stringize, GivesFloatsNineDigitsWhereSixDoNotReadBack)
{
    EXPECT_EQ(stringize(1.0F / 3.0F), "0.333333343");
    EXPECT_EQ(stringize(16777215.0F), "16777215");
    EXPECT_EQ(stringize(std::numeric_limits<float>::max()), "3.40282347e+38");
}

TEST(stringize, NamesWhatIsNotFinite)
{
    EXPECT_EQ(stringize(std::numeric_limits<float>::infinity()), "inf");
    EXPECT_EQ(stringize(-std::numeric_limits<float>::infinity()), "-inf");
    EXPECT_EQ(stringize(std::numeric_limits<float>::quiet_NaN()), "nan");
}

TEST(stringize, LosesNoBitOfAFloat)
{
    std::mt19937 random(99);
    auto const check = [](std::uint32_t bits) {
        auto const value = std::bit_cast<float>(bits);
        if (std::isfinite(value)) {
            EXPECT_EQ(std::bit_cast<std::uint32_t>(readBack(stringize(value))), bits) << stringize(value);
        }
    };
    for (int i = 0; i < 20000; ++i)
        check(static_cast<std::uint32_t>(random()));
    for (std::uint32_t bits = 0; bits < 2000; ++bits) {
        check(bits);               // the smallest denormal numbers
        check(0x007fffffU - bits); // the largest
        check(0x80000000U + bits); // and the negative ones
        check(0x7f7fffffU - bits); // the largest numbers
    }
}

TEST(stringize, DoesNotFollowTheProgramsLocale)
{
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
    EXPECT_EQ(stringize(1234567), "1234567");
    EXPECT_EQ(stringize(0.5F), "0.5");
    EXPECT_EQ(stringize(1.0F / 3.0F), "0.333333343");
    std::locale::global(before);
}

TEST(inQuotes, ShowsATextOnOneShortLine)
{
    EXPECT_EQ(inQuotes("two words"), "\"two words\"");
    EXPECT_EQ(inQuotes(""), "\"\"");
    EXPECT_EQ(inQuotes("a\nb\x1b[2J\x7f"), "\"a?b?[2J?\"");
    EXPECT_EQ(inQuotes(std::string(80, 'x')), '"' + std::string(80, 'x') + '"');
    EXPECT_EQ(inQuotes(std::string(81, 'x')), '"' + std::string(80, 'x') + "...\"");
    EXPECT_EQ(inQuotes("\xc3\xa9"), "\"\xc3\xa9\"");
}

TEST(string_split, GivesOnePieceMoreThanThereAreSeparators)
{
    EXPECT_EQ(string_split("1.5.0 Mesa", '.'), (Pieces{"1", "5", "0 Mesa"}));
    EXPECT_EQ(string_split("none", '.'), (Pieces{"none"}));
    EXPECT_EQ(string_split("", '.'), (Pieces{""}));
    EXPECT_EQ(string_split(".", '.'), (Pieces{"", ""}));
    EXPECT_EQ(string_split("..a", '.'), (Pieces{"", "", "a"}));
    EXPECT_EQ(string_split("a:", ':'), (Pieces{"a", ""}));
}
