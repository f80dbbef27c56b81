#include "Tests/Unit/OpenGLRenderer/CountedAllocations.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

std::size_t counted = 0;
std::size_t countedBytes = 0;
std::size_t untilFailure = 0; ///< 0 where none is to fail
bool (*isSparedNow)() = nullptr;

void* allocate(std::size_t size) noexcept
{
    ++counted;
    countedBytes += size;
    if (untilFailure != 0 && !isSparedNow() && --untilFailure == 0)
        return nullptr;
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

void CountedAllocations::fail(std::size_t n, bool (*isSpared)())
{
    untilFailure = n;
    isSparedNow = isSpared;
}

bool CountedAllocations::stopFailing()
{
    return std::exchange(untilFailure, 0) != 0;
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
