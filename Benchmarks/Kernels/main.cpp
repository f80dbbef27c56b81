#include "Benchmarks/Kernels/Kernels.h"
#include "Utilities/Log.h"

#include <cstdlib>

namespace {

bool allRight = true;

} // namespace

void require(benchmark::State& state, bool right)
{
    if (right)
        return;
    allRight = false;
    state.SkipWithError("the answer is wrong");
}

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    Log::getInstance().disableOthers(); // every channel: writing is not measured
    std::size_t const run = benchmark::RunSpecifiedBenchmarks();
    return run > 0 && allRight ? EXIT_SUCCESS : EXIT_FAILURE;
}
