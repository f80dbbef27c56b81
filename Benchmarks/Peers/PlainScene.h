#pragma once

#include "Benchmarks/Peers/Peer.h"
#include "Maths/Transform.h"
#include "Viewer/Bench/SceneShapes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// The scenes of `sgview bench` as plain numbers, for whatever draws them.

/// Triangles, by arrays of their own.
struct PlainMesh {
    std::vector<std::array<float, 3>> positions;
    std::vector<std::array<float, 3>> normals;
    std::vector<std::array<float, 2>> coordinates; ///< of textures; those of sheets
    std::vector<std::uint16_t> indices;
};

/// What the surfaces of a scene share.
[[nodiscard]] PlainMesh meshOf(PeerScene const& scene);

/// Vertices of a skinned sheet, a side, and the second bone's hold on each of them, row by row.
inline constexpr int sheetVertices = 100;
[[nodiscard]] std::vector<double> secondWeights(sgview::BenchSceneKind kind);

/// A camera that looks down -z and takes in 45 degrees, at whose distance all is in view.
struct PlainView {
    Vector3 eye;
    double near;
    double far;
};
[[nodiscard]] PlainView viewOf(PeerScene const& scene);

/// Towards the only light, white and without specular parts. Ambient light is 0.2.
inline constexpr Vector3 towardsLight{0.3, 0.4, 1.0};
inline constexpr float ambientLight = 0.2F;

/// Where the surfaces of a grid or of a skinned scene stand.
[[nodiscard]] std::vector<Vector3> placesOf(PeerScene const& scene);
/// And how far one of them is turned about the y axis, radians.
[[nodiscard]] double turnOf(PeerScene const& scene, std::size_t surface, int frame);

/// From a level of the chain to the next.
[[nodiscard]] Transform stepOf(PeerScene const& scene, std::size_t level, int frame);

/// Pictures of the textured scene: 64 by 64, RGBA, row by row; and those of a surface's two layers.
inline constexpr std::size_t pictureCount = 16;
inline constexpr int pictureSide = 64;
[[nodiscard]] std::vector<std::uint8_t> pictureBytes(std::size_t number);
[[nodiscard]] constexpr std::array<std::size_t, 2> picturesOf(std::size_t surface)
{
    return {surface % pictureCount, (surface + 5) % pictureCount};
}

/// A colour of its own for every surface.
[[nodiscard]] inline std::array<float, 4> plainColor(std::size_t surface)
{
    Color const color = sgview::colorOf(static_cast<int>(surface));
    return {color.r, color.g, color.b, color.a};
}
