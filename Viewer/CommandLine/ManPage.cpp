#include "Viewer/CommandLine/ManPage.h"

#include "Utilities/Strings.h"
#include "Viewer/CommandLine/OptionTable.h"

#include <string_view>

namespace sgview {

namespace {

constexpr std::string_view general = "General";

/// Text that roff takes as it is.
std::string plain(std::string_view text)
{
    std::string result;
    for (char const c : text) {
        bool const startsLine = result.empty() || result.back() == '\n';
        if (startsLine && (c == '.' || c == '\''))
            result += "\\&";
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return result;
}

std::string bold(std::string_view text)
{
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(std::string_view text)
{
    return "\\fI" + plain(text) + "\\fR";
}

/// In lines that an editor likes.
std::string filled(std::string const& text)
{
    constexpr std::size_t width = 72;
    std::vector<std::string> lines = wrapped(text, width);
    for (std::string& line : lines)
        line = plain(line);
    return joined(lines, "\n");
}

std::string sentence(std::string const& text)
{
    return filled(text.ends_with('.') ? text : text + ".");
}

std::string section(std::string const& title, std::string const& content)
{
    return ".SH " + title + "\n" + content;
}

std::string tagged(std::string const& tag, std::string const& text)
{
    return ".TP\n" + tag + "\n" + text + "\n";
}

std::string paragraph(std::string const& text)
{
    return ".PP\n" + text + "\n";
}

std::string path(CLI::App const& command)
{
    return (command.get_parent() ? command.get_parent()->get_name() + " " : "") + command.get_name();
}

std::string synopsisOf(CLI::App const& command)
{
    std::string text = bold(path(command)) + " [" + italic("OPTIONS") + "]";
    if (CLI::Option const* const argument = argumentOf(command))
        text += " [" + italic(argument->get_name()) + (takesSeveral(*argument) ? "...]" : "]");
    return text + "\n";
}

std::string synopsis(CLI::App const& app)
{
    std::string text = synopsisOf(app);
    for (CLI::App const* const command : commandsOf(app))
        text += ".br\n" + synopsisOf(*command);
    return text;
}

std::string commandList(CLI::App const& app)
{
    std::string text = "Without a command, the models are shown in a window.\n";
    for (CLI::App const* const command : commandsOf(app))
        text += tagged(bold(command->get_name()), sentence(command->get_description()));
    return text;
}

std::string entryOf(CLI::Option const& option)
{
    std::string names;
    for (std::string const& name : namesOf(option))
        names += (names.empty() ? "" : ", ") + bold(name);
    if (takesValue(option))
        names += " " + italic(option.get_type_name());
    return tagged(names, sentence(descriptionOf(option)));
}

std::string groupsIn(CLI::App const& command, bool isGeneral)
{
    std::string text;
    for (OptionGroup const& group : groupsOf(command)) {
        if ((group.name == general) != isGeneral)
            continue;
        for (CLI::Option const* const option : group.options)
            text += entryOf(*option);
    }
    return text;
}

std::string optionsOfCommand(CLI::App const& command)
{
    std::string text = ".SS " + path(command) + "\n" + sentence(command.get_description()) + "\n";
    if (command.get_parent() && !notesOf(command).empty())
        text += paragraph(filled(notesOf(command)));
    if (CLI::Option const* const argument = argumentOf(command))
        text += tagged(italic(argumentName(*argument)), sentence(argument->get_description()));
    return text + groupsIn(command, false);
}

std::string options(CLI::App const& app)
{
    std::string text = optionsOfCommand(app);
    for (CLI::App const* const command : commandsOf(app))
        text += optionsOfCommand(*command);
    return text + ".SS Every command\n" + groupsIn(app, true);
}

/// What is indented in a footer is typed as it stands; the rest is said in between.
std::string examplesIn(CLI::App const& command)
{
    std::string text;
    bool isTyped = false;
    for (std::string const& line : string_split(examplesOf(command), '\n')) {
        if (line.starts_with("Example") || line.empty())
            continue;
        if (line.starts_with(' ') != isTyped)
            text += isTyped ? ".fi\n.RE\n.PP\n" : ".RS 4\n.nf\n";
        isTyped = line.starts_with(' ');
        text += (isTyped ? plain(line.substr(2)) : filled(line)) + "\n";
    }
    return text + (isTyped ? ".fi\n.RE\n" : "");
}

std::string examples(CLI::App const& app)
{
    std::string text;
    for (CLI::App const* const command : commandsOf(app))
        if (!examplesOf(*command).empty())
            text += ".SS " + path(*command) + "\n" + examplesIn(*command);
    return text;
}

std::string configuration()
{
    return filled(
               "What options are not given is taken from the configuration file: a line for each, "
               "name = value, with the long name without dashes. A value is a word, a text in quotes, true "
               "or false where the option takes no value, or a list of texts in brackets where it may be "
               "given more than once. Paths start from the file's folder. # starts a comment.") +
           "\n" +
           paragraph(
               filled("What stands before the first section holds for every command that has the option, "
                      "what stands in a section such as [render] for that command, and in [window] for the "
                      "window. The section comes before what holds for every command, and the command "
                      "line before both: there, --wireframe=false takes back what the file switches on.")) +
           paragraph(filled("What says what is to be done this time, such as the output, has no place in the "
                            "file. sgview --print-config prints one with everything that has.")) +
           ".PP\n.RS 4\n.nf\ntechnique = vbo\n\n[render]\nsize = 640x480\nbackground = "
           "transparent\n.fi\n.RE\n";
}

std::string files()
{
    return tagged(italic("$XDG_CONFIG_HOME/sgview/config"), "The configuration file.") +
           tagged(italic("$XDG_CONFIG_HOME/sgview/preferences"),
                  "Which sections of the window's panel are unfolded.") +
           tagged(italic("$XDG_CONFIG_HOME/OpenGLRenderer/preferences"),
                  "What the graphics diagnostic found out about the graphics card.");
}

std::string environment()
{
    std::string text;
    for (auto const& [name, meaning] : std::initializer_list<std::pair<char const*, char const*>>{
             {"XDG_CONFIG_HOME",
              "Where configuration files are; .config in the home folder where it is not set."},
             {"XDG_PICTURES_DIR",
              "Where the window keeps pictures; what the desktop says where it is not set."},
             {"SG_MODULE_PATH",
              "Folders with colons between, in which the renderer module is looked for first."},
             {"SG_ASSET_PATH", "Folders with colons between, in which shaders are looked for first."},
             {"DISPLAY, WAYLAND_DISPLAY", "The screen that the window opens on."}})
        text += tagged(bold(name), filled(meaning));
    return text;
}

std::string exitStatus()
{
    return tagged(bold("0"), "Done.") + tagged(bold("1"), "Bad input, or a failed job.") +
           tagged(bold("2"), "Bad usage, or a broken configuration file.");
}

} // namespace

std::string manPage(CLI::App const& app)
{
    return ".TH SGVIEW 1 " SG_BUILD_DATE " \"sgview " SG_VERSION "\" \"User Commands\"\n" +
           section("NAME", "sgview \\- view 3D models, and draw them into pictures and films\n") +
           section("SYNOPSIS", synopsis(app)) +
           section("DESCRIPTION",
                   bold("sgview") +
                       " opens 3D model files, plays their animations and draws them into pictures,\n"
                       "with or without a screen, by the fixed\\-function OpenGL pipeline.\n" +
                       "Options come after the command.\n") +
           section("COMMANDS", commandList(app)) + section("OPTIONS", options(app)) +
           section("CONFIGURATION", configuration()) + section("FILES", files()) +
           section("ENVIRONMENT", environment()) + section("EXIT STATUS", exitStatus()) +
           section("EXAMPLES", examples(app)) + section("SEE ALSO", ".BR ffmpeg (1),\n.BR parallel (1)\n");
}

} // namespace sgview
