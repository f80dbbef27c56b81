#include "OpenGLRenderer/DiagnosticPrefs.h"

#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"
#include "Tests/Unit/OpenGLRenderer/StoredPrefs.h"

using namespace RendererTesting;
using testing::ElementsAre;

namespace {

class Verdict : public testing::Test {
protected:
    void storeAll(std::string const& value)
    {
        for (char const* const key : {"GL_VBO", "GL_VertexProgram", "GL_VertexShader"})
            prefs.store->setString(key, value);
    }

    RecordingGL gl;
    LogCapture log;
    StoredPrefs prefs;
};

char const* const neither[]{"",     "yes",   "1",      "0",      " True", "True ", "tRUE",
                            "TRue", "fALSE", "False ", "\tTrue", "no",    "T",     "Truely"};

} // namespace

TEST(Spelling, IsTrueInThreeWays)
{
    for (char const* const text : {"True", "true", "TRUE"}) {
        EXPECT_TRUE(Diagnostic::isStringTrue(text)) << text;
        EXPECT_FALSE(Diagnostic::isStringFalse(text)) << text;
    }
}

TEST(Spelling, IsFalseInThreeWays)
{
    for (char const* const text : {"False", "false", "FALSE"}) {
        EXPECT_TRUE(Diagnostic::isStringFalse(text)) << text;
        EXPECT_FALSE(Diagnostic::isStringTrue(text)) << text;
    }
}

TEST(Spelling, OfAnyOtherKindIsNeither)
{
    for (char const* const text : neither) {
        EXPECT_FALSE(Diagnostic::isStringTrue(text)) << text;
        EXPECT_FALSE(Diagnostic::isStringFalse(text)) << text;
    }
    EXPECT_FALSE(Diagnostic::isStringTrue(std::string("True\0", 5)));
}

TEST_F(Verdict, OfAnEmptyStoreGrantsNothing)
{
    EXPECT_EQ(prefs.made, 0);
    EXPECT_EQ(Diagnostic::readPrefs(), Capabilities());
    EXPECT_EQ(prefs.made, 1);
    EXPECT_THAT(prefs.store->notes, ElementsAre("get GL_VBO", "get GL_VertexProgram", "get GL_VertexShader"));
}

TEST_F(Verdict, IsReadFlagByFlag)
{
    prefs.store->setString("GL_VBO", "true");
    EXPECT_EQ(Diagnostic::readPrefs(), (Capabilities{true, false, false}));
    prefs.store->setString("GL_VBO", "FALSE");
    prefs.store->setString("GL_VertexProgram", "TRUE");
    EXPECT_EQ(Diagnostic::readPrefs(), (Capabilities{false, true, false}));
    prefs.store->setString("GL_VertexProgram", "no");
    prefs.store->setString("GL_VertexShader", "True");
    EXPECT_EQ(Diagnostic::readPrefs(), (Capabilities{false, false, true}));
}

TEST_F(Verdict, GrantsNothingByAWordThatIsNeither)
{
    for (char const* const text : neither) {
        storeAll(text);
        EXPECT_EQ(Diagnostic::readPrefs(), Capabilities()) << text;
    }
}

TEST_F(Verdict, IsWrittenWithTheCardLast)
{
    gl.setString(GL_VENDOR, "Vendor");
    gl.setString(GL_RENDERER, "Card");
    gl.setString(GL_VERSION, "2.1");
    Diagnostic::writePrefs({true, false, false});
    EXPECT_THAT(prefs.store->notes,
                ElementsAre("set GL_VBO = True", "set GL_VertexProgram = False",
                            "set GL_VertexShader = False", "set GL_CARD = Vendor / Card / 2.1"));
    EXPECT_EQ(prefs.made, 1);
}

TEST_F(Verdict, ReadsBackAsItWasWritten)
{
    for (unsigned int flags = 0; flags < 8; ++flags) {
        Capabilities const caps{(flags & 1U) != 0, (flags & 2U) != 0, (flags & 4U) != 0};
        Diagnostic::writePrefs(caps);
        EXPECT_EQ(Diagnostic::readPrefs(), caps);
    }
}

TEST_F(Verdict, IsLoggedInOneLine)
{
    Diagnostic::logCaps({true, false, false}, "Read caps");
    Diagnostic::logCaps({false, true, false}, "Card caps");
    Diagnostic::logCaps({false, false, true}, "Final caps");
    EXPECT_EQ(log.text(), "opengl: Read caps: VBO = Yes, vertex program = No, vertex shader = No\n"
                          "opengl: Card caps: VBO = No, vertex program = Yes, vertex shader = No\n"
                          "opengl: Final caps: VBO = No, vertex program = No, vertex shader = Yes\n");
}
