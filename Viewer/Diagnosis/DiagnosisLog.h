#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"

#include <span>
#include <string>
#include <string_view>

namespace sgview {

/// Reads a run of the graphics diagnostic off what it says and shows, as it comes.
class DiagnosisLog {
public:
    /// OpenGL is there; what follows is the run.
    void addCard(std::string card);

    /// \param line  of channel "opengl", without its name
    void addLine(std::string_view line);

    /// \param pixels  RGBA, 512 rows of 512, the bottom row first; any others are passed over
    void addPicture(std::span<std::uint8_t const> pixels);

    [[nodiscard]] Diagnosis const& diagnosis() const { return diagnosis_; }

    /// What the run is at: "timing the vertex program".
    [[nodiscard]] std::string step() const;

private:
    enum class Stage { opening, loading, scene, claims, buffers, base, program, shader, storing, closing };

    void enter(Stage stage);
    void addLimit(std::string_view line);
    void addTimeTest(double rate, bool bailedOut);
    void addPixelCount(std::string_view line);
    void addComparison(double mismatch);
    [[nodiscard]] Diagnosis::Step timedStep() const;
    [[nodiscard]] std::string skinningStep(std::string const& path) const;

    Diagnosis diagnosis_;
    Stage stage_ = Stage::opening;
    // Of the stage.
    int timeTests_ = 0;
    int pictures_ = 0;
    int comparisons_ = 0;
};

} // namespace sgview
