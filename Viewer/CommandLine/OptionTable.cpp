#include "Viewer/CommandLine/OptionTable.h"

#include "Utilities/Strings.h"
#include "Viewer/Bench/BenchSceneKind.h"
#include "Viewer/CommandLine/Shell.h"
#include "Viewer/Output/PictureFormat.h"
#include "Viewer/Platform/Technique.h"

#include <algorithm>
#include <sstream>

namespace sgview {

namespace {

template <typename All>
std::vector<std::string> namesOfAll(All const& all, std::vector<std::string> names = {})
{
    for (auto const one : all)
        names.emplace_back(nameOf(one));
    return names;
}

/// Those of a placeholder in capitals.
Values valuesOfPlaceholder(std::string const& placeholder)
{
    if (placeholder == "TECHNIQUE")
        return {namesOfAll(allTechniques, {"auto"})};
    if (placeholder == "SCENE|FILE")
        return {namesOfAll(allBenchScenes), Values::Files::models};
    if (placeholder == "FORMAT")
        return {namesOfAll(allPictureFormats)};
    if (placeholder == "SHELL")
        return {namesOfAll(allShells)};
    if (placeholder == "CHANNELS")
        return {{"opengl", "error", "opengl,error"}};
    if (placeholder == "DIR")
        return {{}, Values::Files::folders};
    if (placeholder == "FILE" || placeholder == "[FILE]" || placeholder == "PATH" || placeholder == "OUT" ||
        placeholder.ends_with(".png") || placeholder.ends_with(".html"))
        return {{}, Values::Files::any};
    return {};
}

/// "N|list" has the word "list" in it.
std::vector<std::string> wordsIn(std::string const& placeholder)
{
    std::vector<std::string> words = string_split(placeholder, '|');
    std::erase_if(words, [](std::string const& word) {
        return !std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
    });
    return words;
}

std::size_t startOfExamples(std::string const& footer)
{
    return std::min({footer.find("Example:\n"), footer.find("Examples:\n"), footer.size()});
}

} // namespace

std::vector<CLI::App const*> commandsOf(CLI::App const& app)
{
    return app.get_subcommands([](CLI::App const*) { return true; });
}

std::vector<OptionGroup> groupsOf(CLI::App const& command)
{
    std::vector<OptionGroup> groups;
    for (CLI::Option const* const option : optionsOf(command)) {
        auto found = std::ranges::find(groups, option->get_group(), &OptionGroup::name);
        if (found == groups.end())
            found = groups.insert(found, {option->get_group(), {}});
        found->options.push_back(option);
    }
    return groups;
}

std::vector<CLI::Option const*> optionsOf(CLI::App const& command)
{
    return command.get_options([](CLI::Option const* option) { return option->nonpositional(); });
}

CLI::Option const* argumentOf(CLI::App const& command)
{
    std::vector<CLI::Option const*> const arguments =
        command.get_options([](CLI::Option const* option) { return option->get_positional(); });
    return arguments.empty() ? nullptr : arguments.front();
}

std::string argumentName(CLI::Option const& argument)
{
    return argument.get_name() + (takesSeveral(argument) ? "..." : "");
}

bool takesValue(CLI::Option const& option)
{
    return option.get_items_expected_max() > 0;
}

bool needsValue(CLI::Option const& option)
{
    return option.get_items_expected_min() > 0;
}

bool takesSeveral(CLI::Option const& option)
{
    return option.get_items_expected_max() > 1 ||
           option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
}

std::vector<std::string> namesOf(CLI::Option const& option)
{
    std::vector<std::string> names;
    for (std::string const& name : option.get_snames())
        names.push_back("-" + name);
    for (std::string const& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

std::string plainName(CLI::Option const& option)
{
    return option.get_lnames().empty() ? option.get_name() : option.get_lnames().front();
}

std::string descriptionOf(CLI::Option const& option)
{
    std::vector<std::string> remarks;
    for (CLI::Option const* const needed : option.get_needs())
        remarks.push_back("with " + needed->get_name());
    if (!option.get_default_str().empty())
        remarks.push_back("default: " + option.get_default_str());
    std::string text = option.get_description();
    if (remarks.empty())
        return text;
    bool const isOpen = text.ends_with(')');
    if (isOpen)
        text.pop_back();
    return text + (isOpen ? "; " : " (") + joined(remarks, "; ") + ")";
}

std::string summaryOf(CLI::Option const& option)
{
    std::string const& text = option.get_description();
    return text.substr(0, std::min({text.find(';'), text.find(':'), text.find(" ("), text.size()}));
}

Values valuesOf(CLI::App const& app, CLI::Option const& option)
{
    if (option.get_positional() && option.get_name() == "FILE")
        return {{}, Values::Files::models};
    if (option.get_positional()) {
        Values commands;
        for (CLI::App const* const command : commandsOf(app))
            commands.words.push_back(command->get_name());
        return commands;
    }
    Values values = valuesOfPlaceholder(option.get_type_name());
    std::ranges::copy(wordsIn(option.get_type_name()), std::back_inserter(values.words));
    return values;
}

bool isQuestion(CLI::Option const& option, std::string const& value)
{
    return value == "list" && std::ranges::count(wordsIn(option.get_type_name()), value) > 0;
}

bool takesPath(CLI::Option const& option)
{
    return valuesOfPlaceholder(option.get_type_name()).files != Values::Files::none;
}

std::string notesOf(CLI::App const& command)
{
    return command.get_footer().substr(0, startOfExamples(command.get_footer()));
}

std::string examplesOf(CLI::App const& command)
{
    return command.get_footer().substr(startOfExamples(command.get_footer()));
}

std::string joined(std::vector<std::string> const& words, std::string const& separator)
{
    std::string text;
    for (std::string const& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

std::vector<std::string> wrapped(std::string const& text, std::size_t width)
{
    std::vector<std::string> lines;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (lines.empty() || lines.back().size() + 1 + word.size() > width)
            lines.push_back(word);
        else
            lines.back() += " " + word;
    }
    return lines;
}

} // namespace sgview
