#pragma once

#include <cstddef>
#include <string>

namespace sgview {

/// "no nodes", "1 node", "2 nodes".
inline std::string counted(std::size_t count, std::string const& kind)
{
    return (count == 0 ? "no" : std::to_string(count)) + " " + kind + (count == 1 ? "" : "s");
}

} // namespace sgview
