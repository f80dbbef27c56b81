#include "Viewer/CommandLine/Completion.h"

#include "Viewer/CommandLine/OptionTable.h"
#include "Viewer/Import/FileKind.h"

#include <string_view>

namespace sgview {

namespace {

std::string literal(std::string_view text)
{
    std::string result = "'";
    for (char const c : text)
        result += c == '\'' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return result + "'";
}

/// What follows an option.
std::string actionFor(Values const& values)
{
    switch (values.files) {
    case Values::Files::models: {
        std::string suffixes;
        for (std::string_view const extension : modelExtensions())
            suffixes += " ." + std::string(extension);
        std::string const models = "(__fish_complete_suffix" + suffixes + ")";
        return values.words.empty() ? " -f -k -a " + literal(models)
                                    : " -x -k -a " + literal(joined(values.words, " ") + " " + models);
    }
    case Values::Files::folders:
        return " -x -a " + literal("(__fish_complete_directories)");
    case Values::Files::any:
        return " -r -F";
    case Values::Files::none:
        break;
    }
    return values.words.empty() ? " -x" : " -x -a " + literal(joined(values.words, " "));
}

std::string completionsOf(CLI::App const& app, CLI::App const& command, std::string const& condition)
{
    std::string const start = "complete -c sgview -n " + literal(condition);
    std::string text;
    for (CLI::Option const* const option : optionsOf(command)) {
        text += start;
        for (std::string const& name : option->get_snames())
            text += " -s " + name;
        for (std::string const& name : option->get_lnames())
            text += " -l " + name;
        if (takesValue(*option))
            text += actionFor(valuesOf(app, *option));
        text += " -d " + literal(summaryOf(*option)) + "\n";
    }
    CLI::Option const* const argument = argumentOf(command);
    return text + start + (argument ? actionFor(valuesOf(app, *argument)) : " -f") + "\n";
}

} // namespace

std::string fishCompletion(CLI::App const& app)
{
    std::vector<std::string> names;
    std::string commands;
    for (CLI::App const* const command : commandsOf(app)) {
        std::string const name = command->get_name();
        names.push_back(name);
        commands += "complete -c sgview -n __fish_use_subcommand -a " + name + " -d " +
                    literal(command->get_description()) + "\n" +
                    completionsOf(app, *command, "__fish_seen_subcommand_from " + name);
    }
    return "# Completion of sgview for fish; made by sgview --print-completion fish.\n" +
           completionsOf(app, app, "not __fish_seen_subcommand_from " + joined(names, " ")) + commands;
}

} // namespace sgview
