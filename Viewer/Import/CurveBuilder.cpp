#include "Viewer/Import/CurveBuilder.h"

#include <map>
#include <tuple>

namespace sgview {

namespace {

/// Places and the segments that meet there.
struct Net {
    std::vector<Vector3> places;
    std::vector<std::array<std::size_t, 2>> segments;
    std::vector<std::vector<std::size_t>> segmentsAt;
    std::vector<bool> used;
};

Net makeNet(std::vector<Vector3> const& positions, std::vector<std::array<std::int32_t, 2>> const& segments)
{
    Net net;
    std::map<std::tuple<double, double, double>, std::size_t> known;
    auto const placeOf = [&](std::int32_t vertex) {
        Vector3 const& p = positions[static_cast<std::size_t>(vertex)];
        auto const [entry, isNew] = known.try_emplace({p.x, p.y, p.z}, net.places.size());
        if (isNew) {
            net.places.push_back(p);
            net.segmentsAt.emplace_back();
        }
        return entry->second;
    };
    auto const isBroken = [&](std::int32_t vertex) {
        return vertex < 0 || static_cast<std::size_t>(vertex) >= positions.size() ||
               !isFinite(positions[static_cast<std::size_t>(vertex)]);
    };
    for (auto const& [a, b] : segments) {
        if (isBroken(a) || isBroken(b))
            continue;
        std::size_t const from = placeOf(a);
        std::size_t const to = placeOf(b);
        if (from == to)
            continue;
        net.segmentsAt[from].push_back(net.segments.size());
        net.segmentsAt[to].push_back(net.segments.size());
        net.segments.push_back({from, to});
    }
    net.used.assign(net.segments.size(), false);
    return net;
}

/// Follows unused segments from `start` by way of `segment` until the line ends.
ModelCurve follow(Net& net, std::size_t start, std::size_t segment)
{
    ModelCurve curve;
    curve.positions.push_back(net.places[start]);
    std::size_t place = start;
    while (true) {
        net.used[segment] = true;
        auto const [from, to] = net.segments[segment];
        place = place == from ? to : from;
        if (place == start) {
            curve.closed = curve.positions.size() > 2;
            if (!curve.closed)
                curve.positions.push_back(net.places[place]);
            return curve;
        }
        curve.positions.push_back(net.places[place]);
        std::vector<std::size_t> const& meeting = net.segmentsAt[place];
        if (meeting.size() != 2)
            return curve;
        segment = meeting[0] == segment ? meeting[1] : meeting[0];
        if (net.used[segment])
            return curve;
    }
}

} // namespace

std::vector<ModelCurve> buildCurves(std::vector<Vector3> const& positions,
                                    std::vector<std::array<std::int32_t, 2>> const& segments)
{
    Net net = makeNet(positions, segments);
    std::vector<ModelCurve> curves;
    auto const followAllFrom = [&](std::size_t place) {
        for (std::size_t const segment : net.segmentsAt[place])
            if (!net.used[segment])
                curves.push_back(follow(net, place, segment));
    };
    for (std::size_t place = 0; place < net.places.size(); ++place)
        if (net.segmentsAt[place].size() != 2)
            followAllFrom(place);
    // What is left are rings; their first segment says where they begin.
    for (std::size_t segment = 0; segment < net.segments.size(); ++segment)
        if (!net.used[segment])
            curves.push_back(follow(net, net.segments[segment][0], segment));
    return curves;
}

} // namespace sgview
