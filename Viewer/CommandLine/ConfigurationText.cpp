#include "Viewer/CommandLine/ConfigurationText.h"

#include "Utilities/Strings.h"

#include <algorithm>
#include <map>
#include <utility>

namespace sgview {

namespace {

/// Reads one line from left to right.
class LineReader {
public:
    LineReader(std::string_view text, std::size_t line) : rest_(text), line_(line) {}

    [[nodiscard]] bool isAtEnd()
    {
        skipBlanks();
        return rest_.empty() || rest_.front() == '#';
    }

    [[nodiscard]] bool take(char c)
    {
        skipBlanks();
        if (!rest_.starts_with(c))
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    void expect(char c, std::string const& otherwise)
    {
        if (!take(c))
            refuse(otherwise);
    }

    void expectEnd()
    {
        if (!isAtEnd())
            refuse("'" + std::string(rest_) + "' is too much");
    }

    /// Lower-case letters, digits and dashes.
    [[nodiscard]] std::string takeName()
    {
        return takeWhile([](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'; });
    }

    [[nodiscard]] std::string takeValue()
    {
        if (take('"'))
            return takeQuoted('"', true);
        if (take('\''))
            return takeQuoted('\'', false);
        std::string const word = takeWhile(
            [](char c) { return std::string_view(" \t\r\"'#,[]").find(c) == std::string_view::npos; });
        if (word.empty())
            refuse("a value is missing");
        return word;
    }

    [[noreturn]] void refuse(std::string const& reason) const { throw ConfigurationError(line_, reason); }

private:
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r"), rest_.size())); }

    template <typename Condition>
    std::string takeWhile(Condition condition)
    {
        skipBlanks();
        auto const end = std::ranges::find_if_not(rest_, condition);
        std::string word(rest_.begin(), end);
        rest_.remove_prefix(word.size());
        return word;
    }

    std::string takeQuoted(char quote, bool escapes)
    {
        std::string text;
        for (std::size_t i = 0; i < rest_.size(); ++i) {
            if (rest_[i] == quote) {
                rest_.remove_prefix(i + 1);
                return text;
            }
            if (escapes && rest_[i] == '\\' && ++i < rest_.size() && rest_[i] != '"' && rest_[i] != '\\')
                refuse("a backslash stands before a quote or another one");
            if (i < rest_.size())
                text += rest_[i];
        }
        refuse("the quote at the end is missing");
    }

    std::string_view rest_;
    std::size_t line_;
};

std::string readSection(LineReader& reader)
{
    std::string name = reader.takeName();
    if (name.empty())
        reader.refuse("the section has no name");
    reader.expect(']', "] is missing");
    reader.expectEnd();
    return name;
}

std::vector<std::string> readList(LineReader& reader)
{
    std::vector<std::string> values;
    while (!reader.take(']')) {
        values.push_back(reader.takeValue());
        if (!reader.take(',')) {
            reader.expect(']', "] is missing");
            break;
        }
    }
    return values;
}

ConfigurationEntry readEntry(LineReader& reader)
{
    ConfigurationEntry entry;
    entry.name = reader.takeName();
    if (entry.name.empty())
        reader.refuse("neither name = value nor [section]");
    reader.expect('=', "= is missing after " + entry.name);
    entry.isList = reader.take('[');
    entry.values = entry.isList ? readList(reader) : std::vector{reader.takeValue()};
    reader.expectEnd();
    return entry;
}

} // namespace

std::vector<ConfigurationEntry> readConfiguration(std::string_view text)
{
    std::vector<ConfigurationEntry> entries;
    std::map<std::pair<std::string, std::string>, std::size_t> lineOf; // by section and name
    std::string section;
    std::size_t sectionLine = 0;
    std::size_t number = 0;
    for (std::string const& line : string_split(text, '\n')) {
        LineReader reader(line, ++number);
        if (reader.isAtEnd())
            continue;
        if (reader.take('[')) {
            section = readSection(reader);
            sectionLine = number;
            continue;
        }
        ConfigurationEntry entry = readEntry(reader);
        entry.section = section;
        entry.sectionLine = sectionLine;
        entry.line = number;
        auto const [known, isNew] = lineOf.try_emplace({section, entry.name}, number);
        if (!isNew)
            reader.refuse(entry.name + " is set in line " + std::to_string(known->second) + " already");
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::string quotedValue(std::string_view text)
{
    std::string result = "\"";
    for (char const c : text)
        result += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return result + '"';
}

} // namespace sgview
