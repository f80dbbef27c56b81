#pragma once

#include "Viewer/Platform/Picture.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

struct _XDisplay; // Xlib's header takes names from everybody

/// Somebody in front of an X display who types, points and looks.
class FakeUser {
public:
    /// Throws std::runtime_error where the display cannot be reached or takes no fake input.
    explicit FakeUser(std::string const& display);

    /// Tells all programs to come what they look up in the display's resources, such as "Xft.dpi: 192".
    void setResources(std::string const& text) const;

    /// Turns to the first window on the display that is mapped and has a title; false while there is none.
    [[nodiscard]] bool findWindow();

    [[nodiscard]] std::string title() const;
    [[nodiscard]] sgview::PictureSize size() const;
    void resize(sgview::PictureSize size) const;

    /// As a desktop does that minimises the window, and brings it back.
    void hide() const;
    void show() const;

    /// Asks the window to close, as its frame's button does.
    void close() const;

    /// \param key  one of X11/keysym.h
    void type(unsigned long key, bool shift = false) const;

    /// Holds a key until it has been pressed again and again so many times.
    /// \return how often it was pressed in all; fewer where the display does not repeat keys
    int hold(unsigned long key, int times) const;
    void moveTo(int x, int y) const; ///< in the window
    void press(unsigned button) const;
    void release(unsigned button) const;
    void click(unsigned button) const;

    /// Presses a button at one place and releases it at another.
    void drag(unsigned button, int fromX, int fromY, int toX, int toY) const;

    /// What the window shows; opaque.
    [[nodiscard]] sgview::Picture look() const;

    /// Drags files from elsewhere into the window's middle; false where the window does not take them.
    [[nodiscard]] bool drop(std::vector<std::filesystem::path> const& files) const;

private:
    struct DisplayEnd {
        void operator()(_XDisplay* display) const;
    };
    struct Place {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool isVisible = false;
    };

    [[nodiscard]] unsigned long atom(char const* name) const;
    [[nodiscard]] Place place() const;
    void sendMessage(unsigned long target, char const* type, std::vector<long> const& data) const;
    void answerRequest(unsigned long requestor, unsigned long property, unsigned long target,
                       std::string const& list) const;
    [[nodiscard]] bool serveDrop(unsigned long source, std::string const& list) const;

    std::unique_ptr<_XDisplay, DisplayEnd> display_;
    unsigned long window_ = 0;
};
