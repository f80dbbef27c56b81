#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/MeasuredTechnique.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Window/Keys.h"
#include "Viewer/Window/ViewerWindow.h"

#include <filesystem>
#include <iostream>

namespace sgview {

namespace {

/// A window that has nothing but bad news would only have to be closed again.
void checkExistence(std::vector<std::filesystem::path> const& files)
{
    for (std::filesystem::path const& file : files) {
        std::error_code error;
        if (!std::filesystem::exists(file, error))
            throw ImportError(ImportFailure::notFound, file.string(), "there is no such file or command");
    }
}

ChosenTechnique findTechnique(SGRenderer const& renderer, WindowOptions const& options,
                              Messages const& messages)
{
    if (options.technique)
        return {*options.technique, "asked for by --technique"};
    Progress progress = messages.begin("measuring the graphics card");
    return measuredTechnique(renderer, options.module, progress, messages);
}

} // namespace

void run(WindowRequest const& request, Messages const& messages)
{
    if (request.listKeys) {
        std::cout << keyList();
        flushStandardOutput();
        return;
    }
    checkExistence(request.options.files);
    ViewerWindow(request.options, [&](SGRenderer const& renderer) {
        return findTechnique(renderer, request.options, messages);
    }).run();
}

} // namespace sgview
