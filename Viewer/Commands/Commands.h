#pragma once

#include "Viewer/CommandLine/CommandLine.h"

namespace sgview {

// What sgview does, one operation a command. Failures are exceptions derived from std::exception.

/// Draws models into pictures and films.
void run(RenderRequest const& request, Messages const& messages);

/// Writes to standard output what is in a model, or what the graphics driver says.
void run(InfoRequest const& request, Messages const& messages);

/// Draws the demonstration scene into a PNG file, or shows it in a window and returns when that is closed.
void run(DemoRequest const& request, Messages const& messages);

/// Draws the same frames by every technique, and writes to standard output how they differ.
void run(CompareRequest const& request, Messages const& messages);

/// Opens a window, and returns when it is closed.
void run(WindowRequest const& request, Messages const& messages);

/// Measures the graphics card, or tells what is known of it, on standard output.
void run(DiagnoseRequest const& request, Messages const& messages);

/// Draws a scene again and again, and writes to standard output what its frames cost.
void run(BenchRequest const& request, Messages const& messages);

} // namespace sgview
