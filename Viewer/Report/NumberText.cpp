#include "Viewer/Report/NumberText.h"

#include "Utilities/Strings.h"

#include <array>
#include <charconv>
#include <cmath>
#include <iomanip>

namespace sgview {

namespace {

std::string withDecimals(double value, int decimals)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

} // namespace

std::string countText(std::int64_t count)
{
    std::string text = std::to_string(count);
    std::size_t const firstDigit = count < 0 ? 1 : 0;
    for (std::size_t at = text.size(); at > firstDigit + 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

std::string measureText(double value)
{
    constexpr double largestShownWhole = 1e15;
    if (!(value >= 0.0 && value < largestShownWhole))
        return stringize(value);
    if (value >= 999.95)
        return countText(std::llround(value));
    if (value == 0.0)
        return "0";
    return withDecimals(value, value >= 99.995 ? 1 : value >= 9.9995 ? 2 : 3);
}

std::string exactText(double value)
{
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string shareText(double share)
{
    constexpr int decimals = 4;
    std::string text = withDecimals(100.0 * share, decimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text + '%';
}

} // namespace sgview
