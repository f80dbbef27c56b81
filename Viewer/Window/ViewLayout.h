#pragma once

namespace sgview {

/// Which bars lie over the view, and what they leave free for the model. All in points.
struct ViewLayout {
    static constexpr double statusRow = 52.0; ///< with the margins, as the next
    static constexpr double playbackRow = 64.0;

    double width = 1.0;
    double height = 1.0;
    bool hasStatus = false;
    bool hasPlayback = false;

    /// From the view's upper edge to what is free.
    [[nodiscard]] double top() const { return hasStatus ? statusRow : 0.0; }
    /// From what is free to the view's lower edge.
    [[nodiscard]] double bottom() const { return hasPlayback ? playbackRow : 0.0; }
    [[nodiscard]] double freeHeight() const { return height - top() - bottom(); }
};

/// What there is to lay out.
struct ViewContent {
    bool hasScene = false;
    bool hasAnimations = false;
    bool isSplit = false; ///< into rows of pictures
};

/// Lays out the part of the window that shows the model. Where that is too low for all, the model comes
/// first, then playback, then the status.
[[nodiscard]] ViewLayout layOutView(double width, double height, ViewContent const& content);

} // namespace sgview
