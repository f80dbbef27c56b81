#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/SharedOptions.h"

namespace sgview {

void addDemoCommand(CLI::App& app, DemoRequest& demo, GeneralOptions& general)
{
    CLI::App* const command = app.add_subcommand("demo", "Draw a scene that shows what the renderer can do");
    command->option_defaults()->group("Output");
    CLI::Option* const output = addOption(*command, "-o,--output", demo.picture.output, asPngPath,
                                          "The PNG file to write; - is standard output")
                                    ->type_name("OUT.png")
                                    ->configurable(false);
    CLI::Option* const window =
        command->add_flag("--window", demo.window, "Show the scene in a window, where it moves")
            ->configurable(false)
            ->excludes(output);
    command->option_defaults()->group("Pose");
    addNumber(*command, "-t,--time", demo.seconds, 0.0, Moments::latest,
              "Moment of the scene, seconds from its start")
        ->type_name("SECONDS")
        ->configurable(false)
        ->excludes(window);
    addDrawingOptions(*command, demo.picture, "the picture or the window");
    window->excludes(command->get_option("--device"));
    addGeneralOptions(*command, general);
    command->callback([output, &demo] {
        if (output->empty() && !demo.window && !demo.picture.device.list)
            throw UsageError("--output is required, or --window");
    });
    command->footer("Examples:\n"
                    "  sgview demo --output demo.png\n"
                    "  sgview demo --window");
}

} // namespace sgview
