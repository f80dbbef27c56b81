#pragma once

#include "Viewer/Platform/Picture.h"

#include <string_view>

namespace sgview {

/// Plain lettering for pictures: capitals, digits and some marks, five dots wide and seven high. Small
/// letters come out as capitals, and what there is no letter for as a question mark.
struct Lettering {
    int dot = 2; ///< pixels a side

    [[nodiscard]] int height() const { return dotsHigh * dot; }
    [[nodiscard]] int widthOf(std::string_view text) const
    {
        return static_cast<int>(text.size()) * (dotsWide + gap) * dot;
    }

    /// Writes a line in black, its upper left corner at a place; what lies outside the picture is left out.
    void write(Picture& picture, int x, int y, std::string_view text) const;

private:
    static constexpr int dotsWide = 5;
    static constexpr int dotsHigh = 7;
    static constexpr int gap = 1;
};

} // namespace sgview
