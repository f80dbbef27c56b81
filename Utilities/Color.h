#pragma once

/// A colour as OpenGL takes it: red, green, blue and opacity, 0 to 1 each.
struct Color {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 1.0F;

    /// The four components in a row.
    [[nodiscard]] constexpr float const* data() const { return &r; }

    constexpr bool operator==(Color const&) const = default;
};

static_assert(sizeof(Color) == 4 * sizeof(float));
