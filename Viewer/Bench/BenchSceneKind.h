#pragma once

#include "Viewer/Bench/BenchScene.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace sgview {

/// The scenes that there are.
enum class BenchSceneKind {
    many,          ///< surfaces that share one cube of 24 vertices, a transform and a colour each
    textured,      ///< surfaces that share one sheet of 20 by 20 vertices, two of 16 pictures on each
    skinned,       ///< sheets of 100 by 100 vertices that two bones bend; weights vary by columns
    skinnedVaried, ///< the same with another weight at every vertex
    deep,          ///< transforms nested in one another, a cube at every tenth
};

inline constexpr std::array<BenchSceneKind, 5> allBenchScenes{
    BenchSceneKind::many, BenchSceneKind::textured, BenchSceneKind::skinned, BenchSceneKind::skinnedVaried,
    BenchSceneKind::deep};

/// As a person types it: "skinned-varied".
[[nodiscard]] std::string_view nameOf(BenchSceneKind kind);
[[nodiscard]] std::optional<BenchSceneKind> benchSceneNamed(std::string_view name);

/// What a scene's count counts: "surfaces".
[[nodiscard]] std::string_view thingsIn(BenchSceneKind kind);

/// How many surfaces, or levels, a scene has where nothing else is asked for, and the most that make sense.
[[nodiscard]] int usualCount(BenchSceneKind kind);
[[nodiscard]] int mostOf(BenchSceneKind kind);

/// \param count   surfaces, or levels; 1 to `mostOf(kind)`
/// \param moving  every transform is set anew for each frame
[[nodiscard]] std::unique_ptr<BenchScene> makeBenchScene(BenchSceneKind kind, int count, bool moving);

} // namespace sgview
