#include "OpenGLRenderer/GLVersion.h"

#include "Tests/RecordingGL/RecordingGL.h"

#include <boost/lexical_cast.hpp>
#include <gmock/gmock.h>

// The version is read once per process, and each test here is a process of its own.

namespace {

bool passes(char const* version, int major, int minor)
{
    RecordingGL gl;
    if (version)
        gl.setString(GL_VERSION, version);
    return checkGLVersion(major, minor);
}

} // namespace

TEST(GLVersion, OneDotOneIsBelowOneDotTwo)
{
    EXPECT_FALSE(passes("1.1 Old", 1, 2));
}

TEST(GLVersion, OneDotTwoReachesItself)
{
    EXPECT_TRUE(passes("1.2", 1, 2));
}

TEST(GLVersion, OneDotFiveIsAbove)
{
    EXPECT_TRUE(passes("1.5.2 Driver", 1, 2));
}

TEST(GLVersion, AGreaterMajorPassesWhateverTheMinor)
{
    EXPECT_TRUE(passes("2.0", 1, 2));
}

TEST(GLVersion, TheMinorAlonePassesWhateverTheMajor)
{
    EXPECT_TRUE(passes("1.9", 4, 2));
}

TEST(GLVersion, AnEqualMajorIsNotGreater)
{
    EXPECT_FALSE(passes("2.0", 2, 1));
}

TEST(GLVersion, TheMinorIsItsLeadingDigits)
{
    EXPECT_TRUE(passes("1.4a Mesa.9", 1, 4));
    EXPECT_FALSE(passes("1.4a Mesa.9", 1, 5));
}

TEST(GLVersion, AMinorWithoutDigitsIsZero)
{
    EXPECT_FALSE(passes("1.x", 1, 1));
    EXPECT_TRUE(passes("1.x", 1, 0));
}

TEST(GLVersion, IsReadOnce)
{
    EXPECT_TRUE(passes("1.2", 1, 2));
    RecordingGL gl;
    gl.setString(GL_VERSION, "1.1");
    EXPECT_TRUE(checkGLVersion(1, 2));
    EXPECT_THAT(gl.calls(), testing::IsEmpty());
}

TEST(GLVersion, IsAskedForAgainUntilItHasADot)
{
    EXPECT_FALSE(passes("1", 1, 0));
    EXPECT_FALSE(passes("", 1, 0));
    EXPECT_FALSE(passes(nullptr, 0, 0));
    EXPECT_TRUE(passes("1.2", 1, 2));
}

TEST(GLVersion, ThrowsForAMajorThatIsNoNumberAndAsksAgain)
{
    try {
        static_cast<void>(passes("OpenGL 1.5", 1, 2));
        ADD_FAILURE() << "nothing thrown";
    } catch (boost::bad_lexical_cast const& error) {
        EXPECT_STREQ(error.what(), "bad lexical cast: source type value could not be interpreted as target");
    }
    EXPECT_THROW(static_cast<void>(passes("1a.5", 1, 2)), boost::bad_lexical_cast);
    EXPECT_THROW(static_cast<void>(passes(".5", 1, 2)), boost::bad_lexical_cast);
    EXPECT_TRUE(passes("1.5", 1, 2));
}
