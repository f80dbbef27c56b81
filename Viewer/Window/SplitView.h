#pragma once

#include "Viewer/Platform/PictureDifference.h"
#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <array>
#include <chrono>
#include <optional>

namespace sgview {

/// The window between two techniques: what each draws side by side, and beneath how they differ. Both draw
/// into the same pixels, one after the other, by the same camera. Needs the renderer's context current.
class SplitView {
public:
    /// Draws both pictures and their difference. What cannot be drawn becomes a notice and ends the split.
    /// \param area  pixels, from the lower left corner
    void draw(Session& session, quarl::Rect<int> const& area);

    /// Goes back to the technique in use, if the window was split.
    void end(Session& session);

    [[nodiscard]] bool isSplit() const { return isSplit_; }

    /// Builds the choices, figures and labels with Dear ImGui, as far as the pictures have room for them.
    /// \param area  pixels
    void build(Session& session, ImVec2 area);

private:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    /// One of the two.
    struct Side {
        Technique technique = Technique::plain;
        Milliseconds first{0.0};   ///< to change to the technique and draw the first frame
        Milliseconds further{0.0}; ///< to draw one more
    };

    void begin(Session const& session);
    void arrange(Session const& session, quarl::Rect<int> const& area);
    [[nodiscard]] Picture drawSide(Session& session, Side& side) const;
    void buildChoice(Session const& session, std::size_t side, ImVec2 area);
    [[nodiscard]] ImVec2 roomForBox() const;

    bool isSplit_ = false;
    std::array<Side, 2> sides_;
    int amplification_ = 10;
    PictureSize cell_;                         ///< pixels, of each of the three pictures
    std::array<quarl::Rect<int>, 3> places_{}; ///< left, right, difference
    std::optional<PictureDifference> difference_;
};

} // namespace sgview
