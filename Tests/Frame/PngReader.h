#pragma once

#include "Viewer/Platform/Picture.h"

#include <filesystem>

/// Reads a PNG file. Throws std::runtime_error, which names the file.
[[nodiscard]] sgview::Picture readPng(std::filesystem::path const& file);
