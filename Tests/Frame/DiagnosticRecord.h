#pragma once

#include <sstream>
#include <string>
#include <vector>

/// The log's lines while it lives.
class LogRecord {
public:
    LogRecord();
    ~LogRecord();
    LogRecord(LogRecord const&) = delete;
    LogRecord& operator=(LogRecord const&) = delete;

    /// Those since it was asked last.
    [[nodiscard]] std::vector<std::string> takeLines();

private:
    std::ostringstream stream_;
};

/// What a run of the graphics diagnostic shows to its host.
struct DiagnosticRecord {
    std::vector<std::string> log; ///< lines, without the channel's "opengl: "
    std::vector<std::vector<unsigned char>> images;
    bool clockUsedUp = false; ///< every measurement of the script was made, and no other
};

/// The scripted measurements of runScriptedDiagnostic, in frames per second: the scene grows by three to
/// eight surfaces and stops at the edge, buffers and vertex program are faster.
inline std::vector<int> const scriptedRates{300, 100, 80, 40, 48, 50, 60};

/// The registered renderer runs its diagnostic by a clock on which the n-th measurement comes to the n-th of
/// `scriptedRates`. The verdict goes to the process's preferences.
[[nodiscard]] DiagnosticRecord runScriptedDiagnostic(LogRecord& log);

/// The same by the time of day.
[[nodiscard]] DiagnosticRecord runDiagnostic(LogRecord& log);
