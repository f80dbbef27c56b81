#include "Utilities/Timer.h"

#include <chrono>

template class RogueSingleton<Timer, TimerFactory>;

namespace {

class SteadyTimer : public Timer {
public:
    Timestamp now() override
    {
        using namespace std::chrono;
        return {duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count()};
    }
};

// A host may name its maker before this file's own statics are made.
TimerFactory::Maker& maker()
{
    static TimerFactory::Maker theMaker;
    return theMaker;
}

} // namespace

smart_ptr<Timer> TimerFactory::newInstance()
{
    return maker() ? maker()() : make_smart<SteadyTimer>();
}

void TimerFactory::setMaker(Maker newMaker)
{
    maker() = std::move(newMaker);
}
