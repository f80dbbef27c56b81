#pragma once

#include "Viewer/Import/LocalMap.h"
#include "Viewer/Import/Model.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace sgview {

[[nodiscard]] inline bool isUsableKey(Vector3 const& value)
{
    return isFinite(value);
}
[[nodiscard]] inline bool isUsableKey(Quaternion const& value)
{
    return hasDirection(value);
}

/// Whether a key's tangent is finite; unlike a rotation itself it may be 0.
[[nodiscard]] inline bool isUsableTangent(Vector3 const& value)
{
    return isFinite(value);
}
[[nodiscard]] inline bool isUsableTangent(Quaternion const& value)
{
    return std::isfinite(value.x) && std::isfinite(value.y) && std::isfinite(value.z) &&
           std::isfinite(value.w);
}

/// Brings keys into strictly ascending order; of several at one time the last counts. Drops keys beyond the
/// shorter of times and values.
/// \return false, and an empty track, if there are no keys, a time is negative, or anything is not finite
template <typename T>
bool tidyTrack(ModelTrack<T>& track)
{
    bool const cubic = track.interpolation == Interpolation::cubic;
    std::size_t const valuesAKey = cubic ? 3 : 1;
    std::size_t const keys = std::min(track.times.size(), track.values.size() / valuesAKey);
    auto const isBroken = [&](std::size_t key) {
        T const* const values = track.values.data() + key * valuesAKey;
        return !std::isfinite(track.times[key]) || track.times[key] < 0.0 ||
               !isUsableKey(values[cubic ? 1 : 0]) ||
               (cubic && !(isUsableTangent(values[0]) && isUsableTangent(values[2])));
    };
    std::vector<std::size_t> order(keys);
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (keys == 0 || std::ranges::any_of(order, isBroken)) {
        track = {};
        return false;
    }
    std::ranges::stable_sort(order, {}, [&](std::size_t key) { return track.times[key]; });

    ModelTrack<T> tidy{track.interpolation, {}, {}};
    for (std::size_t const key : order) {
        if (!tidy.times.empty() && tidy.times.back() == track.times[key]) {
            tidy.times.pop_back();
            tidy.values.resize(tidy.values.size() - valuesAKey);
        }
        tidy.times.push_back(track.times[key]);
        auto const first = track.values.begin() + static_cast<std::ptrdiff_t>(key * valuesAKey);
        tidy.values.insert(tidy.values.end(), first, first + static_cast<std::ptrdiff_t>(valuesAKey));
    }
    track = std::move(tidy);
    return true;
}

/// The last key's time of any track.
[[nodiscard]] inline double lengthOf(ModelAnimation const& animation)
{
    double length = 0.0;
    for (ModelChannel const& channel : animation.channels)
        for (auto const* times : {&channel.translation.times, &channel.rotation.times, &channel.scale.times})
            if (!times->empty())
                length = std::max(length, times->back());
    return length;
}

} // namespace sgview
