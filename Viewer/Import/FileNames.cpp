#include "Viewer/Import/FileNames.h"

#include <algorithm>

namespace sgview {

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    return lower;
}

std::string extensionOf(std::string_view name)
{
    std::size_t const dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : lowerCase(name.substr(dot + 1));
}

} // namespace sgview
