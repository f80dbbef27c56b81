#pragma once

#include "Utilities/RogueSingleton.h"
#include "Utilities/smart_ptr.h"

#include <map>
#include <ostream>
#include <string>

class LogFactory;

/// Where log lines go, and which channels are written at all.
///
/// A channel is settled once per process, by the first line that would be written to it: a host chooses its
/// channels before it loads the renderer.
class Log : public smart_base {
public:
    /// The process's log.
    [[nodiscard]] static Log& getInstance();

    /// Whether a channel is to be written; `byDefault` where the host has said nothing about it.
    [[nodiscard]] static bool isEnabled(std::string const& channel, bool byDefault);

    /// Switches one channel on or off.
    void setEnabled(std::string const& channel, bool enabled);

    /// Switches off every channel but those set by name.
    void disableOthers();

    /// Standard error unless replaced.
    [[nodiscard]] std::ostream& getStream() { return *stream_; }

    /// \param stream  must outlive the log or the next replacement
    void setStream(std::ostream& stream) { stream_ = &stream; }

    void flush() { stream_->flush(); }

private:
    friend class LogFactory;
    Log();

    std::ostream* stream_;
    std::map<std::string, bool> channels_;
    bool othersEnabled_ = true;
};

class LogFactory {
public:
    [[nodiscard]] static smart_ptr<Log> newInstance();
};

extern template class RogueSingleton<Log, LogFactory>;

/// A named channel of the log, whether it is enabled being asked once, at construction. Meant as a
/// function-local static beside the line it writes.
class LogChannel {
public:
    explicit LogChannel(std::string name) : name_(std::move(name)), enabled_(Log::isEnabled(name_, true)) {}

    /// Writes one line: the channel's name, ": ", the parts as a stream prints them, and a newline; then
    /// flushes.
    template <typename... Parts>
    void write(Parts const&... parts) const
    {
        if (!enabled_)
            return;
        Log& log = Log::getInstance();
        ((log.getStream() << name_ << ": ") << ... << parts) << '\n';
        log.flush();
    }

private:
    std::string name_;
    bool enabled_;
};
