#include "Utilities/PrefsText.h"

#include <optional>

namespace {

constexpr std::string_view heading = "# Preferences of OpenGLRenderer, written by the program.\n";
constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::string_view blanks = " \t\r";

void appendByCode(std::string& text, char c)
{
    auto const code = static_cast<unsigned char>(c);
    text += "\\x";
    text += hexDigits[code / 16];
    text += hexDigits[code % 16];
}

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

std::string escaped(std::string_view text, std::string_view special)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        bool const atEnd = i == 0 || i + 1 == text.size();
        if (c == '\\')
            result += "\\\\";
        else if (c == '\n')
            result += "\\n";
        else if (isControl(c) || (c == ' ' && atEnd) || special.find(c) != std::string_view::npos)
            appendByCode(result, c);
        else
            result += c;
    }
    return result;
}

/// The character that the escape at the front of `rest` stands for, taken off `rest`.
std::optional<char> takeEscape(std::string_view& rest)
{
    if (rest.starts_with("\\\\") || rest.starts_with("\\n")) {
        char const c = rest[1] == 'n' ? '\n' : '\\';
        rest.remove_prefix(2);
        return c;
    }
    if (!rest.starts_with("\\x") || rest.size() < 4)
        return {};
    auto const high = hexDigits.find(rest[2]);
    auto const low = hexDigits.find(rest[3]);
    if (high == std::string_view::npos || low == std::string_view::npos)
        return {};
    rest.remove_prefix(4);
    return static_cast<char>(16 * high + low);
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        if (text.front() == '\\') {
            auto const c = takeEscape(text);
            if (!c)
                return {};
            result += *c;
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

std::string_view trimmed(std::string_view text)
{
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

void parseLine(std::string_view line, PrefsText::Entries& entries)
{
    auto const equals = line.find('=');
    if (equals == std::string_view::npos || line.starts_with('#'))
        return;
    auto key = unescaped(trimmed(line.substr(0, equals)));
    auto value = unescaped(trimmed(line.substr(equals + 1)));
    if (key && value)
        entries[*std::move(key)] = *std::move(value);
}

} // namespace

std::string PrefsText::format(Entries const& entries)
{
    std::string text(heading);
    for (auto const& [key, value] : entries)
        text += escaped(key, "=#") + " = " + escaped(value, "") + '\n';
    return text;
}

PrefsText::Entries PrefsText::parse(std::string_view text)
{
    Entries entries;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        parseLine(text.substr(0, end), entries);
        text.remove_prefix(end + 1);
    }
    return entries;
}
