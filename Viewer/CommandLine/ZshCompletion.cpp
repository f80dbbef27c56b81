#include "Viewer/CommandLine/Completion.h"

#include "Viewer/CommandLine/OptionTable.h"
#include "Viewer/Import/FileKind.h"

#include <string_view>

namespace sgview {

namespace {

/// For a text inside single quotes, in which zsh's _arguments gives brackets and colons a meaning.
std::string literal(std::string_view text)
{
    std::string result;
    for (char const c : text) {
        if (c == '\'')
            result += "'\\''";
        else if (std::string_view("[]:\\").find(c) != std::string_view::npos)
            result += std::string("\\") + c;
        else
            result += c;
    }
    return result;
}

std::string actionFor(Values const& values)
{
    switch (values.files) {
    case Values::Files::models: {
        std::vector<std::string> const suffixes(modelExtensions().begin(), modelExtensions().end());
        std::string const models = "_files -g \"*.(#i)(" + joined(suffixes, "|") + ")(-.)\"";
        return values.words.empty() ? models
                                    : "{compadd - " + joined(values.words, " ") + "; " + models + "}";
    }
    case Values::Files::folders:
        return "_files -/";
    case Values::Files::any:
        return "_files";
    case Values::Files::none:
        break;
    }
    return values.words.empty() ? " " : "(" + joined(values.words, " ") + ")";
}

/// How _arguments wants to hear that a value follows.
std::string valueMark(CLI::Option const& option, std::string const& name)
{
    if (!takesValue(option))
        return {};
    return name.starts_with("--") ? "=" : "+";
}

std::string specOf(CLI::App const& app, CLI::Option const& option)
{
    std::string names;
    for (std::string const& name : namesOf(option))
        names += (names.empty() ? "" : ",") + name + valueMark(option, name);
    std::vector<std::string> const all = namesOf(option);
    std::string const others = takesSeveral(option) ? "*" : "(" + joined(all, " ") + ")";
    std::string text = "        '" + others + "'" + (all.size() > 1 ? "{" + names + "}" : names) + "'[" +
                       literal(summaryOf(option)) + "]";
    if (takesValue(option))
        text += (needsValue(option) ? ":" : "::") + literal(option.get_type_name()) + ":" +
                actionFor(valuesOf(app, option));
    return text + "' \\\n";
}

std::string argumentsOf(CLI::App const& app, CLI::App const& command)
{
    std::string text = "    _arguments -s -S : \\\n";
    for (CLI::Option const* const option : optionsOf(command))
        text += specOf(app, *option);
    if (CLI::Option const* const argument = argumentOf(command))
        text += "        '" + std::string(takesSeveral(*argument) ? "*" : "1") + ":" +
                literal(argument->get_name()) + ":" + actionFor(valuesOf(app, *argument)) + "' \\\n";
    return text.erase(text.rfind(" \\")) + "\n";
}

std::string functionFor(CLI::App const& app, std::string const& name, CLI::App const& command)
{
    return "_sgview_" + name + "() {\n" + argumentsOf(app, command) + "}\n\n";
}

} // namespace

std::string zshCompletion(CLI::App const& app)
{
    std::string functions = functionFor(app, "window", app);
    std::string names;
    std::string described;
    for (CLI::App const* const command : commandsOf(app)) {
        std::string const name = command->get_name();
        functions += functionFor(app, name, *command);
        names += (names.empty() ? "" : "|") + name;
        described += "        '" + name + ":" + literal(command->get_description()) + "'\n";
    }
    return "#compdef sgview\n# Completion of sgview for zsh; made by sgview --print-completion zsh.\n\n" +
           functions +
           "_sgview() {\n"
           "    local -a commands=(\n" +
           described +
           "    )\n"
           "    if ((CURRENT > 2)) && [[ $words[2] == (" +
           names +
           ") ]]; then\n"
           "        shift words\n"
           "        ((CURRENT--))\n"
           "        _sgview_$words[1]\n"
           "        return\n"
           "    fi\n"
           "    local found=1\n"
           "    if ((CURRENT == 2)) && [[ $words[2] != -* ]]; then\n"
           "        _describe -t commands command commands && found=0\n"
           "    fi\n"
           "    _sgview_window && found=0\n"
           "    return found\n"
           "}\n\n"
           "_sgview \"$@\"\n";
}

} // namespace sgview
