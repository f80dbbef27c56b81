#include "Viewer/CommandLine/Completion.h"

#include "Viewer/CommandLine/OptionTable.h"
#include "Viewer/Import/FileKind.h"

#include <string_view>

namespace sgview {

namespace {

/// What the script needs whatever the table holds: words that bash breaks at "=" are put together again.
constexpr std::string_view start = R"(# Completion of sgview for bash; made by sgview --print-completion bash.

_sgview_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_sgview_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "$current")
}

_sgview_models() {
    local name
    compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        case ${name,,} in
        )";

constexpr std::string_view afterSuffixes = R"() COMPREPLY+=("$name") ;;
        *) [[ -d $name ]] && COMPREPLY+=("$name") ;;
        esac
    done < <(compgen -f -- "$current")
}

_sgview() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]} command=window
    if [[ $current == '=' ]]; then
        current=''
    elif [[ $option == '=' ]]; then
        option=${COMP_WORDS[COMP_CWORD-2]}
    fi
    COMPREPLY=()
    if ((COMP_CWORD > 1)); then
        case ${COMP_WORDS[1]} in
        )";

constexpr std::string_view afterCommands = R"() command=${COMP_WORDS[1]} ;;
        esac
    fi
    case "$command $option" in
)";

constexpr std::string_view afterValues = R"(    esac
    case "$command $current" in
)";

constexpr std::string_view beforeCommands = R"(    esac
    if ((COMP_CWORD == 1)) && [[ $current != -* ]]; then
        local models=("${COMPREPLY[@]}")
        _sgview_words ')";

constexpr std::string_view end = R"('
        COMPREPLY+=("${models[@]}")
    fi
}

complete -F _sgview sgview
)";

std::string suffixPatterns()
{
    std::vector<std::string> patterns;
    for (std::string_view const extension : modelExtensions())
        patterns.push_back("*." + std::string(extension));
    return joined(patterns, " | ");
}

std::string actionFor(Values const& values)
{
    switch (values.files) {
    case Values::Files::models:
        return "_sgview_models" +
               (values.words.empty()
                    ? ""
                    : "; COMPREPLY+=($(compgen -W '" + joined(values.words, " ") + "' -- \"$current\"))");
    case Values::Files::folders:
        return "_sgview_files -d";
    case Values::Files::any:
        return "_sgview_files -f";
    case Values::Files::none:
        break;
    }
    return values.words.empty() ? ":" : "_sgview_words '" + joined(values.words, " ") + "'";
}

std::string valuesIn(CLI::App const& app, std::string const& name, CLI::App const& command)
{
    std::string text;
    for (CLI::Option const* const option : optionsOf(command)) {
        if (!takesValue(*option))
            continue;
        std::vector<std::string> patterns;
        for (std::string const& written : namesOf(*option))
            patterns.push_back("'" + name + " " + written + "'");
        text += "    " + joined(patterns, " | ") + ") " + actionFor(valuesOf(app, *option)) + "; return ;;\n";
    }
    return text;
}

std::string optionsIn(CLI::App const& app, std::string const& name, CLI::App const& command)
{
    std::vector<std::string> names;
    for (CLI::Option const* const option : optionsOf(command))
        for (std::string const& written : namesOf(*option))
            names.push_back(written);
    CLI::Option const* const argument = argumentOf(command);
    return "    '" + name + " -'*) _sgview_words '" + joined(names, " ") + "' ;;\n    '" + name + " '*) " +
           actionFor(argument ? valuesOf(app, *argument) : Values{}) + " ;;\n";
}

} // namespace

std::string bashCompletion(CLI::App const& app)
{
    std::vector<std::string> names;
    std::string values = valuesIn(app, "window", app);
    std::string options = optionsIn(app, "window", app);
    for (CLI::App const* const command : commandsOf(app)) {
        names.push_back(command->get_name());
        values += valuesIn(app, names.back(), *command);
        options += optionsIn(app, names.back(), *command);
    }
    return joined({std::string(start), suffixPatterns(), std::string(afterSuffixes), joined(names, " | "),
                   std::string(afterCommands), values, std::string(afterValues), options,
                   std::string(beforeCommands), joined(names, " "), std::string(end)},
                  "");
}

} // namespace sgview
