// With OpenGLRenderer's own objects a renderer module that spends more memory on each frame than the real
// one, by the numbers that the environment variable SG_SPENDS has: "ALLOCATIONS,PAGES".

#include "Tests/Frame/Detour.h"
#include "Utilities/Strings.h"

#include <epoxy/gl.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace {

std::size_t numberOf(std::size_t place)
{
    char const* const text = std::getenv("SG_SPENDS");
    std::vector<std::string> const numbers = string_split(text ? text : "0,0", ',');
    return std::stoul(numbers.at(place));
}

std::size_t const allocations = numberOf(0);
std::size_t const pages = numberOf(1);

/// Spends when the frame is cleared, which it is once.
class SpendingDriver {
public:
    SpendingDriver() { driver = this; }

private:
    static void clear(GLbitfield mask)
    {
        for (std::size_t i = 0; i < allocations; ++i)
            driver->last_ = std::make_unique<std::size_t>(i);
        touchFreshPages();
        driver->clear_.real()(mask);
    }

    static void touchFreshPages()
    {
        if (pages == 0)
            return;
        auto const pageSize = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
        std::size_t const size = pages * pageSize;
        void* const memory =
            ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            return;
        ::madvise(memory, size, MADV_NOHUGEPAGE);
        for (std::size_t i = 0; i < size; i += pageSize)
            static_cast<char volatile*>(memory)[i] = 1;
        ::munmap(memory, size);
    }

    static SpendingDriver* driver;

    std::unique_ptr<std::size_t> last_;
    Detour<PFNGLCLEARPROC> clear_{"glClear", epoxy_glClear, &clear};
};

SpendingDriver* SpendingDriver::driver = nullptr;

SpendingDriver const spendingDriver;

} // namespace
