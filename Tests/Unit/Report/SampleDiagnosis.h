#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"

#include <string>
#include <string_view>

/// A run in which everything was measured and everything passed, with small pictures.
[[nodiscard]] sgview::Diagnosis sampleDiagnosis();

/// One that ended in the middle of the vertex program's time test.
[[nodiscard]] sgview::Diagnosis brokenOffDiagnosis();

/// A picture of 4 by 3 pixels of one colour.
[[nodiscard]] sgview::Picture plainPicture(std::uint8_t brightness);

[[nodiscard]] std::string reportOn(sgview::Diagnosis const& diagnosis, std::string_view ending = {});
