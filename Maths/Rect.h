#pragma once

namespace quarl {

/// An axis-aligned rectangle: lower left corner and size.
template <typename T>
struct Rect {
    T x{};
    T y{};
    T width{};
    T height{};

    constexpr bool operator==(Rect const&) const = default;
};

} // namespace quarl
