#include "Benchmarks/Kernels/Kernels.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "SceneGraph/SGSharedData.h"

#include <array>
#include <map>

// The record that a pass looks up on each object it draws, among as many as a surface's geometry carries.

namespace {

using Floats = FloatData<float>;

void extraDataLookup(benchmark::State& state)
{
    SharedGeometry object;
    auto const wanted = make_smart<Floats>();
    object.setExtraData(ExtraDataKeys::vbo, make_smart<Floats>());
    object.setExtraData(ExtraDataKeys::noVBO, make_smart<FloatData<int>>());
    object.setExtraData(ExtraDataKeys::floats, wanted);
    Floats const* found = nullptr;
    for (auto _ : state) {
        found = findExtraData<Floats>(object, ExtraDataKeys::floats);
        benchmark::DoNotOptimize(found);
    }
    require(state, found == wanted.get() && !findExtraData<Floats>(object, ExtraDataKeys::noVBO));
    countItems(state, 1);
}
BENCHMARK(extraDataLookup);

/// Three pointers that are searched by an address: nothing that looks up can be faster.
void plainLookup(benchmark::State& state)
{
    std::array<Floats, 3> const records;
    std::array<std::pair<void const*, Floats const*>, 3> table{{{&ExtraDataKeys::vbo, &records[0]},
                                                                {&ExtraDataKeys::noVBO, &records[1]},
                                                                {&ExtraDataKeys::floats, &records[2]}}};
    Floats const* found = nullptr;
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.data());
        for (auto const& [key, record] : table)
            if (key == &ExtraDataKeys::floats)
                found = record;
        benchmark::DoNotOptimize(found);
    }
    require(state, found == &records[2]);
    countItems(state, 1);
}
BENCHMARK(plainLookup);

} // namespace
