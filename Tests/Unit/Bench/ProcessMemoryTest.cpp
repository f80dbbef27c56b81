#include "Viewer/Bench/ProcessMemory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace sgview;

constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// Touches every page of fresh memory for the first time.
void touchFresh(std::size_t pages)
{
    auto const pageSize = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    std::size_t const size = pages * pageSize;
    void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    ::madvise(memory, size, MADV_NOHUGEPAGE);
    for (std::size_t i = 0; i < pages; ++i)
        static_cast<char volatile*>(memory)[i * pageSize] = 1;
    ::munmap(memory, size);
}

TEST(ProcessMemory, CountsPageFaults)
{
    std::int64_t const before = pageFaultCount();
    touchFresh(1000);
    std::int64_t const faults = pageFaultCount() - before;
    EXPECT_GE(faults, 1000);
    EXPECT_LE(faults, 1300) << "a sanitizer notes each page, too";
}

TEST(ProcessMemory, PeakStaysWhereItWas)
{
    std::int64_t const before = peakMemory();
    EXPECT_GT(before, static_cast<std::int64_t>(mebibyte));
    touchFresh(64 * mebibyte / static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)));
    std::int64_t const after = peakMemory();
    EXPECT_GE(after, before + static_cast<std::int64_t>(50 * mebibyte));
    EXPECT_LE(after, before + static_cast<std::int64_t>(80 * mebibyte));
}

TEST(ProcessMemory, KeptMemoryIsTouchedBeforehand)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has an allocator of its own";
#endif
    keepMemory(64 * mebibyte);
    std::size_t const inUse = heapInUse();
    std::int64_t const before = pageFaultCount();
    {
        std::unique_ptr<void, decltype(&std::free)> const block(std::malloc(30 * mebibyte), &std::free);
        std::memset(block.get(), 1, 30 * mebibyte);
        EXPECT_GE(heapInUse(), inUse + 30 * mebibyte);
        EXPECT_LE(heapInUse(), inUse + 31 * mebibyte);
    }
    std::unique_ptr<void, decltype(&std::free)> const again(std::malloc(25 * mebibyte), &std::free);
    std::memset(again.get(), 1, 25 * mebibyte);
    EXPECT_LE(pageFaultCount() - before, 10);
}

TEST(ProcessMemory, KeepsNoMoreThanIsSensible)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has memory of its own beside it";
#endif
    keepMemory(static_cast<std::size_t>(-1));
    EXPECT_LT(peakMemory(), std::int64_t{2200} * static_cast<std::int64_t>(mebibyte));
}

TEST(ProcessMemory, KnowsWhenDrawingIsDiscarded)
{
    ::unsetenv("GALLIUM_NOOP");
    EXPECT_FALSE(isDrawingDiscarded());
    for (char const* const no : {"0", "n", "no", "False", "F"}) {
        ::setenv("GALLIUM_NOOP", no, 1);
        EXPECT_FALSE(isDrawingDiscarded()) << no;
    }
    for (char const* const yes : {"1", "yes", "true"}) {
        ::setenv("GALLIUM_NOOP", yes, 1);
        EXPECT_TRUE(isDrawingDiscarded()) << yes;
    }
}

} // namespace
