#include "Utilities/PrefsText.h"

#include <gtest/gtest.h>

#include <random>

using PrefsText::Entries;

TEST(PrefsText, IsALineForEachEntry)
{
    EXPECT_EQ(PrefsText::format({{"GL_VBO", "True"}, {"GL_CARD", "A Vendor / A Card / 1.5"}}),
              "# Preferences of OpenGLRenderer, written by the program.\n"
              "GL_CARD = A Vendor / A Card / 1.5\n"
              "GL_VBO = True\n");
}

TEST(PrefsText, ReadsWhatAPersonWrites)
{
    EXPECT_EQ(PrefsText::parse("# comment = not an entry\n"
                               "\n"
                               "tight=value\n"
                               "  loose \t=\t  a = b  \r\n"
                               "empty =\n"
                               "twice = first\n"
                               "twice = second\n"),
              (Entries{{"tight", "value"}, {"loose", "a = b"}, {"empty", ""}, {"twice", "second"}}));
}

TEST(PrefsText, EscapesWhatALineCannotHold)
{
    EXPECT_EQ(PrefsText::format({{"a=b", "one\ntwo\\"}}),
              "# Preferences of OpenGLRenderer, written by the program.\n"
              "a\\x3db = one\\ntwo\\\\\n");
    EXPECT_EQ(PrefsText::parse("a\\x3db = one\\ntwo\\\\\n"), (Entries{{"a=b", "one\ntwo\\"}}));
}

TEST(PrefsText, PassesOverLinesThatAreNoEntries)
{
    EXPECT_EQ(PrefsText::parse("no equals sign\n"
                               "bad = \\q\n"
                               "bad = \\x4\n"
                               "bad = \\x4g\n"
                               "bad = \\\n"
                               "b\\ad = value\n"
                               "good = value\n"),
              (Entries{{"good", "value"}}));
}

TEST(PrefsText, TakesNoHalfLineForAWholeOne)
{
    EXPECT_EQ(PrefsText::parse("whole = True\nhalf = Tr"), (Entries{{"whole", "True"}}));
    EXPECT_EQ(PrefsText::parse("half = Tr"), Entries());
    EXPECT_EQ(PrefsText::parse(""), Entries());
}

TEST(PrefsText, RoundTripsAnyBytes)
{
    std::mt19937 random(5);
    // Mostly the bytes that have a meaning of their own.
    std::string const special = std::string(" \t\r\n=#\\xn0a\0\x7f\xff", 15);
    auto const text = [&] {
        std::string result(random() % 8, ' ');
        for (char& c : result)
            c = random() % 4 == 0 ? static_cast<char>(random()) : special[random() % special.size()];
        return result;
    };
    for (int i = 0; i < 20000; ++i) {
        Entries const entries{{text(), text()}, {text(), text()}, {text(), text()}};
        ASSERT_EQ(PrefsText::parse(PrefsText::format(entries)), entries);
    }
}

TEST(PrefsText, SurvivesAnyBytes)
{
    std::mt19937 random(6);
    for (int i = 0; i < 5000; ++i) {
        std::string bytes(random() % 200, ' ');
        for (char& c : bytes)
            c = random() % 3 == 0 ? "=\n\\"[random() % 3] : static_cast<char>(random());
        Entries const entries = PrefsText::parse(bytes);
        ASSERT_EQ(PrefsText::parse(PrefsText::format(entries)), entries);
    }
}
