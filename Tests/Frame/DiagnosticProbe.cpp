// Runs the graphics diagnostic by a scripted clock in a fresh process; writes to standard output what came of
// it, the log first and then the pictures.

#include "Tests/Frame/DiagnosticRecord.h"

#include "Utilities/MemoryPrefs.h"
#include "Viewer/Platform/OffscreenRenderer.h"

#include <exception>
#include <iostream>

int main()
{
    try {
        PrefsFactory::setMaker([] { return make_smart<MemoryPrefs>(); });
        LogRecord log;
        sgview::OffscreenRenderer const renderer({512, 512});
        DiagnosticRecord const record = runScriptedDiagnostic(log);
        for (std::string const& line : record.log)
            std::cout << line << '\n';
        for (auto const& image : record.images)
            std::cout.write(reinterpret_cast<char const*>(image.data()),
                            static_cast<std::streamsize>(image.size()));
        return 0;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
