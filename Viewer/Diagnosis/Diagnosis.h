#pragma once

#include "Viewer/Platform/Picture.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// The three flags of a verdict, or of what a card claims.
struct TechniqueFlags {
    bool vbo = false;
    bool vertexProgram = false;
    bool vertexShader = false;

    constexpr bool operator==(TechniqueFlags const&) const = default;
};

/// What a run of the graphics diagnostic measured and decided, as its log and its pictures tell it.
struct Diagnosis {
    /// What frames were timed for.
    enum class Step { scene, plain, vbo, base, program, shader };

    /// Three timed frames.
    struct TimeTest {
        Step step = Step::scene;
        int surfaces = 0;       ///< in the scene then
        double rate = 0.0;      ///< frames per second; 0 where it was not measured
        bool bailedOut = false; ///< the first frame took more than a second
    };

    /// A picture that was read back, and what it was to show.
    enum class View {
        reference,     ///< plain, at rest
        programAtRest, ///< by the vertex program
        programBent,
        programCheck, ///< plain, bent
        shaderAtRest,
        shaderBent,
        shaderCheck,
    };
    struct Image {
        View view = View::reference;
        Picture picture; ///< 512 by 512
    };

    /// Two pictures held against one another.
    struct Comparison {
        View a = View::reference;
        View b = View::reference;
        double mismatch = 0.0; ///< share of the pixels
        bool mustDiffer = false;

        [[nodiscard]] bool passed() const;
    };

    struct PixelCount {
        int white = 0;
        int nonWhite = 0;
    };
    struct Limit {
        std::string name; ///< OpenGL's
        std::int64_t value = 0;
    };

    enum class Flag { vbo, vertexProgram, vertexShader };
    /// Why a flag of the verdict is as it is.
    struct Ruling {
        Flag flag = Flag::vbo;
        bool granted = false;
        std::string reason; ///< one sentence for people, with its figures
    };

    std::string card; ///< vendor / renderer / version
    int surfaces = 0;
    std::vector<Limit> limits; ///< of vertex programs
    std::optional<TechniqueFlags> claims;
    std::optional<TechniqueFlags> verdict; ///< none where the run did not end well
    std::vector<TimeTest> timeTests;       ///< in order
    std::optional<PixelCount> referencePixels;
    std::vector<Comparison> comparisons;
    std::vector<Image> images;
    std::vector<std::string> log; ///< the lines of channel "opengl", without its name
    double seconds = 0.0;         ///< the run's own measure

    /// The last time test of a step, if there was one.
    [[nodiscard]] TimeTest const* timeTest(Step step) const;
    [[nodiscard]] Picture const* image(View view) const;
    [[nodiscard]] std::array<Ruling, 3> rulings() const;
};

/// For people: "vertex program, bent".
[[nodiscard]] std::string_view nameOf(Diagnosis::Step step);
[[nodiscard]] std::string_view nameOf(Diagnosis::View view);
[[nodiscard]] std::string_view nameOf(Diagnosis::Flag flag);

} // namespace sgview
