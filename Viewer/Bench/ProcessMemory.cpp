#include "Viewer/Bench/ProcessMemory.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace sgview {

namespace {

rusage usage()
{
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    return used;
}

std::size_t sensible(std::size_t bytes)
{
    constexpr std::size_t most = std::size_t{1792} << 20; // glibc keeps 2000 MiB
    auto const spare = static_cast<std::size_t>(::sysconf(_SC_AVPHYS_PAGES)) *
                       static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return std::min({bytes, most, spare / 2});
}

} // namespace

std::int64_t peakMemory()
{
    // Not the figure of getrusage: a process starts that one with its parent's.
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::int64_t{1024} * std::atoll(line.c_str() + std::strlen("VmHWM:"));
    return 0;
}

std::int64_t pageFaultCount()
{
    rusage const used = usage();
    return used.ru_minflt + used.ru_majflt;
}

std::size_t heapInUse()
{
    auto const heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

void keepMemory(std::size_t bytes)
{
    constexpr std::size_t block = std::size_t{16} << 20;
    constexpr int everything = 2'000 << 20; // what glibc takes as a size is an int
    ::mallopt(M_MMAP_THRESHOLD, 2 * static_cast<int>(block));
    ::mallopt(M_TRIM_THRESHOLD, everything);
    ::mallopt(M_TOP_PAD, static_cast<int>(block));

    std::vector<void*> blocks((sensible(bytes) + block - 1) / block);
    for (void*& one : blocks) {
        one = std::malloc(block);
        if (one)
            std::memset(one, 1, block);
    }
    for (void* const one : blocks)
        std::free(one);
}

bool isDrawingDiscarded()
{
    char const* const value = std::getenv("GALLIUM_NOOP");
    if (!value)
        return false;
    constexpr std::array<char const*, 5> no{"0", "n", "no", "f", "false"};
    return std::ranges::none_of(no, [value](char const* word) { return ::strcasecmp(value, word) == 0; });
}

} // namespace sgview
