#include "Viewer/Import/SurfaceFinisher.h"

#include "Viewer/Import/Counted.h"
#include "Viewer/Import/Normals.h"

#include <cmath>

namespace sgview {

namespace {

constexpr double creaseCosineSharp = 0.5;
constexpr double creaseCosineEverywhere = 1.0 - 1e-9;

/// Beyond this, sums and products of positions would leave the range of the renderer's 32-bit floats.
constexpr double largestPosition = 1e18;

bool isUsable(Vector3 const& p)
{
    return std::abs(p.x) < largestPosition && std::abs(p.y) < largestPosition &&
           std::abs(p.z) < largestPosition;
}

/// Facets that can be drawn; the count of those left out for a vertex that is missing or not finite.
std::size_t dropBrokenFacets(ModelSurface& surface)
{
    auto const count = static_cast<std::int64_t>(surface.positions.size());
    auto const isBroken = [&](std::int32_t vertex) {
        return vertex < 0 || vertex >= count ||
               !isUsable(surface.positions[static_cast<std::size_t>(vertex)]);
    };
    std::vector<std::int32_t> kept;
    kept.reserve(surface.facets.size());
    std::size_t dropped = surface.facets.size() % 3 == 0 ? 0 : 1;
    for (std::size_t f = 0; f + 2 < surface.facets.size(); f += 3) {
        std::int32_t const a = surface.facets[f];
        std::int32_t const b = surface.facets[f + 1];
        std::int32_t const c = surface.facets[f + 2];
        if (isBroken(a) || isBroken(b) || isBroken(c))
            ++dropped;
        else if (a != b && b != c && c != a) // one that repeats a vertex only joins strips
            kept.insert(kept.end(), {a, b, c});
    }
    surface.facets = std::move(kept);
    return dropped;
}

void dropUnusedVertices(ModelSurface& surface)
{
    std::vector<std::int32_t> successor(surface.positions.size(), none);
    std::vector<std::int32_t> sources;
    for (std::int32_t& vertex : surface.facets) {
        std::int32_t& next = successor[static_cast<std::size_t>(vertex)];
        if (next == none) {
            next = static_cast<std::int32_t>(sources.size());
            sources.push_back(vertex);
        }
        vertex = next;
    }
    takeVertices(surface, sources);
}

void makeCoordinatesFinite(ModelSurface& surface)
{
    constexpr double largestCoordinate = 1e9;
    for (auto& set : surface.coordinates)
        for (auto& pair : set)
            for (double& value : pair)
                if (!(std::abs(value) < largestCoordinate))
                    value = 0.0;
}

} // namespace

void finishSurface(ModelSurface& surface, Crease crease, Warnings& warnings)
{
    if (std::size_t const dropped = dropBrokenFacets(surface); dropped > 0)
        warnings.add("surface '" + surface.name + "': " + counted(dropped, "facet") +
                     " left out, a vertex is missing or not finite");
    dropUnusedVertices(surface);
    makeCoordinatesFinite(surface);
    if (surface.normals.empty())
        makeNormals(surface, crease == Crease::sharp ? creaseCosineSharp : creaseCosineEverywhere);
    else if (std::size_t const replaced = repairNormals(surface); replaced > 0)
        warnings.add("surface '" + surface.name + "': " + counted(replaced, "normal") +
                     " without direction replaced");
}

} // namespace sgview
