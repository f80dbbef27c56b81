#include "Benchmarks/Kernels/Kernels.h"
#include "OpenGLRenderer/ManualTriangleFlipper.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Bench/SceneShapes.h"

// A mirrored sheet of 100 by 100 vertices whose triangles are turned round for the first time.

namespace {

using Indices = std::vector<std::int32_t>;

void flipPlainly(Indices const& facets, Indices& flipped)
{
    for (std::size_t i = 0; i < facets.size(); i += 3) {
        flipped[i] = facets[i + 1];
        flipped[i + 1] = facets[i];
        flipped[i + 2] = facets[i + 2];
    }
}

/// Every triangle has its corners, the other way round.
bool isFlipped(Indices const& flipped, Indices const& facets)
{
    if (flipped.size() != facets.size())
        return false;
    for (std::size_t i = 0; i < facets.size(); i += 3) {
        bool turned = false;
        for (std::size_t first = 0; first < 3; ++first)
            turned =
                turned || (flipped[i] == facets[i + first] && flipped[i + 1] == facets[i + (first + 2) % 3] &&
                           flipped[i + 2] == facets[i + (first + 1) % 3]);
        if (!turned)
            return false;
    }
    return true;
}

sgview::SceneShape sheet()
{
    return sgview::makeSheet(100, 0.9);
}

void flipping(benchmark::State& state)
{
    auto const root = make_smart<SGRootNode>();
    auto const mirror = make_smart<SGTransformNode>(root);
    mirror->transform = {Matrix3(), Vector3(), -1.0};
    auto const shape = sheet();
    auto const surface = shape.addSurface(mirror, Color());
    ManualTriangleFlipper flipper(false);
    ManualTriangleUnFlipper undo;
    Indices const& facets = shape.facets->get()->facets;
    auto const flip = [&] {
        root->clearExtraData(); // or the copy of the last time would be found
        root->acceptEnter(&flipper);
        mirror->acceptEnter(&flipper);
        surface->acceptEnter(&flipper);
        mirror->acceptLeave(&flipper);
        root->acceptLeave(&flipper);
    };
    for (auto _ : state) {
        flip();
        surface->acceptEnter(&undo);
    }
    flip();
    require(state, isFlipped(surface->getFacets()->get()->facets, facets));
    countItems(state, facets.size() / 3);
}
BENCHMARK(flipping);

void plainFlipping(benchmark::State& state)
{
    auto const shape = sheet();
    Indices const& facets = shape.facets->get()->facets;
    Indices flipped(facets.size());
    for (auto _ : state) {
        flipPlainly(facets, flipped);
        benchmark::ClobberMemory();
    }
    require(state, isFlipped(flipped, facets));
    countItems(state, facets.size() / 3);
}
BENCHMARK(plainFlipping);

} // namespace
