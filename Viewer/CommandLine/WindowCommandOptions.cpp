#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/SharedOptions.h"
#include "Viewer/Window/ScreenMeasures.h"

namespace sgview {

void addWindowOptions(CLI::App& app, WindowRequest& window)
{
    WindowOptions& options = window.options;
    addFiles(app, options.files, "Models to look at in a window, or folders of them");
    app.option_defaults()->group("Window");
    addSize(app, options.size, "the window", "pixels of a screen of usual density");
    addOption(
        app, "--ui-scale", options.scale,
        [](std::string const& text) {
            return parseNumber(text, ScreenMeasures::smallestScale, ScreenMeasures::largestScale);
        },
        "How large texts and widgets are: 1 on a screen of usual density, 2 twice as large (default: as the "
        "desktop has it)")
        ->type_name("FACTOR");
    addOption(app, "--screenshot-name", options.screenshotName, parseScreenshotName,
              "Name of the pictures that the window saves in your pictures folder; {model}, {date}, {time} "
              "and {number} are filled in")
        ->default_str(options.screenshotName)
        ->type_name("TEMPLATE");
    app.add_flag("--list-keys", window.listKeys, "Print what the window's keys do and exit")
        ->configurable(false);
    addAnimation(app, options.animation, "the first, paused");
    addTechnique(app, options.technique);
    addModule(app, options.module);
    addViewOptions(app, options.view);
    addSceneOptions(app, options.scene);
    addImportOptions(app, options.import);
}

} // namespace sgview
