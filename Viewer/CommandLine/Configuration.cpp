#include "Viewer/CommandLine/Configuration.h"

#include "Utilities/PrefsFile.h"
#include "Viewer/CommandLine/ConfigurationText.h"
#include "Viewer/CommandLine/OptionTable.h"
#include "Viewer/CommandLine/UsageError.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace sgview {

namespace {

namespace fs = std::filesystem;

using Entries = std::vector<ConfigurationEntry>;

constexpr std::size_t longestFile = 1U << 20;

void refuseToWait(fs::path const& file)
{
    std::error_code ignored;
    fs::file_type const kind = fs::status(file, ignored).type();
    if (kind == fs::file_type::fifo || kind == fs::file_type::socket)
        throw UsageError(file.string() + ": a " + (kind == fs::file_type::fifo ? "pipe" : "socket") +
                         ", not a file");
}

std::string contentOf(fs::path const& file)
{
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    std::string text(longestFile + 1, '\0');
    if (!stream || (!stream.read(text.data(), static_cast<std::streamsize>(text.size())) && !stream.eof()))
        throw UsageError(file.string() + ": " +
                         (errno == ENOENT ? "there is no such file"
                                          : std::generic_category().message(errno != 0 ? errno : EIO)));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > longestFile)
        throw UsageError(file.string() + ": too long for a configuration file");
    return text;
}

std::string sectionOf(CLI::App const& command)
{
    return command.get_parent() ? command.get_name() : "window";
}

std::vector<CLI::App*> allOf(CLI::App& app)
{
    std::vector<CLI::App*> commands = app.get_subcommands([](CLI::App const*) { return true; });
    commands.insert(commands.begin(), &app);
    return commands;
}

CLI::Option* optionFor(CLI::App& command, std::string const& name)
{
    CLI::Option* const option = command.get_option_no_throw("--" + name);
    return option && option->get_configurable() ? option : nullptr;
}

void checkPlace(CLI::App& app, ConfigurationEntry const& entry)
{
    bool isSection = entry.section.empty();
    for (CLI::App* const command : allOf(app)) {
        bool const isMeant = entry.section.empty() || entry.section == sectionOf(*command);
        isSection = isSection || isMeant;
        if (isMeant && optionFor(*command, entry.name))
            return;
    }
    if (!isSection)
        throw ConfigurationError(entry.sectionLine, "there is no command " + entry.section);
    std::string const what =
        entry.section.empty() ? "no command has an option " : entry.section + " has no option ";
    throw ConfigurationError(entry.line, what + entry.name + " that can be set here");
}

bool isGiven(CLI::Option const* option)
{
    return option->count() > 0;
}

/// How the entries of a file are taken.
struct Reading {
    fs::path folder; ///< that paths start from
    ConfigurationUse use;
};

bool fits(CLI::Option const& option, ConfigurationUse use)
{
    bool const hasNeeds =
        use == ConfigurationUse::printing || std::ranges::all_of(option.get_needs(), isGiven);
    return option.empty() && hasNeeds && std::ranges::none_of(option.get_excludes(), isGiven);
}

void checkForm(ConfigurationEntry const& entry, CLI::Option const& option)
{
    std::string const& value = entry.values.empty() ? std::string() : entry.values.front();
    if (entry.isList && !takesSeveral(option))
        throw ConfigurationError(entry.line, entry.name + " takes no list");
    if (!takesValue(option) && value != "true" && value != "false")
        throw ConfigurationError(entry.line, entry.name + " is true or false");
    if (isQuestion(option, value))
        throw ConfigurationError(entry.line, entry.name + ": " + value + " is for the command line alone");
}

/// An empty path is left to the option to refuse.
std::vector<std::string> valuesFor(CLI::Option const& option, ConfigurationEntry const& entry,
                                   fs::path const& folder)
{
    std::vector<std::string> values = entry.values;
    if (takesPath(option))
        for (std::string& value : values)
            value = value.empty() ? value : fs::absolute(folder / value).lexically_normal().string();
    return values;
}

void apply(ConfigurationEntry const& entry, CLI::Option& option, Reading const& reading)
{
    checkForm(entry, option);
    if (entry.values.empty() || !fits(option, reading.use))
        return;
    option.add_result(valuesFor(option, entry, reading.folder));
    try {
        option.run_callback();
    } catch (UsageError const& error) {
        throw ConfigurationError(entry.line, error.what());
    }
}

void applyTo(CLI::App& command, Entries const& entries, std::string const& section, Reading const& reading)
{
    for (ConfigurationEntry const& entry : entries) {
        CLI::Option* const option = optionFor(command, entry.name);
        if (entry.section == section && option)
            apply(entry, *option, reading);
    }
}

/// The default, or what stands for a value where that takes words.
std::string usualValue(CLI::Option const& option)
{
    std::string const usual = option.get_default_str();
    return usual.empty() ? option.get_type_name() : usual;
}

std::string setting(CLI::Option const& option)
{
    std::string const name = (isGiven(&option) ? "" : "#") + plainName(option) + " = ";
    if (!takesValue(option))
        return name + (isGiven(&option) && option.as<bool>() ? "true" : "false");
    std::vector<std::string> values;
    for (std::string const& value : isGiven(&option) ? option.results() : std::vector{usualValue(option)})
        values.push_back(quotedValue(value));
    return name + (takesSeveral(option) ? "[" + joined(values, ", ") + "]" : values.front());
}

std::string sectionText(CLI::App const& command)
{
    constexpr std::size_t width = 98;
    std::string text;
    for (CLI::Option const* const option : optionsOf(command)) {
        if (!option->get_configurable())
            continue;
        text += "\n";
        for (std::string const& line : wrapped(descriptionOf(*option), width))
            text += "# " + line + "\n";
        text += setting(*option) + "\n";
    }
    return text.empty() ? text : "\n[" + sectionOf(command) + "]\n" + text;
}

} // namespace

void applyConfiguration(CLI::App& app, fs::path const& file, ConfigurationOrigin origin, ConfigurationUse use)
{
    Reading const reading{file.parent_path(), use};
    try {
        if (origin == ConfigurationOrigin::usual)
            refuseToWait(file);
        Entries const entries = readConfiguration(contentOf(file));
        for (ConfigurationEntry const& entry : entries)
            checkPlace(app, entry);
        for (CLI::App* const command : allOf(app)) {
            applyTo(*command, entries, sectionOf(*command), reading);
            applyTo(*command, entries, "", reading);
        }
    } catch (ConfigurationError const& error) {
        throw UsageError(file.string() + ":" + std::to_string(error.line) + ": " + error.what());
    }
}

std::optional<fs::path> usualConfigurationFile()
{
    std::optional<fs::path> const preferences = PrefsFile::usualFolder();
    if (!preferences)
        return std::nullopt;
    return preferences->parent_path() / "sgview" / "config";
}

std::string configurationOf(CLI::App const& app)
{
    std::optional<fs::path> const file = usualConfigurationFile();
    std::string text =
        "# What sgview takes where the command line says nothing, from " +
        (file ? file->string() : "a file that --config names") +
        ".\n# What stands before the first section holds for every command. Paths start from the "
        "file's folder.\n";
    text += sectionText(app);
    for (CLI::App const* const command : commandsOf(app))
        text += sectionText(*command);
    return text;
}

} // namespace sgview
