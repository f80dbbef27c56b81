#pragma once

#include "Viewer/Report/HtmlWriter.h"

#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// Horizontal bars as inline SVG, each with its label and its value as text. Readers that show no pictures
/// get the same as a description.
struct BarChart {
    struct Bar {
        std::string label;
        double value = 0.0;
        std::string text;    ///< the value for people
        bool chosen = false; ///< drawn solid; that its label says so too is the caller's
    };
    /// A mark on all bars.
    struct Goal {
        double value = 0.0;
        std::string text;
    };

    std::string id; ///< of the element; the only one on its page
    std::string title;
    std::vector<Bar> bars;
    double fullScale = 1.0; ///< what a bar of full length stands for
    std::optional<Goal> goal;

    /// Colours are left to classes: "bar", "bar chosen", "track", "goal", "label", "value".
    void write(HtmlWriter& html) const;
};

} // namespace sgview
