#include "Tests/Frame/DiagnosticRecord.h"

#include "SceneGraph/SGRendererManager.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedClock.h"
#include "Utilities/Log.h"
#include "Viewer/Platform/HostState.h"

#include <iostream>

LogRecord::LogRecord()
{
    Log::getInstance().setStream(stream_);
}

LogRecord::~LogRecord()
{
    Log::getInstance().setStream(std::cerr);
}

std::vector<std::string> LogRecord::takeLines()
{
    std::vector<std::string> lines;
    std::istringstream text(stream_.str());
    for (std::string line; std::getline(text, line);) {
        std::string const channel = "opengl: ";
        lines.push_back(line.starts_with(channel) ? line.substr(channel.size()) : line);
    }
    stream_.str("");
    return lines;
}

DiagnosticRecord runDiagnostic(LogRecord& log)
{
    DiagnosticRecord record;
    smart_ptr<SGRenderer> const renderer = SGRendererManager::getRenderer();
    sgview::setHostState();
    static_cast<void>(log.takeLines());
    renderer->diagnosticImageSink = [&record](auto image) {
        record.images.emplace_back(image.begin(), image.end());
    };
    renderer->runDiagnostic();
    renderer->diagnosticImageSink = nullptr;
    record.log = log.takeLines();
    return record;
}

DiagnosticRecord runScriptedDiagnostic(LogRecord& log)
{
    RendererTesting::ScriptedClock clock;
    clock.steps = {0}; // the start of the run
    for (int const rate : scriptedRates) {
        // Before and after the first frame, before and after the three that count.
        clock.steps.insert(clock.steps.end(), {0, 0, 0, 3'000'000 / rate});
    }
    DiagnosticRecord record = runDiagnostic(log);
    record.clockUsedUp = clock.steps.empty() && clock.asked == 2 + 4 * static_cast<int>(scriptedRates.size());
    return record;
}
