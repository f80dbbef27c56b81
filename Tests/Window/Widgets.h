#pragma once

#include <imgui.h>

#include <functional>
#include <initializer_list>
#include <variant>

/// Dear ImGui without a window, and somebody with a pointer who finds widgets by what is written on them.
///
/// A widget's path leads from the window's name over what is pushed on the ID stack to the widget's label.
class Widgets {
public:
    using Path = std::initializer_list<std::variant<char const*, int>>;

    /// \param size   of the screen, points
    /// \param build  all widgets, once a frame
    Widgets(ImVec2 size, std::function<void()> build);
    Widgets(Widgets const&) = delete;
    Widgets& operator=(Widgets const&) = delete;
    ~Widgets();

    /// Builds some frames, so that all windows have found their sizes.
    void settle();

    /// Has widgets as at a program's start: no tree node unfolded or folded yet.
    void forget();

    /// Whether a frame holds the widget.
    [[nodiscard]] bool has(Path path);

    /// How far below the screen's upper edge the widget begins.
    /// Throws std::runtime_error where there is no such widget.
    [[nodiscard]] float heightOf(Path path) { return rectangleOf(path).low.y; }

    [[nodiscard]] float rightEdgeOf(Path path) { return rectangleOf(path).high.x; }

    /// Clicks on a widget's middle, or elsewhere.
    /// \param place  from 0 at the widget's left edge to 1 at the right one
    /// Throws std::runtime_error where there is no such widget.
    void click(Path path, float place = 0.5F);

    /// Presses at a widget's middle and releases so many points to the right.
    /// Throws std::runtime_error where there is no such widget.
    void drag(Path path, float distance);

    /// Whether a tool tip shows while the pointer rests on a widget.
    /// Throws std::runtime_error where there is no such widget.
    [[nodiscard]] bool hasTip(Path path);

private:
    struct Rectangle {
        ImVec2 low;
        ImVec2 high;
    };
    [[nodiscard]] bool find(Path path, Rectangle& found);
    [[nodiscard]] Rectangle rectangleOf(Path path);
    void frame(ImVec2 pointer, bool pressed);

    std::function<void()> build_;
};
