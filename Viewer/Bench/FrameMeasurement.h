#pragma once

#include "Viewer/Bench/BenchScene.h"
#include "Viewer/Platform/OffscreenRenderer.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace sgview {

/// What a pass costs where it is waited for until OpenGL is done with it, the median of several frames.
struct PassFigure {
    std::string name;
    double milliseconds = 0.0;
};

/// What became of timed frames, one entry a frame.
struct FrameFigures {
    std::vector<double> milliseconds; ///< from the first change of the scene until OpenGL is done
    std::vector<double> application;  ///< of those, what the scene's own changes took
    std::vector<double> allocations;  ///< calls of operator new
    std::vector<double> pageFaults;
    std::vector<PassFigure> passes; ///< of frames of their own, in the order in which they draw
};

/// Draws a scene from its frame 0 on: frames to warm up, as many as are wanted, and some more for the passes.
/// \param advance  is called after every frame
/// \throws OpenGLError
[[nodiscard]] FrameFigures measureFrames(OffscreenRenderer& renderer, BenchScene& scene, int frames,
                                         std::function<void()> const& advance);

/// How many frames `measureFrames` draws in all.
[[nodiscard]] int framesDrawnFor(int frames);

} // namespace sgview
