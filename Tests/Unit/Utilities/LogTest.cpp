#include "Utilities/Log.h"

#include "Tests/Unit/Utilities/CapturedLog.h"

#include <gtest/gtest.h>

#include <iostream>
#include <streambuf>

namespace {

class FlushCounter : public std::stringbuf {
public:
    int flushes = 0;

protected:
    int sync() override
    {
        ++flushes;
        return std::stringbuf::sync();
    }
};

} // namespace

TEST(Log, GoesToStandardErrorByDefault)
{
    RogueSingleton<Log, LogFactory>::reset();
    EXPECT_EQ(&Log::getInstance().getStream(), &std::cerr);
}

TEST(Log, EnablesChannelsAsTheCallerWouldByDefault)
{
    CapturedLog const log;
    EXPECT_TRUE(Log::isEnabled("opengl", true));
    EXPECT_FALSE(Log::isEnabled("opengl", false));
}

TEST(Log, TheHostsWordOnAChannelCounts)
{
    CapturedLog const log;
    Log::getInstance().setEnabled("opengl", false);
    Log::getInstance().setEnabled("details", true);
    EXPECT_FALSE(Log::isEnabled("opengl", true));
    EXPECT_TRUE(Log::isEnabled("details", false));
    EXPECT_TRUE(Log::isEnabled("error", true)) << "other channels are left alone";
    Log::getInstance().setEnabled("opengl", true);
    EXPECT_TRUE(Log::isEnabled("opengl", true));
}

TEST(Log, DisablingOthersLeavesThoseSetByName)
{
    CapturedLog const log;
    Log::getInstance().setEnabled("error", true);
    Log::getInstance().disableOthers();
    EXPECT_FALSE(Log::isEnabled("opengl", true));
    EXPECT_TRUE(Log::isEnabled("error", true));
    Log::getInstance().setEnabled("opengl", true);
    EXPECT_TRUE(Log::isEnabled("opengl", true));
}

TEST(LogChannel, WritesNameTextAndNewline)
{
    CapturedLog const log;
    LogChannel const channel("opengl");
    channel.write("units: ", 4, ", fast: ", true);
    channel.write("");
    EXPECT_EQ(log.text(), "opengl: units: 4, fast: 1\nopengl: \n");
}

TEST(LogChannel, FlushesAfterEachLine)
{
    CapturedLog const log;
    FlushCounter buffer;
    std::ostream stream(&buffer);
    Log::getInstance().setStream(stream);
    LogChannel const channel("opengl");
    channel.write("one");
    EXPECT_EQ(buffer.flushes, 1);
    channel.write("two");
    EXPECT_EQ(buffer.flushes, 2);
}

TEST(LogChannel, WritesNothingWhenSwitchedOff)
{
    CapturedLog const log;
    Log::getInstance().setEnabled("opengl", false);
    LogChannel const channel("opengl");
    channel.write("unheard");
    EXPECT_EQ(log.text(), "");
}

TEST(LogChannel, IsSettledOnceAtConstruction)
{
    CapturedLog const log;
    LogChannel const on("opengl");
    Log::getInstance().setEnabled("opengl", false);
    LogChannel const off("opengl");
    Log::getInstance().setEnabled("opengl", true);
    on.write("still heard");
    off.write("still unheard");
    EXPECT_EQ(log.text(), "opengl: still heard\n");
}

TEST(LogChannel, FollowsAReplacedStream)
{
    CapturedLog const log;
    LogChannel const channel("opengl");
    std::ostringstream other;
    Log::getInstance().setStream(other);
    channel.write("there");
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(other.str(), "opengl: there\n");
}
