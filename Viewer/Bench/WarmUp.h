#pragma once

namespace sgview {

/// Frames that come before those that are timed: what is made once has been made then.
inline constexpr int warmUpFrames = 10;

} // namespace sgview
