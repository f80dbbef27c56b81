#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/SharedOptions.h"
#include "Viewer/Platform/OutputFile.h"

namespace sgview {

namespace {

void addOutputOptions(CLI::App& app, CompareRequest& compare)
{
    app.option_defaults()->group("Output");
    addOption(app, "-o,--output", compare.output, asPngPath,
              "A PNG file to write: every picture beside the plain one, and where they differ")
        ->type_name("SHEET.png")
        ->configurable(false);
    app.add_flag("--json", compare.json, "The table as JSON");
}

} // namespace

void addCompareCommand(CLI::App& app, CompareRequest& compare, GeneralOptions& general)
{
    CLI::App* const command =
        app.add_subcommand("compare", "Draw the same frames by every technique, and say how they differ");
    CLI::Option* const file = addFile(*command, compare.model);
    addAnimation(*command, compare.model.animation, "the first");
    addViewOptions(*command, compare.view);
    addSceneOptions(*command, compare.scene);
    addImportOptions(*command, compare.model.import);

    command->option_defaults()->group("Pose");
    CLI::Option* const demo =
        command->add_flag("--demo", compare.demo, "The demonstration scene in place of a model");
    demo->configurable(false);
    excludeAll(*command, demo);
    addMoments(*command, compare.moments);
    addOutputOptions(*command, compare);
    addModule(*command, compare.module);
    addDevice(*command, compare.device);
    addSize(*command, compare.size, "the frames");
    addGeneralOptions(*command, general);
    command->callback([file, &compare] {
        if (compare.device.list)
            return;
        if (file->empty() && !compare.demo)
            throw UsageError("FILE is required, or --demo");
        if (isStandardOutput(compare.output.value_or("")))
            throw UsageError("--output: standard output takes the table already");
    });
    command->footer("Exit status 1 if any technique draws 1% of a frame otherwise than the plain one.\n"
                    "Examples:\n"
                    "  sgview compare walker.glb --output sheet.png\n"
                    "  sgview compare walker.glb --animation Walk --times 0.1,0.25,0.7 --size 256x256\n"
                    "  sgview compare --demo --json");
}

} // namespace sgview
