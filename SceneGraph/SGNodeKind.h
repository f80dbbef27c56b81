#pragma once

#include <cstdint>

/// The kinds of nodes that visitors tell apart.
enum class SGNodeKind : std::uint8_t {
    other, ///< a class of a host's own that is none of the rest
    root,
    orderedGroup,
    camera,
    lights,
    transform,
    zTransform,
    geometry,
    quad,
    geometryReference,
    surface,
    curve,
};

inline constexpr int nodeKindCount = 12;
