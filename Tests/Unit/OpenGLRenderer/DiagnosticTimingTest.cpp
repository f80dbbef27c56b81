#include "OpenGLRenderer/DiagnosticTiming.h"

#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedClock.h"

using namespace RendererTesting;

namespace {

class DiagnosticTiming : public RendererTest {
protected:
    /// A test of an empty scene, with a clock that moves by so much between the four looks at it.
    double rate(std::int64_t firstFrame, std::int64_t threeFrames, bool bailIfSlow = true)
    {
        clock.steps = {7, firstFrame, 500, threeFrames};
        clock.asked = 0;
        static_cast<void>(gl.takeCalls());
        return Diagnostic::testFPS(make_smart<SGRootNode>(), bailIfSlow);
    }

    ScriptedClock clock;
    LogCapture log;
};

std::string const bailing = "opengl: Ran time test, but first render took too long, so bailing out\n";

} // namespace

TEST_F(DiagnosticTiming, DrawsTwoFramesAndTimesThreeMore)
{
    Calls order;
    gl.setWatcher([&](std::string_view call) {
        if (call.starts_with("glClear(") || call == "glFinish()")
            order.push_back(std::string(call.substr(2, 5)) + " after " + std::to_string(clock.asked));
    });
    EXPECT_EQ(rate(10'000, 30'000), 100.0);
    gl.setWatcher({});
    EXPECT_EQ(order,
              (Calls{"Clear after 1", "Finis after 1", "Clear after 2", "Finis after 2", "Clear after 3",
                     "Finis after 3", "Clear after 3", "Finis after 3", "Clear after 3", "Finis after 3"}));
    EXPECT_EQ(clock.asked, 4);
}

TEST_F(DiagnosticTiming, LogsTheRateAsAStreamPrintsIt)
{
    EXPECT_EQ(rate(1, 37'500), 80.0);
    EXPECT_EQ(rate(1, 37'499), 3'000'000.0 / 37'499.0);
    EXPECT_EQ(rate(1, 7), 3'000'000.0 / 7.0);
    EXPECT_EQ(rate(1, 30'000'000), 0.1);
    EXPECT_EQ(log.text(), "opengl: Ran time test, got 80\n"
                          "opengl: Ran time test, got 80.0021\n"
                          "opengl: Ran time test, got 428571\n"
                          "opengl: Ran time test, got 0.1\n");
}

TEST_F(DiagnosticTiming, GoesOnAfterAFirstFrameOfOneSecond)
{
    EXPECT_EQ(rate(1'000'000, 60'000), 50.0);
    EXPECT_EQ(gl.count("glFinish"), 5);
    EXPECT_EQ(log.text(), "opengl: Ran time test, got 50\n");
}

TEST_F(DiagnosticTiming, EndsAfterAFirstFrameOfOneMicrosecondMore)
{
    EXPECT_EQ(rate(1'000'001, 60'000), 0.0);
    EXPECT_EQ(gl.count("glFinish"), 1);
    EXPECT_EQ(gl.count("glClear"), 1);
    EXPECT_EQ(clock.asked, 2);
    EXPECT_EQ(log.text(), bailing);
}

TEST_F(DiagnosticTiming, GoesOnAfterAnyFirstFrameWhereItMayNotBail)
{
    EXPECT_EQ(rate(1'000'001, 60'000, false), 50.0);
    EXPECT_EQ(rate(3'600'000'000, 60'000, false), 50.0);
    EXPECT_EQ(gl.count("glFinish"), 5);
    EXPECT_EQ(clock.asked, 4);
    EXPECT_EQ(log.text(), "opengl: Ran time test, got 50\nopengl: Ran time test, got 50\n");
}

TEST_F(DiagnosticTiming, LooksAtEachFirstFrameOnItsOwn)
{
    EXPECT_EQ(rate(999'999, 3'000'000), 1.0);
    EXPECT_EQ(rate(5, 3'000'000'000), 0.001);
}

TEST_F(DiagnosticTiming, KeepsTheRateFiniteWhereTheClockStandsStill)
{
    EXPECT_EQ(rate(0, 0), 3e6);
    EXPECT_EQ(rate(0, 1), 3e6);
    EXPECT_EQ(log.text(), "opengl: Ran time test, got 3e+06\nopengl: Ran time test, got 3e+06\n");
}

TEST_F(DiagnosticTiming, GivesNoRateWhereTheClockGoesBack)
{
    EXPECT_EQ(rate(0, -1), 0.0);
    EXPECT_EQ(rate(0, -5'000'000'000), 0.0);
    EXPECT_EQ(log.text(), "opengl: Ran time test, got 0\nopengl: Ran time test, got 0\n");
}

TEST_F(DiagnosticTiming, IsNotSlowedByAClockThatGoesBackInTheFirstFrame)
{
    EXPECT_EQ(rate(-2'000'000, 30'000), 100.0);
    EXPECT_EQ(gl.count("glFinish"), 5);
}

TEST_F(DiagnosticTiming, ShowsTheSceneToTheStrategyInUse)
{
    class Counter : public SGNodeVisitor {
    public:
        using SGNodeVisitor::enter;
        void enter(SGRootNode*) override { ++frames; }
        int frames = 0;
    };
    auto const counter = make_smart<Counter>();
    GLRenderer::renderer->strategy = {counter};
    EXPECT_EQ(rate(1, 30), 100'000.0);
    EXPECT_EQ(counter->frames, 5);
    EXPECT_EQ(GLRenderer::renderer->strategy.size(), 1U);
}
