#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"

#include <chrono>
#include <string>
#include <string_view>

/// A run in which everything was measured and everything passed, with small pictures.
[[nodiscard]] sgview::Diagnosis sampleDiagnosis();

/// One that ended in the middle of the vertex program's time test.
[[nodiscard]] sgview::Diagnosis brokenOffDiagnosis();

/// A picture of 4 by 3 pixels of one colour.
[[nodiscard]] sgview::Picture plainPicture(std::uint8_t brightness);

/// When sgview wrote the reports below: 2024-02-29 23:59:58 UTC.
inline constexpr std::chrono::system_clock::time_point sampleTime{std::chrono::seconds(1709251198)};

[[nodiscard]] std::string reportOn(sgview::Diagnosis const& diagnosis, std::string_view ending = {});
