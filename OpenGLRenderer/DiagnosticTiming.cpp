#include "OpenGLRenderer/DiagnosticTiming.h"

#include "OpenGLRenderer/Renderer.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"
#include "Utilities/Timer.h"

#include <algorithm>

namespace {

constexpr std::int64_t longestFirstFrame = 1'000'000; // microseconds
constexpr int timedFrames = 3;
constexpr double microsecondsPerSecond = 1e6;

Timestamp now()
{
    return RogueSingleton<Timer, TimerFactory>::getInstance().now();
}

void drawToTheEnd(smart_ptr<SGRootNode> const& root)
{
    GLRenderer::renderer->render(root);
    glFinish();
}

// Rates are compared with one another and with 0: a clock that stood still or went back must not make them
// infinite or negative.
double rateOver(std::int64_t microseconds)
{
    if (microseconds < 0)
        return 0.0;
    double const shortest = 1.0;
    return timedFrames * microsecondsPerSecond / std::max(shortest, static_cast<double>(microseconds));
}

} // namespace

double Diagnostic::testFPS(smart_ptr<SGRootNode> const& root, bool bailIfSlow)
{
    Timestamp const first = now();
    drawToTheEnd(root);
    if (now().diffInMicrosec(first) > longestFirstFrame && bailIfSlow) {
        static LogChannel const channel("opengl");
        channel.write("Ran time test, but first render took too long, so bailing out");
        return 0.0;
    }
    drawToTheEnd(root);
    Timestamp const start = now();
    for (int i = 0; i < timedFrames; ++i)
        drawToTheEnd(root);
    double const rate = rateOver(now().diffInMicrosec(start));
    static LogChannel const channel("opengl");
    channel.write("Ran time test, got ", stringize(rate));
    return rate;
}
