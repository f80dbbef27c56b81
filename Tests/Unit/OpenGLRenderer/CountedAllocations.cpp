#include "Tests/Unit/OpenGLRenderer/CountedAllocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t counted = 0;
std::size_t countedBytes = 0;

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
    ++counted;
    countedBytes += size;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
