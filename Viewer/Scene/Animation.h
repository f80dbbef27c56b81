#pragma once

#include "Maths/Matrix.h"
#include "Viewer/Import/Model.h"

#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// A track's value at a time. Before the first key and after the last, the track holds that key's value.
///
/// Interpolation follows glTF 2.0, Appendix C: rotations by slerp along the shorter arc, splines as cubic
/// Hermite with tangents scaled by the keys' distance. Rotations come out with unit length.
///
/// \param track    at least one key
/// \param seconds  from the animation's start
[[nodiscard]] Vector3 sample(ModelTrack<Vector3> const& track, double seconds);
[[nodiscard]] Quaternion sample(ModelTrack<Quaternion> const& track, double seconds);

/// The animation that goes by a name, or else by an index; nothing where there is no such.
[[nodiscard]] std::optional<Index> findAnimation(Model const& model, std::string const& nameOrIndex);

/// The rotation of a quaternion of unit length.
[[nodiscard]] Matrix3 rotationOf(Quaternion const& q);

/// Where every node of a model is, in the model's space.
/// \param animation  index of an animation, or `none` for the rest pose
/// \param seconds    from its start
[[nodiscard]] std::vector<Matrix> poseNodes(Model const& model, Index animation, double seconds);

} // namespace sgview
