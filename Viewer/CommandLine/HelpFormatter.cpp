#include "Viewer/CommandLine/HelpFormatter.h"

#include "Viewer/CommandLine/OptionTable.h"

namespace sgview {

namespace {

constexpr std::size_t lineWidth = 100;

/// A name, and from a column on what it means.
std::string entry(std::string const& name, std::string const& meaning, std::size_t column)
{
    std::string text = "  " + name;
    bool fits = text.size() + 2 <= column;
    for (std::string const& line : wrapped(meaning, lineWidth - column)) {
        text += fits ? std::string(column - text.size(), ' ') + line : "\n" + std::string(column, ' ') + line;
        fits = false;
    }
    return text + "\n";
}

std::string entryOf(CLI::Option const& option)
{
    constexpr std::size_t column = 32;
    std::string names = option.get_snames().empty() ? "    " : "";
    for (std::string const& name : namesOf(option))
        names += (names.find('-') == std::string::npos ? "" : ", ") + name;
    if (takesValue(option))
        names += " " + option.get_type_name();
    return entry(names, descriptionOf(option), column);
}

std::string usageOf(CLI::App const& command)
{
    std::string const path =
        (command.get_parent() ? command.get_parent()->get_name() + " " : "") + command.get_name() + " ";
    CLI::Option const* const argument = argumentOf(command);
    std::string text = "Usage: " + path + "[OPTIONS]" +
                       (argument ? " [" + argumentName(*argument) + "]" : std::string()) + "\n";
    if (!commandsOf(command).empty())
        text += "       " + path + "COMMAND [OPTIONS] ...\n";
    return text;
}

std::string commandList(CLI::App const& app)
{
    constexpr std::size_t column = 14;
    std::string text;
    for (CLI::App const* const command : commandsOf(app))
        text += entry(command->get_name(), command->get_description(), column);
    return text.empty() ? text : "\nCommands:\n" + text;
}

} // namespace

std::string HelpFormatter::make_help(CLI::App const* app, std::string, CLI::AppFormatMode) const
{
    std::string text = app->get_description() + "\n\n" + usageOf(*app) + commandList(*app);
    if (CLI::Option const* const argument = argumentOf(*app))
        text += "\n" + entry(argumentName(*argument), argument->get_description(), 14);
    for (OptionGroup const& group : groupsOf(*app)) {
        text += "\n" + group.name + ":\n";
        for (CLI::Option const* const option : group.options)
            text += entryOf(*option);
    }
    return text + (app->get_footer().empty() ? "" : "\n" + app->get_footer() + "\n");
}

} // namespace sgview
