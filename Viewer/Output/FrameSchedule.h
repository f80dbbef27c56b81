#pragma once

#include <cstdint>
#include <optional>

namespace sgview {

/// Frames by their numbers, both included.
struct FrameRange {
    static constexpr std::uint32_t largest = 999'999;

    std::uint32_t first = 0;
    std::uint32_t last = 0; ///< not before the first

    [[nodiscard]] std::uint32_t count() const { return last - first + 1; }
};

/// What a person asks of a film. Without any of it, one picture is wanted.
struct FilmOptions {
    static constexpr double usualRate = 25.0;

    std::optional<FrameRange> frames;
    std::optional<double> rate;             ///< frames a second, greater than 0
    std::optional<std::uint32_t> turntable; ///< frames once around the model

    [[nodiscard]] bool isFilm() const { return frames || rate || turntable; }
};

/// Which frames there are, and what each shows. A frame depends on its number alone, never on what others are
/// drawn with it.
class FrameSchedule {
public:
    /// What a frame shows.
    struct Moment {
        double seconds = 0.0; ///< from the animation's start
        double turn = 0.0;    ///< degrees around the model from where the first frame looks
    };

    /// \param start   moment of frame 0, seconds from the animation's start
    /// \param length  of the animation, seconds, which films go through again and again; 0 where there is
    ///                none
    FrameSchedule(FilmOptions const& options, double start, double length);

    /// Those asked for, or else once around, or else the animation once.
    [[nodiscard]] FrameRange range() const { return range_; }

    /// Frames a second.
    [[nodiscard]] double rate() const { return options_.rate.value_or(FilmOptions::usualRate); }

    [[nodiscard]] Moment at(std::uint32_t frame) const;

private:
    FilmOptions options_;
    double start_;
    double length_;
    FrameRange range_;
};

} // namespace sgview
