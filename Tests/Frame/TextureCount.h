#pragma once

#include <cstddef>

/// How many textures the current context holds.
[[nodiscard]] std::size_t countTextures();
