#pragma once

#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// A value as a stream prints it by default, whatever the program's locale.
template <typename T>
[[nodiscard]] std::string stringize(T const& value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

/// A float as a stream prints a double by default (six digits), or with nine digits where six do not read
/// back as the same float. "inf" and "nan" come out as such, though no stream reads them back.
template <>
[[nodiscard]] std::string stringize<float>(float const& value);

/// A text in quotation marks as messages show it: one line, control characters as '?', the end of a long one
/// as "...".
[[nodiscard]] std::string inQuotes(std::string_view text);

/// The pieces between separators, empty ones included: always one more than there are separators.
[[nodiscard]] std::vector<std::string> string_split(std::string_view text, char separator);
