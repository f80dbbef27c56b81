#include "Viewer/Bench/FrameMeasurement.h"

#include "Viewer/Bench/AllocationCount.h"
#include "Viewer/Bench/ProcessMemory.h"
#include "Viewer/Bench/Quantile.h"
#include "Viewer/Bench/WarmUp.h"

#include <algorithm>
#include <chrono>

namespace sgview {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int mostPassFrames = 20;

int passFramesFor(int frames)
{
    return std::min(frames, mostPassFrames);
}

/// Times of the passes of some frames.
class PassRecord {
public:
    explicit PassRecord(SGRenderer& renderer) : renderer_(renderer)
    {
        renderer_.passTimeSink = [this](std::string_view pass, std::chrono::nanoseconds time) {
            add(pass, Milliseconds(time).count());
        };
    }
    PassRecord(PassRecord const&) = delete;
    PassRecord& operator=(PassRecord const&) = delete;
    ~PassRecord() { renderer_.passTimeSink = nullptr; }

    void beginFrame() { next_ = 0; }

    [[nodiscard]] std::vector<PassFigure> medians() const
    {
        std::vector<PassFigure> figures;
        for (auto const& [name, times] : passes_)
            figures.push_back({name, quantile(times, 0.5)});
        return figures;
    }

private:
    void add(std::string_view name, double milliseconds)
    {
        if (next_ == passes_.size())
            passes_.push_back({std::string(name), {}});
        passes_[next_++].second.push_back(milliseconds);
    }

    SGRenderer& renderer_;
    std::vector<std::pair<std::string, std::vector<double>>> passes_; ///< by the order in a frame
    std::size_t next_ = 0;
};

} // namespace

FrameFigures measureFrames(OffscreenRenderer& renderer, BenchScene& scene, int frames,
                           std::function<void()> const& advance)
{
    FrameFigures figures;
    int frame = 0;
    for (; frame < warmUpFrames; ++frame) {
        scene.prepare(frame);
        static_cast<void>(renderer.time(scene.root()));
        advance();
    }
    for (int const end = frame + frames; frame < end; ++frame) {
        std::int64_t const allocationsBefore = allocationCount();
        std::int64_t const pageFaultsBefore = pageFaultCount();
        Clock::time_point const start = Clock::now();
        scene.prepare(frame);
        Milliseconds const application = Clock::now() - start;
        Milliseconds const drawing = renderer.time(scene.root());
        std::int64_t const allocations = allocationCount() - allocationsBefore;
        std::int64_t const pageFaults = pageFaultCount() - pageFaultsBefore;
        figures.application.push_back(application.count());
        figures.milliseconds.push_back((application + drawing).count());
        figures.allocations.push_back(static_cast<double>(allocations));
        figures.pageFaults.push_back(static_cast<double>(pageFaults));
        advance();
    }
    PassRecord passes(renderer.engine());
    for (int const end = frame + passFramesFor(frames); frame < end; ++frame) {
        scene.prepare(frame);
        passes.beginFrame();
        static_cast<void>(renderer.time(scene.root()));
        advance();
    }
    figures.passes = passes.medians();
    return figures;
}

int framesDrawnFor(int frames)
{
    return warmUpFrames + frames + passFramesFor(frames);
}

} // namespace sgview
