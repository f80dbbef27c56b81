#include "Viewer/Bench/FrameMeasurement.h"

#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Bench/SceneShapes.h"
#include "Viewer/Bench/WarmUp.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <numeric>
#include <thread>

namespace {

using namespace sgview;

constexpr int allocations = 250;
constexpr double milliseconds = 12.0;

/// A cube whose every frame costs the application a known time and number of allocations.
class CostlyScene : public BenchScene {
public:
    CostlyScene()
    {
        lookFrom({{0.0, 0.0, 5.0}, 1.0, 10.0});
        makeCube(1.0).addSurface(stage(), colorOf(0));
        setView(16, 16);
    }

    void prepare(int frame) override
    {
        frames.push_back(frame);
        for (int i = 0; i < allocations; ++i)
            last_ = std::make_unique<int>(i);
        std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(milliseconds));
    }

    std::vector<int> frames;

private:
    std::unique_ptr<int> last_;
};

class FrameMeasurement : public testing::Test {
protected:
    FrameMeasurement() { renderer.use(Technique::plain); }

    FrameFigures measure(int frames)
    {
        return measureFrames(renderer, scene, frames, [this] { ++advances; });
    }

    OffscreenRenderer renderer{PictureSize{16, 16}};
    CostlyScene scene;
    int advances = 0;
};

TEST_F(FrameMeasurement, CountsAndTimesAreOfTheFrames)
{
    FrameFigures const figures = measure(3);
    ASSERT_EQ(figures.milliseconds.size(), 3U);
    ASSERT_EQ(figures.pageFaults.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_GE(figures.application[i], milliseconds);
        EXPECT_GT(figures.milliseconds[i], figures.application[i]) << "drawing comes on top";
        EXPECT_GE(figures.allocations[i], allocations);
        EXPECT_LT(figures.allocations[i], allocations + 50.0) << "a single cube needs few";
    }
}

TEST_F(FrameMeasurement, DrawsFromTheScenesFirstFrameOnInOrder)
{
    static_cast<void>(measure(4));
    std::vector<int> expected(static_cast<std::size_t>(framesDrawnFor(4)));
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(scene.frames, expected);
    EXPECT_EQ(advances, framesDrawnFor(4));
    EXPECT_EQ(framesDrawnFor(4), warmUpFrames + 4 + 4);
    EXPECT_EQ(framesDrawnFor(1000), warmUpFrames + 1000 + 20) << "passes need no more";
}

TEST_F(FrameMeasurement, PassesAreTimedInFramesOfTheirOwn)
{
    FrameFigures const figures = measure(2);
    std::vector<std::string> names;
    for (PassFigure const& pass : figures.passes) {
        names.push_back(pass.name);
        EXPECT_LT(pass.milliseconds, milliseconds) << "the application is no pass";
    }
    EXPECT_THAT(names, testing::Contains("GeneralSetupVisitor").Times(1));
    EXPECT_FALSE(static_cast<bool>(renderer.engine().passTimeSink)) << "taken back";
}

} // namespace
