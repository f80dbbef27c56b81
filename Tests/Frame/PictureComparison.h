#pragma once

#include "Viewer/Platform/Picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ostream>
#include <string>

/// A pixel's red, green and blue.
struct Rgb {
    int r = 0;
    int g = 0;
    int b = 0;

    bool operator==(Rgb const&) const = default;
};
std::ostream& operator<<(std::ostream& stream, Rgb const& pixel);

[[nodiscard]] int squaredDistance(Rgb const& a, Rgb const& b);

/// The pixel of column x and row y, from the upper left corner.
[[nodiscard]] Rgb pixelAt(sgview::Picture const& picture, int x, int y);

/// How many pixels of two pictures of one size are further apart than a squared distance of 100.
[[nodiscard]] std::size_t countMismatches(sgview::Picture const& a, sgview::Picture const& b);

/// The squared distance of the two pixels of one place that are furthest apart.
[[nodiscard]] int largestSquaredDistance(sgview::Picture const& a, sgview::Picture const& b);

/// Whether a pixel is the expected one, but for what rounding does to each component.
[[nodiscard]] testing::AssertionResult showsAt(sgview::Picture const& picture, int x, int y,
                                               Rgb const& expected);

/// Whether no pixel of two pictures mismatches. Where one does, both pictures and their difference are left
/// as PNG files, which the message names.
[[nodiscard]] testing::AssertionResult looksLike(sgview::Picture const& picture,
                                                 sgview::Picture const& expected, std::string const& name);

/// Whether two pictures are the same, byte for byte; leaves them like looksLike().
[[nodiscard]] testing::AssertionResult isSame(sgview::Picture const& picture, sgview::Picture const& expected,
                                              std::string const& name);

/// Whether no more pixels than `tolerated` mismatch and all others differ by 2 of 255 at most; leaves them
/// like looksLike().
[[nodiscard]] testing::AssertionResult differsLittle(sgview::Picture const& picture,
                                                     sgview::Picture const& expected, std::size_t tolerated,
                                                     std::string const& name);

/// What of a stored picture another driver may draw otherwise.
enum class Allowed {
    edges, ///< one pixel in a thousand, where an edge is rounded otherwise
    lines, ///< also where each pixel is found, either way round, one pixel away at most: lines have no exact
           ///< place
};

/// Whether a picture agrees with the stored one of a name.
[[nodiscard]] testing::AssertionResult
looksLikeReference(sgview::Picture const& picture, std::string const& name, Allowed allowed = Allowed::edges);
