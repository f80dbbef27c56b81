#pragma once

#include <filesystem>

namespace sgview {

/// The file of the font that the user's system sets plain text in; empty where it has none.
[[nodiscard]] std::filesystem::path systemFont();

} // namespace sgview
