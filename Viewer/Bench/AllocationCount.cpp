#include "Viewer/Bench/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::int64_t count = 0; // one of a thread: counting must cost next to nothing

void* counted(void* block)
{
    ++count;
    return block;
}

void* required(void* block)
{
    if (!block)
        throw std::bad_alloc();
    return block;
}

void* allocate(std::size_t size)
{
    return counted(std::malloc(size > 0 ? size : 1));
}

void* allocate(std::size_t size, std::align_val_t alignment)
{
    auto const step = static_cast<std::size_t>(alignment);
    std::size_t const padded = (size + step - 1) / step * step;
    return padded < size ? nullptr : counted(std::aligned_alloc(step, padded > 0 ? padded : step));
}

} // namespace

std::int64_t sgview::allocationCount()
{
    return count;
}

// Array forms end in these, in GCC's standard library.
void* operator new(std::size_t size)
{
    return required(allocate(size));
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return required(allocate(size, alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept
{
    return allocate(size, alignment);
}
void operator delete(void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    std::free(block);
}
