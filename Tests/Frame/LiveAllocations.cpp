#include "Tests/Frame/LiveAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::int64_t> live{0};

void* allocate(std::size_t size)
{
    void* const block = std::malloc(size ? size : 1);
    if (!block)
        throw std::bad_alloc();
    ++live;
    return block;
}

void release(void* block)
{
    if (block)
        --live;
    std::free(block);
}

} // namespace

std::int64_t liveAllocations()
{
    return live;
}

// The array forms end in these, in the standard library of GCC.
void* operator new(std::size_t size)
{
    return allocate(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    try {
        return allocate(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
void operator delete(void* block) noexcept
{
    release(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    release(block);
}
