#pragma once

#include "Utilities/smart_ptr.h"

#include <cstddef>
#include <span>
#include <vector>

/// A picture of 8 bits a component, RGB or RGBA, ready for upload: each row is padded to a multiple of 4
/// bytes, OpenGL's default unpack alignment.
class Image_base : public smart_base {
public:
    enum Format : int {
        RGB = 0,
        RGBA = 1,
    };

    /// A black picture; every alpha is 0.
    /// Throws std::invalid_argument unless both sides are 1 to 16,384.
    Image_base(int width, int height, Format format = RGB);

    [[nodiscard]] int getWidth() const { return width_; }
    [[nodiscard]] int getHeight() const { return height_; }
    [[nodiscard]] Format getFormat() const { return format_; }

    /// 3 or 4.
    [[nodiscard]] int getNumComponents() const { return format_ == RGBA ? 4 : 3; }

    /// Bytes from one row to the next, padding included.
    [[nodiscard]] std::size_t getRowSize() const;

    /// The first byte of the first row; rows follow one another, getRowSize() apart.
    [[nodiscard]] unsigned char const* getData() const { return data_.data(); }
    [[nodiscard]] std::span<unsigned char> edit() { return data_; }

    /// Becomes the source, tinted; takes on the source's size and format.
    ///
    /// A pixel's lightness is Y = (77 R + 150 G + 29 B) / 256, rounded down (ITU-R BT.601 luma in 8 bits).
    /// Each component of the result is the straight mix first + (second - first) * Y / 255, rounded to
    /// nearest: black becomes the first colour and white the second. Alpha is kept. An image can be its own
    /// source.
    void colorizeFrom(Image_base const* source, unsigned char r1, unsigned char g1, unsigned char b1,
                      unsigned char r2, unsigned char g2, unsigned char b2);

private:
    int width_;
    int height_;
    Format format_;
    std::vector<unsigned char> data_;
};
