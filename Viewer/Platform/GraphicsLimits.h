#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sgview {

/// What an OpenGL driver says of itself.
struct GraphicsReport {
    std::string vendor;
    std::string renderer;
    std::string version;
    std::string shadingLanguage;                                  ///< its version; empty where there is none
    std::vector<std::pair<std::string_view, bool>> extensions;    ///< those that matter to the renderer
    std::vector<std::pair<std::string_view, std::string>> limits; ///< in words: "16384 x 16384 pixels"
};

/// Asks the current context.
[[nodiscard]] GraphicsReport askGraphics();

} // namespace sgview
