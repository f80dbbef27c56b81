#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Report/HtmlWriter.h"

namespace sgview {

/// What was timed, as bar charts: each decision's techniques side by side, to one scale.
void writeSpeed(HtmlWriter& html, Diagnosis const& diagnosis);

/// How the test scene grew, and where it stopped.
void writeSceneGrowth(HtmlWriter& html, Diagnosis const& diagnosis);

} // namespace sgview
