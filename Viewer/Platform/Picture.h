#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sgview {

/// Pixels: width and height, 1 to `largestSide` each, `mostPixels` in all.
struct PictureSize {
    static constexpr int largestSide = 65536;
    static constexpr std::int64_t mostPixels = std::int64_t{1} << 28;

    int width = 1024;
    int height = 768;

    constexpr bool operator==(PictureSize const&) const = default;
};

/// A drawn frame: RGBA, a byte a component, top row first, rows without padding.
struct Picture {
    explicit Picture(PictureSize size_)
        : size(size_),
          pixels(std::size_t{4} * static_cast<std::size_t>(size_.width) *
                 static_cast<std::size_t>(size_.height))
    {
    }

    PictureSize size;
    std::vector<std::uint8_t> pixels;
};

} // namespace sgview
