#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/SharedOptions.h"

namespace sgview {

void addDemoCommand(CLI::App& app, DemoRequest& demo, GeneralOptions& general)
{
    CLI::App* const command = app.add_subcommand("demo", "Draw a scene that shows what the renderer can do");
    command->option_defaults()->group("Output");
    addOption(*command, "-o,--output", demo.picture.output, asPath,
              "The PNG file to write; - is standard output")
        ->type_name("OUT.png")
        ->configurable(false)
        ->required();
    command->option_defaults()->group("Pose");
    addNumber(*command, "-t,--time", demo.seconds, 0.0, Moments::latest,
              "Moment of the scene, seconds from its start")
        ->type_name("SECONDS")
        ->configurable(false);
    addDrawingOptions(*command, demo.picture);
    addGeneralOptions(*command, general);
    command->footer("Example:\n"
                    "  sgview demo --output demo.png");
}

} // namespace sgview
