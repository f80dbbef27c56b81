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

} // namespace

void run(WindowRequest const& request, Messages const& messages)
{
    if (request.listKeys) {
        std::cout << keyList();
        flushStandardOutput();
        return;
    }
    checkExistence(request.options.files);
    WindowOptions const& options = request.options;
    ViewerWindow(options, techniqueFinder(options.technique, options.module, messages)).run();
}

} // namespace sgview
