#pragma once

#include <benchmark/benchmark.h>

/// Ends a benchmark, and the whole program with status 1, unless its answer is right.
void require(benchmark::State& state, bool right);

/// States how many things one iteration goes through: the report then says how many that makes a second.
inline void countItems(benchmark::State& state, std::size_t items)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
}
