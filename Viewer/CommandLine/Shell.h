#pragma once

#include <array>
#include <string_view>

namespace sgview {

enum class Shell { bash, zsh, fish };

inline constexpr std::array<Shell, 3> allShells{Shell::bash, Shell::zsh, Shell::fish};

/// As a person types it: "bash".
[[nodiscard]] constexpr std::string_view nameOf(Shell shell)
{
    switch (shell) {
    case Shell::bash:
        return "bash";
    case Shell::zsh:
        return "zsh";
    case Shell::fish:
        return "fish";
    }
    return {};
}

} // namespace sgview
