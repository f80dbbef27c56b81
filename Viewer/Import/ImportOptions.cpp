#include "Viewer/Import/ImportOptions.h"

#include <unistd.h>

namespace sgview {

std::uint64_t machineMemory()
{
    return static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
           static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace sgview
