#include "Utilities/Strings.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdint>
#include <iomanip>
#include <limits>

namespace {

std::string print(float value, int digits)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::setprecision(digits) << static_cast<double>(value);
    return stream.str();
}

bool readsBackAs(float value, std::string const& text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    float read = 0.0F;
    stream >> read;
    return std::bit_cast<std::uint32_t>(read) == std::bit_cast<std::uint32_t>(value);
}

} // namespace

template <>
std::string stringize<float>(float const& value)
{
    constexpr int streamDefault = 6;
    std::string text = print(value, streamDefault);
    return readsBackAs(value, text) ? text : print(value, std::numeric_limits<float>::max_digits10);
}

std::string inQuotes(std::string_view text)
{
    constexpr std::size_t longest = 80;
    std::string shown(text.substr(0, longest));
    std::ranges::replace_if(
        shown, [](char c) { return std::iscntrl(static_cast<unsigned char>(c)) != 0; }, '?');
    return '"' + shown + (text.size() > longest ? "...\"" : "\"");
}

std::vector<std::string> string_split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator, begin)) {
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.emplace_back(text.substr(begin));
    return pieces;
}
