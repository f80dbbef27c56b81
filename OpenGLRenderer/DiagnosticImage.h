#pragma once

#include <vector>

/// The pictures by which the graphics diagnostic judges: 512 rows of 512 pixels, the bottom row first, a byte
/// each of red, green, blue and alpha.
namespace Diagnostic {

inline constexpr int testImageSide = 512; ///< pixels

/// The lower left corner of the drawable, which is shown to the host as well.
[[nodiscard]] std::vector<unsigned char> readTestImage();

/// Whether a picture has the right size, and more than 1% each of white and of other pixels. The scene stands
/// before white: anything else was not drawn, or not read back.
[[nodiscard]] bool isTestImageOK(std::vector<unsigned char> const& image);

/// Whether less than 1% of the pixels mismatch. Pictures of any other size are never the same.
[[nodiscard]] bool areTestImagesSame(std::vector<unsigned char> const& a,
                                     std::vector<unsigned char> const& b);

/// The squared distance of two pixels of four bytes. They mismatch at 101 or more.
[[nodiscard]] int diffSq4(unsigned char const* a, unsigned char const* b);

} // namespace Diagnostic
