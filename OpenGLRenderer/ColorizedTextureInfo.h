#pragma once

#include "SceneGraph/SGSharedData.h"
#include "Utilities/Color.h"

#include <cstdint>

/// Which picture is tinted, and how.
struct ColorizedTextureInfo {
    smart_ptr<SharedImage> texture; ///< compared by identity
    Color colorA;                   ///< the layer's second colour
    Color colorB;                   ///< the layer's first colour

    bool operator==(ColorizedTextureInfo const&) const = default;
};

/// 255 times the component, rounded towards zero: 0 to 255 for 0 to 1, and not cut to a byte outside that.
/// What does not fit 32 bits, NaN too, gives the smallest integer.
[[nodiscard]] std::int32_t scaledComponent(float component);

/// P(colorA) + address + 3 P(colorB) in wrapping 32-bit arithmetic, where P packs a colour's scaled
/// components as alpha, red, green and blue bytes, a component that exceeds its byte spilling into those
/// above.
template <>
struct std::hash<ColorizedTextureInfo> {
    std::size_t operator()(ColorizedTextureInfo const& info) const noexcept;
};
