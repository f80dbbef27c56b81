#include "Viewer/CommandLine/CommandTable.h"

#include "Viewer/CommandLine/CommandOptions.h"
#include "Viewer/CommandLine/Completion.h"
#include "Viewer/CommandLine/Configuration.h"
#include "Viewer/CommandLine/HelpFormatter.h"
#include "Viewer/CommandLine/ManPage.h"
#include "Viewer/CommandLine/OptionTable.h"
#include "Viewer/CommandLine/SharedOptions.h"

#include <algorithm>

namespace sgview {

namespace {

std::string completionFor(Shell shell, CLI::App const& app)
{
    switch (shell) {
    case Shell::bash:
        return bashCompletion(app);
    case Shell::zsh:
        return zshCompletion(app);
    case Shell::fish:
        return fishCompletion(app);
    }
    return {};
}

/// What stands before a command is the window's, and would be lost.
void checkNothingBefore(CLI::App const& app, std::string const& command)
{
    for (CLI::Option const* const option : app.get_options())
        if (option->count() > 0)
            throw UsageError(option->get_name() + " stands before the command " + command +
                             "; what a command is to know comes after it");
}

} // namespace

CommandTable::CommandTable() : app_("Draws 3D models, and says what is in them.", "sgview")
{
    app_.formatter(std::make_shared<HelpFormatter>());
    app_.require_subcommand(0, 1); // what follows a command may be called as another is
    addWindowOptions(app_, window_);
    addPrintOptions();
    addGeneralOptions(app_, general_[""]);
    addRenderCommand(app_, render_, general_["render"]);
    addInfoCommand(app_, info_, general_["info"]);
    addDemoCommand(app_, demo_, general_["demo"]);
    addCompareCommand(app_, compare_, general_["compare"]);
    addDiagnoseCommand(app_, diagnose_, diagnosedModel_, general_["diagnose"]);
    addBenchCommand(app_, bench_, general_["bench"]);
    addHelpCommand();
    app_.footer("sgview COMMAND --help tells the options of a command.\n"
                "Exit status: 0 done, 1 bad input or a failed job, 2 bad usage.");
    app_.parse_complete_callback([this] { complete(); });
}

void CommandTable::parse(int argc, char const* const* argv)
{
    try {
        app_.parse(argc, argv);
    } catch (CLI::Success const&) {
        throw;
    } catch (CLI::ExtrasError const&) {
        std::string const word = app_.remaining(true).front();
        std::string const command = nameOfCommand();
        throw UsageError((word.starts_with('-') ? "unknown option " : "unexpected argument ") + word +
                         "; see sgview " + (command.empty() ? "" : command + " ") + "--help");
    } catch (CLI::ParseError const& error) {
        throw UsageError(error.what());
    }
}

std::optional<std::string> CommandTable::answer() const
{
    if (!helpFor_.empty())
        return app_.get_subcommand(helpFor_)->help();
    if (app_.got_subcommand("help"))
        return app_.get_formatter()->make_help(&app_, "", CLI::AppFormatMode::Normal);
    if (printsCompletion_)
        return completionFor(*printsCompletion_, app_);
    if (printsManual_)
        return manPage(app_);
    if (printsConfiguration_)
        return configurationOf(app_);
    return std::nullopt;
}

CommandLine CommandTable::commandLine() const
{
    std::string const command = nameOfCommand();
    MessageOptions const& messages = general_.at(command).messages;
    if (command == "render")
        return {messages, render_};
    if (command == "info")
        return {messages, info_};
    if (command == "demo")
        return {messages, demo_};
    if (command == "compare")
        return {messages, compare_};
    if (command == "diagnose")
        return {messages, diagnose_};
    if (command == "bench")
        return {messages, bench_};
    return {messages, window_};
}

void CommandTable::addPrintOptions()
{
    app_.option_defaults()->group("About sgview itself");
    app_.add_flag("--print-config", printsConfiguration_,
                  "Print a configuration file of what holds, with all that can be set, and exit")
        ->configurable(false);
    addOption(app_, "--print-completion", printsCompletion_, parseShell,
              "Print a script by which bash, zsh or fish completes what you type, and exit")
        ->type_name("SHELL")
        ->configurable(false);
    app_.add_flag("--print-man", printsManual_, "Print the manual in the man format and exit")
        ->configurable(false);
}

void CommandTable::addHelpCommand()
{
    CLI::App* const help = app_.add_subcommand("help", "Print the help of a command");
    help->set_help_flag("-h,--help", "Print this help and exit")->group("General");
    help->add_option_function<std::string>(
            "COMMAND",
            [this](std::string const& name) {
                if (std::ranges::count(commandsOf(app_), name, &CLI::App::get_name) == 0)
                    throw UsageError("there is no command " + name);
                helpFor_ = name;
            },
            "The command; all of sgview where none is named")
        ->type_name("")
        ->configurable(false);
}

void CommandTable::complete()
{
    std::string const command = nameOfCommand();
    if (!command.empty())
        checkNothingBefore(app_, command);
    GeneralOptions const& general = general_[command];
    if (asksForItself() || general.noConfiguration)
        return;
    auto const use = printsConfiguration_ ? ConfigurationUse::printing : ConfigurationUse::running;
    if (general.configuration)
        applyConfiguration(app_, *general.configuration, ConfigurationOrigin::named, use);
    else if (auto const usual = usualConfigurationFile(); usual && std::filesystem::exists(*usual))
        applyConfiguration(app_, *usual, ConfigurationOrigin::usual, use);
}

std::string CommandTable::nameOfCommand() const
{
    std::vector<CLI::App*> const used = app_.get_subcommands();
    return used.empty() ? std::string() : used.front()->get_name();
}

bool CommandTable::asksForItself() const
{
    return app_.got_subcommand("help") || printsCompletion_ || printsManual_ || window_.listKeys;
}

} // namespace sgview
