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
    EXPECT_EQ(rule.finding,
              "claims more than a run grants: the verdict says on; never tried, as the diagnostic "
              "leaves it out on every card");
    EXPECT_FALSE(rule.holds);
    sgview::VerdictRule const buffers = lastRule({"card", {"True", "False", "False"}}, {false, true, false});
    EXPECT_EQ(buffers.finding,
              "claims more than a run grants: the verdict says on; the card does not offer it");
    EXPECT_FALSE(buffers.holds);
}

TEST(StoredVerdict, SaysWhatIsTriedApartFromWhatIsOffered)
{
    auto const rules = sgview::judge({"card", {"FALSE", "", "False"}}, "card", {true, false, false});
    ASSERT_EQ(rules.size(), 4U);
    EXPECT_EQ(rules[1].finding, "fits: the card offers it, and the verdict says off");
    EXPECT_EQ(rules[2].finding, "fits: the card does not offer it, nor does the verdict grant it");
    EXPECT_EQ(
        rules[3].finding,
        "fits: never tried, as the diagnostic leaves it out on every card, nor does the verdict grant it");
}

TEST(StoredVerdict, EntriesAreForPeopleAndPreferencesAreWordForWord)
{
    using Entries = std::vector<std::pair<std::string, std::string>>;
    StoredVerdict const stored{"True", {"TRUE", "yes", ""}};
    EXPECT_EQ(stored.entries(), (Entries{{"card", "True"},
                                         {"buffer objects", "on"},
                                         {"vertex program", "yes"},
                                         {"vertex shader", "no entry"}}));
    EXPECT_EQ(stored.preferences(),
              (Entries{{"GL_CARD", "True"}, {"GL_VBO", "TRUE"}, {"GL_VertexProgram", "yes"}}));
}

} // namespace
