#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Report/HtmlWriter.h"

namespace sgview {

/// The pictures that were read back, each once, with their comparisons and differences.
void writePictures(HtmlWriter& html, Diagnosis const& diagnosis);

} // namespace sgview
