#include "Viewer/Diagnosis/StoredVerdict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using sgview::StoredVerdict;
using sgview::TechniqueFlags;
using testing::StartsWith;

constexpr TechniqueFlags usual{true, true, false};

/// The finding of the last rule, which is the one that settles it.
sgview::VerdictRule lastRule(StoredVerdict const& stored, TechniqueFlags const& claims = usual)
{
    return judge(stored, "card", claims).back();
}

TEST(StoredVerdict, CardGoesFirst)
{
    EXPECT_TRUE(StoredVerdict().isEmpty());
    EXPECT_THAT(lastRule({}).finding, StartsWith("missing entry: no verdict"));
    EXPECT_FALSE(lastRule({}).holds);
    StoredVerdict const another{"another", {"True", "True", "True"}};
    EXPECT_FALSE(another.isEmpty());
    EXPECT_EQ(lastRule(another).finding, "another card: the verdict is for 'another'");
    EXPECT_FALSE(lastRule(another).holds);
}

TEST(StoredVerdict, AllFits)
{
    for (char const* const text : {"True", "true", "TRUE", "False", "false", "FALSE"}) {
        auto const rules = judge({"card", {text, text, "False"}}, "card", usual);
        ASSERT_EQ(rules.size(), 4U);
        for (sgview::VerdictRule const& rule : rules)
            EXPECT_TRUE(rule.holds) << rule.finding;
    }
    EXPECT_TRUE(lastRule({"card", {"", "yes", "False"}}, {}).holds) << "what is not offered may be anything";
}

TEST(StoredVerdict, OfferedAndNotDecided)
{
    EXPECT_THAT(lastRule({"card", {"", "True", "False"}}).finding, StartsWith("missing entry: "));
    EXPECT_EQ(lastRule({"card", {"", "True", "False"}}).subject, "buffer objects");
    EXPECT_EQ(lastRule({"card", {"True", "yes", "False"}}).finding,
              "neither spelling: 'yes' is neither true nor false");
    EXPECT_EQ(lastRule({"card", {"True", "yes", "False"}}).subject, "vertex program");
}

TEST(StoredVerdict, GrantedAndNotOffered)
{
    sgview::VerdictRule const rule = lastRule({"card", {"True", "True", "TRUE"}});
    EXPECT_EQ(rule.subject, "vertex shader");
    EXPECT_EQ(rule.finding, "claims more than the card has: 'TRUE' is stored");
    EXPECT_FALSE(rule.holds);
    EXPECT_FALSE(lastRule({"card", {"True", "False", "False"}}, {false, true, false}).holds);
}

} // namespace
