#pragma once

#include "Viewer/Bench/FrameMeasurement.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/Technique.h"

#include <cstdint>
#include <iosfwd>
#include <string>

namespace sgview {

/// How long it took until the first frame was there, milliseconds each.
struct StartFigures {
    double driver = 0.0;     ///< OpenGL's context
    double module = 0.0;     ///< the renderer's module, and the choice of a technique
    double scene = 0.0;      ///< the scene graph
    double firstFrame = 0.0; ///< the first frame, until OpenGL was done with it
};

/// What `sgview bench` has found out, and of what.
struct BenchResult {
    std::string scene; ///< its name, or the model's file
    int count = 0;
    std::string things; ///< that are counted, in the plural: "surfaces"
    bool moving = false;
    PictureSize size;
    std::string driver; ///< in OpenGL's words
    Technique technique = Technique::plain;
    bool discarded = false; ///< Mesa threw all drawing away
    StartFigures start;
    FrameFigures frames;
    std::int64_t peakMemory = 0; ///< bytes; up to the first frame where drawing is thrown away
};

/// For people, and as one JSON object.
void writeText(std::ostream& stream, BenchResult const& result);
void writeJson(std::ostream& stream, BenchResult const& result);

} // namespace sgview
