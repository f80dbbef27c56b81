#include "Viewer/Scene/Animation.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace sgview {

namespace {

Quaternion operator+(Quaternion const& a, Quaternion const& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w};
}

Quaternion operator*(Quaternion const& q, double s)
{
    return {q.x * s, q.y * s, q.z * s, q.w * s};
}

double dot(Quaternion const& a, Quaternion const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

Quaternion normalised(Quaternion const& q)
{
    double const length = std::sqrt(dot(q, q));
    return length > 0.0 && std::isfinite(length) ? q * (1.0 / length) : Quaternion();
}

Vector3 mix(Vector3 const& a, Vector3 const& b, double t)
{
    return a * (1.0 - t) + b * t;
}

/// Slerp along the shorter arc. Keys are unit length only to single precision, so they are made so first.
Quaternion mix(Quaternion const& start, Quaternion const& end, double t)
{
    Quaternion const a = normalised(start);
    Quaternion b = normalised(end);
    double cosine = dot(a, b);
    if (cosine < 0.0) {
        b = b * -1.0;
        cosine = -cosine;
    }
    // Nearly the same rotation: the sine would vanish, and the chord is as good as the arc.
    if (cosine > 1.0 - 1e-14)
        return a * (1.0 - t) + b * t;
    double const angle = std::acos(cosine);
    return (a * std::sin((1.0 - t) * angle) + b * std::sin(t * angle)) * (1.0 / std::sin(angle));
}

template <typename T>
T hermite(ModelTrack<T> const& track, std::size_t key, double span, double t)
{
    T const& start = track.values[3 * key + 1];
    T const& startTangent = track.values[3 * key + 2];
    T const& endTangent = track.values[3 * key + 3];
    T const& end = track.values[3 * key + 4];
    double const t2 = t * t;
    double const t3 = t2 * t;
    return start * (2.0 * t3 - 3.0 * t2 + 1.0) + startTangent * (span * (t3 - 2.0 * t2 + t)) +
           end * (3.0 * t2 - 2.0 * t3) + endTangent * (span * (t3 - t2));
}

template <typename T>
T sampleRaw(ModelTrack<T> const& track, double seconds)
{
    bool const cubic = track.interpolation == Interpolation::cubic;
    auto const value = [&](std::size_t key) { return track.values[cubic ? 3 * key + 1 : key]; };
    auto const after = std::upper_bound(track.times.begin(), track.times.end(), seconds);
    if (after == track.times.begin())
        return value(0);
    auto const key = static_cast<std::size_t>(after - track.times.begin()) - 1;
    if (after == track.times.end() || track.interpolation == Interpolation::step)
        return value(key);
    double const span = track.times[key + 1] - track.times[key];
    double const t = (seconds - track.times[key]) / span;
    return cubic ? hermite(track, key, span, t) : mix(value(key), value(key + 1), t);
}

struct LocalPose {
    Vector3 translation;
    Quaternion rotation;
    Vector3 scale;
    bool moved = false;
};

Matrix localMatrix(ModelNode const& node, LocalPose const& pose)
{
    if (node.hasMatrix && !pose.moved)
        return node.matrix;
    Matrix3 linear = rotationOf(pose.rotation);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            linear[3 * row + column] *= pose.scale[column];
    return Matrix(linear, pose.translation);
}

void applyChannel(ModelChannel const& channel, double seconds, LocalPose& pose)
{
    if (!channel.translation.times.empty())
        pose.translation = sample(channel.translation, seconds);
    if (!channel.rotation.times.empty())
        pose.rotation = sample(channel.rotation, seconds);
    if (!channel.scale.times.empty())
        pose.scale = sample(channel.scale, seconds);
    pose.moved = true;
}

} // namespace

Vector3 sample(ModelTrack<Vector3> const& track, double seconds)
{
    return sampleRaw(track, seconds);
}

Quaternion sample(ModelTrack<Quaternion> const& track, double seconds)
{
    return normalised(sampleRaw(track, seconds));
}

std::optional<Index> findAnimation(Model const& model, std::string const& nameOrIndex)
{
    auto const named = std::ranges::find(model.animations, nameOrIndex, &ModelAnimation::name);
    if (named != model.animations.end())
        return static_cast<Index>(named - model.animations.begin());
    Index index = none;
    char const* const end = nameOrIndex.data() + nameOrIndex.size();
    auto const [last, error] = std::from_chars(nameOrIndex.data(), end, index);
    if (error != std::errc() || last != end || index < 0 ||
        std::cmp_greater_equal(index, model.animations.size()))
        return std::nullopt;
    return index;
}

Matrix3 rotationOf(Quaternion const& q)
{
    return Matrix3(
        {1.0 - 2.0 * (q.y * q.y + q.z * q.z), 2.0 * (q.x * q.y - q.z * q.w), 2.0 * (q.x * q.z + q.y * q.w),
         2.0 * (q.x * q.y + q.z * q.w), 1.0 - 2.0 * (q.x * q.x + q.z * q.z), 2.0 * (q.y * q.z - q.x * q.w),
         2.0 * (q.x * q.z - q.y * q.w), 2.0 * (q.y * q.z + q.x * q.w), 1.0 - 2.0 * (q.x * q.x + q.y * q.y)});
}

std::vector<Matrix> poseNodes(Model const& model, Index animation, double seconds)
{
    std::vector<LocalPose> poses;
    poses.reserve(model.nodes.size());
    for (ModelNode const& node : model.nodes)
        poses.push_back({node.translation, normalised(node.rotation), node.scale});
    if (animation != none)
        for (ModelChannel const& channel : model.animations[static_cast<std::size_t>(animation)].channels)
            applyChannel(channel, seconds, poses[static_cast<std::size_t>(channel.node)]);

    std::vector<Matrix> globals;
    globals.reserve(model.nodes.size());
    for (std::size_t i = 0; i < model.nodes.size(); ++i) {
        ModelNode const& node = model.nodes[i];
        Matrix const local = localMatrix(node, poses[i]);
        globals.push_back(node.parent == none ? local
                                              : globals[static_cast<std::size_t>(node.parent)] * local);
    }
    return globals;
}

} // namespace sgview
