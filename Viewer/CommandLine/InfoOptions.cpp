#include "Viewer/CommandLine/CommandOptions.h"

#include "Viewer/CommandLine/SharedOptions.h"

namespace sgview {

void addInfoCommand(CLI::App& app, InfoRequest& info, GeneralOptions& general)
{
    CLI::App* const command =
        app.add_subcommand("info", "Say what is in models, and where their surfaces are");
    CLI::Option* const file = addFiles(*command, info.files, "The models");
    addPoseOptions(*command, info.model);
    addImportOptions(*command, info.model.import);

    command->option_defaults()->group("Graphics");
    CLI::Option* const gpu = command->add_flag(
        "--gpu", info.gpu,
        "What the graphics driver says of itself, in place of models, and how sgview draws");
    gpu->configurable(false);
    excludeAll(*command, gpu);
    addModule(*command, info.module)->group("Graphics")->needs(gpu);
    addDevice(*command, info.device)->group("Graphics")->excludes(file);
    command->option_defaults()->group("Output");
    command->add_flag("--json", info.json, "As JSON; of several models, a line each");
    addGeneralOptions(*command, general);
    command->callback([file, &info] {
        if (file->empty() && !info.gpu && !info.device.list)
            throw UsageError("FILE is required, or --gpu");
    });
    command->footer("Examples:\n"
                    "  sgview info duck.dae\n"
                    "  sgview info --gpu\n"
                    "  sgview info walker.glb --animation 0 --time 0.4 --json\n"
                    "  sgview info *.glb --json | jq -r 'select(.warnings != []) | .file'");
}

} // namespace sgview
