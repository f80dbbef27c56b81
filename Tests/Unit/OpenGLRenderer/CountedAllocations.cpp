#include "Tests/Unit/OpenGLRenderer/CountedAllocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t counted = 0;
std::size_t countedBytes = 0;

void* allocate(std::size_t size) noexcept
{
    ++counted;
    countedBytes += size;
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

std::size_t CountedAllocations::count()
{
    return counted;
}

std::size_t CountedAllocations::bytes()
{
    return countedBytes;
}

void* operator new(std::size_t size)
{
    if (void* const memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
