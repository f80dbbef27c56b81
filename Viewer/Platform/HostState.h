#pragma once

namespace sgview {

/// Puts the OpenGL state that belongs to the host, and that no pass of a renderer resets, to what a frame
/// needs. Called before each frame with the context current.
void setHostState();

} // namespace sgview
