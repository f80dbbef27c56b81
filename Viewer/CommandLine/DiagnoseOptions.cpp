#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/SharedOptions.h"
#include "Viewer/Platform/OutputFile.h"

#include <algorithm>

namespace sgview {

namespace {

void addDiagnosedModel(CLI::App& app, ModelRequest& model, Moments& moments, CLI::Option& file)
{
    std::vector<CLI::Option*> const before = app.get_options();
    addAnimation(app, model.animation, "the first");
    addMoments(app, moments);
    addSearchOptions(app, model.import);
    for (CLI::Option* const option : app.get_options())
        if (std::ranges::find(before, option) == before.end())
            option->needs(&file);
}

/// A file to write about the run.
CLI::Option* addOutput(CLI::App& app, std::string const& name, std::optional<std::filesystem::path>& file,
                       std::string const& what, std::string const& placeholder)
{
    return addOption(app, name, file, asPath,
                     what + " to write about the run, or - for standard output; measures anew")
        ->type_name(placeholder)
        ->configurable(false);
}

/// A flag as with other commands, that may name a file.
CLI::Option* addJson(CLI::App& app, std::optional<std::filesystem::path>& file)
{
    return addOption(
               app, "--json", file,
               [](std::string const& text) { return std::filesystem::path(text.empty() ? "-" : text); },
               "All about the run as JSON, on standard output or in a FILE that is named; measures anew")
        ->expected(0, 1)
        ->type_name("[FILE]")
        ->configurable(false);
}

} // namespace

void addDiagnoseCommand(CLI::App& app, DiagnoseRequest& diagnose, ModelRequest& model,
                        GeneralOptions& general)
{
    CLI::App* const command =
        app.add_subcommand("diagnose", "Measure the graphics card, and say which techniques it is good for");
    command->option_defaults()->group("Diagnostic");
    CLI::Option* const force = command->add_flag(
        "--force", diagnose.force, "Measure even where the stored verdict holds, or the last run died");
    force->configurable(false);
    CLI::Option* const why = command->add_flag(
        "--why", diagnose.why,
        "Measure nothing: the stored verdict, and why it holds or not, and what a run died of");
    why->configurable(false);
    CLI::Option* const report =
        addOutput(*command, "--report", diagnose.report, "An HTML file with pictures", "FILE.html");
    CLI::Option* const json = addJson(*command, diagnose.json);
    CLI::Option* const file = addOption(*command, "--model", model.file, asPath,
                                        "Also try every technique on this model: is it the file or the "
                                        "driver that makes a picture wrong?")
                                  ->type_name("FILE")
                                  ->configurable(false);
    CLI::Option* const timeLimit =
        addOption(
            *command, "--time-limit", diagnose.timeLimit,
            [](std::string const& text) { return parseWhole(text, 1, mostSeconds); },
            "How long the run may be without a sign of life (default: 60), and the import of the model may "
            "take (default: 10), seconds")
            ->type_name("SECONDS");
    addDiagnosedModel(*command, model, diagnose.moments, *file);
    for (CLI::Option* const option : {force, report, json, file, timeLimit})
        why->excludes(option);
    for (CLI::Option* const option : {report, json})
        file->excludes(option);
    addModule(*command, diagnose.module);
    addDevice(*command, diagnose.device);
    addGeneralOptions(*command, general);
    command->callback([file, &model, &diagnose] {
        if (isStandardOutput(diagnose.report.value_or("")) && isStandardOutput(diagnose.json.value_or("")))
            throw UsageError("--json: standard output takes the report already");
        if (!file->empty()) {
            model.import.limits.seconds = diagnose.timeLimit.value_or(model.import.limits.seconds);
            diagnose.model = model;
        }
    });
    command->footer("The verdict is kept with the user's preferences, and measured by the first command that "
                    "draws\nwhere there is none that holds.\n"
                    "Exit status 1 if a run died, or a technique draws the model otherwise than the plain "
                    "one.\n"
                    "Examples:\n"
                    "  sgview diagnose --force\n"
                    "  sgview diagnose --report card.html\n"
                    "  sgview diagnose --json | jq .verdict\n"
                    "  sgview diagnose --why\n"
                    "  sgview diagnose --model walker.glb --animation Walk");
}

} // namespace sgview
