#pragma once

#include "Viewer/CommandLine/CommandLine.h"

namespace sgview {

// What sgview does, one operation a command. Failures are exceptions derived from std::exception.

/// Draws a model into a PNG file.
void run(RenderRequest const& request, Messages const& messages);

/// Writes to standard output what is in a model.
void run(InfoRequest const& request, Messages const& messages);

/// Draws the demonstration scene into a PNG file.
void run(DemoRequest const& request, Messages const& messages);

/// Draws the same frames by every technique, and writes to standard output how they differ.
void run(CompareRequest const& request, Messages const& messages);

} // namespace sgview
