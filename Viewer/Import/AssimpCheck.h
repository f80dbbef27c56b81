#pragma once

#include <string>

struct aiScene;

namespace sgview {

/// Checks what Assimp read before Assimp's own further steps work on it: these follow every pointer and
/// index, and its own validation refuses what does no harm here, such as lights without nodes.
///
/// \return what is wrong; empty if nothing is
[[nodiscard]] std::string faultOf(aiScene const& scene);

} // namespace sgview
