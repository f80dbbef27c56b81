#include "Benchmarks/Common/FrameTimes.h"

#include "Viewer/Bench/ProcessMemory.h"
#include "Viewer/Bench/Quantile.h"
#include "Viewer/Bench/WarmUp.h"
#include "Viewer/Platform/PngWriter.h"

#include <epoxy/gl.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <iostream>

namespace {

nlohmann::ordered_json summary(std::vector<double> const& values)
{
    return {{"median", sgview::quantile(values, 0.5)},
            {"p5", sgview::quantile(values, 0.05)},
            {"p95", sgview::quantile(values, 0.95)}};
}

std::string driver()
{
    auto const* const text = reinterpret_cast<char const*>(glGetString(GL_RENDERER));
    return text ? text : "unknown";
}

} // namespace

double now()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

FrameTimes timeFrames(int frames, double began, std::function<void(int frame)> const& prepare,
                      std::function<void(int frame)> const& draw)
{
    FrameTimes times;
    for (int frame = 0; frame < sgview::warmUpFrames + frames; ++frame) {
        double const start = now();
        prepare(frame);
        double const prepared = now();
        draw(frame);
        glFinish();
        double const end = now();
        if (frame == 0)
            times.start = end - began;
        if (frame < sgview::warmUpFrames)
            continue;
        times.whole.push_back(end - start);
        times.application.push_back(prepared - start);
    }
    return times;
}

void keepMemoryFor(BenchRun const& run, int drawsAFrame)
{
    if (!sgview::isDrawingDiscarded())
        return;
    auto const draws =
        static_cast<std::size_t>(run.frames + sgview::warmUpFrames) * static_cast<std::size_t>(drawsAFrame);
    sgview::keepMemory(draws * sgview::lostADiscardedDraw);
}

void printResult(BenchRun const& run, FrameTimes const& times)
{
    nlohmann::ordered_json const result{{"program", run.program},
                                        {"scene", run.scene},
                                        {"count", run.count},
                                        {"moving", run.moving},
                                        {"width", BenchRun::width},
                                        {"height", BenchRun::height},
                                        {"driver", driver()},
                                        {"discarded", sgview::isDrawingDiscarded()},
                                        {"warmUpFrames", sgview::warmUpFrames},
                                        {"frames", times.whole.size()},
                                        {"milliseconds", summary(times.whole)},
                                        {"application", summary(times.application)},
                                        {"peakMemory", sgview::peakMemory()},
                                        {"start", {{"firstFrame", times.start}}}};
    std::cout << result.dump() << '\n';
}

void savePicture(BenchRun const& run)
{
    if (run.picture.empty())
        return;
    sgview::Picture picture({BenchRun::width, BenchRun::height});
    glReadPixels(0, 0, BenchRun::width, BenchRun::height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
    constexpr std::ptrdiff_t row = std::ptrdiff_t{4} * BenchRun::width;
    for (int y = 0; y < BenchRun::height / 2; ++y)
        std::swap_ranges(picture.pixels.begin() + y * row, picture.pixels.begin() + (y + 1) * row,
                         picture.pixels.end() - (y + 1) * row);
    sgview::writePng(run.picture, picture);
}
