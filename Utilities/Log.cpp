#include "Utilities/Log.h"

#include <iostream>

template class RogueSingleton<Log, LogFactory>;

Log::Log() : stream_(&std::cerr) {}

Log& Log::getInstance()
{
    return RogueSingleton<Log, LogFactory>::getInstance();
}

bool Log::isEnabled(std::string const& channel, bool byDefault)
{
    Log const& log = getInstance();
    auto const found = log.channels_.find(channel);
    if (found != log.channels_.end())
        return found->second;
    return log.othersEnabled_ && byDefault;
}

void Log::setEnabled(std::string const& channel, bool enabled)
{
    channels_[channel] = enabled;
}

void Log::disableOthers()
{
    othersEnabled_ = false;
}

smart_ptr<Log> LogFactory::newInstance()
{
    return smart_ptr<Log>(new Log);
}
