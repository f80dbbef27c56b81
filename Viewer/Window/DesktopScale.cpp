#include "Viewer/Window/DesktopScale.h"

#include "Viewer/Window/ScreenMeasures.h"
#include "Viewer/Window/XLibrary.h"

#include <algorithm>
#include <charconv>

namespace sgview {

double desktopScaleOfX()
{
    XLibrary const library;
    auto const open = library.find<void* (*)(char const*)>("XOpenDisplay");
    auto const ask = library.find<char* (*)(void*, char const*, char const*)>("XGetDefault");
    auto const close = library.find<int (*)(void*)>("XCloseDisplay");
    if (!open || !ask || !close)
        return 1.0;
    void* const display = open(nullptr);
    if (!display)
        return 1.0;
    char const* const dpi = ask(display, "Xft", "dpi");
    double const scale = dpi ? scaleFromDpi(dpi) : 1.0;
    close(display);
    return scale;
}

double scaleFromDpi(std::string_view text)
{
    constexpr double usual = 96.0;
    double dpi = 0.0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), dpi);
    if (error != std::errc() || end != text.data() + text.size() || !(dpi > 0.0))
        return 1.0;
    return std::clamp(dpi / usual, ScreenMeasures::smallestScale, ScreenMeasures::largestScale);
}

} // namespace sgview
