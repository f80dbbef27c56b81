#pragma once

#include "Utilities/Log.h"

#include <sstream>
#include <string>

/// A fresh process's log for as long as it lives, written to a string.
class CapturedLog {
public:
    CapturedLog()
    {
        RogueSingleton<Log, LogFactory>::reset();
        Log::getInstance().setStream(stream_);
    }
    ~CapturedLog() { RogueSingleton<Log, LogFactory>::reset(); }
    CapturedLog(CapturedLog const&) = delete;
    CapturedLog& operator=(CapturedLog const&) = delete;

    [[nodiscard]] std::string text() const { return stream_.str(); }

private:
    std::ostringstream stream_;
};
