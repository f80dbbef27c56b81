#include "Viewer/Import/Normals.h"

#include "Maths/UVector3.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <unordered_map>

namespace sgview {

namespace {

/// With more facets than this around one place, creases are not looked for: the effort grows as the square.
constexpr std::size_t mostFacetsAtCrease = 64;

std::size_t at(std::int32_t index)
{
    return static_cast<std::size_t>(index);
}

struct PlaceHash {
    std::size_t operator()(Vector3 const& p) const
    {
        std::uint64_t hash = 0;
        for (double const value : {p.x, p.y, p.z}) {
            // Adding 0 makes both zeros one.
            hash = (hash ^ std::bit_cast<std::uint64_t>(value + 0.0)) * 0x9E3779B97F4A7C15ULL;
            hash ^= hash >> 29;
        }
        return static_cast<std::size_t>(hash);
    }
};

/// One vertex of one facet.
struct Corner {
    Vector3 facetNormal;
    double angle = 0.0;
};

double angleBetween(Vector3 const& a, Vector3 const& b)
{
    return std::atan2(length(cross(a, b)), dot(a, b));
}

std::vector<Corner> cornersOf(ModelSurface const& surface)
{
    std::vector<Corner> corners(surface.facets.size());
    for (std::size_t f = 0; f + 2 < corners.size(); f += 3) {
        std::array<Vector3, 3> p;
        for (std::size_t k = 0; k < 3; ++k)
            p[k] = surface.positions[at(surface.facets[f + k])];
        Vector3 const normal = UVector3(cross(UVector3(p[1] - p[0]), UVector3(p[2] - p[0])));
        for (std::size_t k = 0; k < 3; ++k)
            corners[f + k] = {normal, angleBetween(p[(k + 1) % 3] - p[k], p[(k + 2) % 3] - p[k])};
    }
    return corners;
}

/// For every place, the corners that meet there.
std::vector<std::vector<std::size_t>> cornersByPlace(ModelSurface const& surface,
                                                     std::vector<std::size_t>& placeOfCorner)
{
    std::unordered_map<Vector3, std::size_t, PlaceHash> places;
    std::vector<std::vector<std::size_t>> corners;
    placeOfCorner.resize(surface.facets.size());
    for (std::size_t c = 0; c < surface.facets.size(); ++c) {
        auto const [entry, isNew] =
            places.try_emplace(surface.positions[at(surface.facets[c])], corners.size());
        if (isNew)
            corners.emplace_back();
        corners[entry->second].push_back(c);
        placeOfCorner[c] = entry->second;
    }
    return corners;
}

Vector3 meanNormal(std::vector<Corner> const& corners, std::vector<std::size_t> const& around,
                   Vector3 const& facetNormal, double creaseCosine)
{
    bool const all = around.size() > mostFacetsAtCrease && creaseCosine < 1.0;
    Vector3 sum;
    for (std::size_t const c : around)
        if (all || dot(corners[c].facetNormal, facetNormal) >= creaseCosine)
            sum += corners[c].angle * corners[c].facetNormal;
    return UVector3(sum);
}

/// The z axis for what has no direction, so that every normal has length 1.
Vector3 orSomeDirection(Vector3 const& normal)
{
    return normal == Vector3() ? Vector3(0.0, 0.0, 1.0) : normal;
}

template <typename T>
void take(std::vector<T>& list, std::vector<std::int32_t> const& sources)
{
    if (list.empty())
        return;
    std::vector<T> taken;
    taken.reserve(sources.size());
    for (std::int32_t const source : sources)
        taken.push_back(list[at(source)]);
    list = std::move(taken);
}

void takeInfluences(ModelSurface& surface, std::vector<std::int32_t> const& sources)
{
    if (surface.influenceOffsets.empty())
        return;
    std::vector<std::int32_t> offsets{0};
    std::vector<ModelInfluence> influences;
    for (std::int32_t const source : sources) {
        auto const first = surface.influences.begin() + surface.influenceOffsets[at(source)];
        auto const last = surface.influences.begin() + surface.influenceOffsets[at(source) + 1];
        influences.insert(influences.end(), first, last);
        offsets.push_back(static_cast<std::int32_t>(influences.size()));
    }
    surface.influenceOffsets = std::move(offsets);
    surface.influences = std::move(influences);
}

} // namespace

void takeVertices(ModelSurface& surface, std::vector<std::int32_t> const& sources)
{
    take(surface.positions, sources);
    take(surface.normals, sources);
    for (auto& set : surface.coordinates)
        take(set, sources);
    takeInfluences(surface, sources);
}

void makeNormals(ModelSurface& surface, double creaseCosine)
{
    std::vector<Corner> const corners = cornersOf(surface);
    std::vector<std::size_t> placeOfCorner;
    auto const around = cornersByPlace(surface, placeOfCorner);

    // The vertices that each old vertex becomes: as many as it has different normals.
    std::vector<std::vector<std::int32_t>> successors(surface.positions.size());
    std::vector<std::int32_t> sources;
    std::vector<Vector3> normals;
    for (std::size_t c = 0; c < surface.facets.size(); ++c) {
        std::int32_t& vertex = surface.facets[c];
        Vector3 const normal = orSomeDirection(
            meanNormal(corners, around[placeOfCorner[c]], corners[c].facetNormal, creaseCosine));
        std::vector<std::int32_t>& known = successors[at(vertex)];
        constexpr double same = 1.0 - 1e-9;
        auto const found = std::ranges::find_if(
            known, [&](std::int32_t candidate) { return dot(normals[at(candidate)], normal) > same; });
        if (found != known.end()) {
            vertex = *found;
            continue;
        }
        auto const fresh = static_cast<std::int32_t>(sources.size());
        if (known.size() < mostFacetsAtCrease)
            known.push_back(fresh);
        sources.push_back(vertex);
        normals.push_back(normal);
        vertex = fresh;
    }
    surface.normals.clear();
    takeVertices(surface, sources);
    surface.normals = std::move(normals);
}

std::size_t repairNormals(ModelSurface& surface)
{
    std::vector<std::size_t> broken;
    for (std::size_t v = 0; v < surface.normals.size(); ++v) {
        surface.normals[v] = isFinite(surface.normals[v]) ? UVector3(surface.normals[v]) : Vector3();
        if (surface.normals[v] == Vector3())
            broken.push_back(v);
    }
    if (broken.empty())
        return 0;

    std::vector<Corner> const corners = cornersOf(surface);
    std::vector<Vector3> sums(surface.positions.size());
    for (std::size_t c = 0; c < corners.size(); ++c)
        sums[at(surface.facets[c])] += corners[c].angle * corners[c].facetNormal;
    for (std::size_t const v : broken)
        surface.normals[v] = orSomeDirection(UVector3(sums[v]));
    return broken.size();
}

bool turnOpposedNormals(ModelSurface& surface)
{
    std::ptrdiff_t balance = 0;
    for (std::size_t f = 0; f + 2 < surface.facets.size(); f += 3) {
        auto const [a, b, c] =
            std::array{at(surface.facets[f]), at(surface.facets[f + 1]), at(surface.facets[f + 2])};
        std::vector<Vector3> const& p = surface.positions;
        Vector3 const mean = surface.normals[a] + surface.normals[b] + surface.normals[c];
        double const agreement = dot(cross(p[b] - p[a], p[c] - p[a]), mean);
        balance += agreement > 0.0 ? 1 : agreement < 0.0 ? -1 : 0;
    }
    if (balance >= 0)
        return false;
    for (Vector3& normal : surface.normals)
        normal = -normal;
    return true;
}

} // namespace sgview
