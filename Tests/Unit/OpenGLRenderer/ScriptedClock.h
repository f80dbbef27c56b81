#pragma once

#include "Utilities/Timer.h"

#include <deque>

namespace RendererTesting {

/// The process's clock while it lives; goes by what a test says.
class ScriptedClock {
public:
    ScriptedClock()
    {
        TimerFactory::setMaker([this] { return make_smart<Hands>(*this); });
        RogueSingleton<Timer, TimerFactory>::reset();
    }
    ScriptedClock(ScriptedClock const&) = delete;
    ScriptedClock& operator=(ScriptedClock const&) = delete;
    ~ScriptedClock()
    {
        TimerFactory::setMaker({});
        RogueSingleton<Timer, TimerFactory>::reset();
    }

    std::int64_t time = 0;          ///< microseconds
    std::deque<std::int64_t> steps; ///< by which the time moves when it is asked, one at a time
    int asked = 0;

private:
    class Hands : public Timer {
    public:
        explicit Hands(ScriptedClock& clock) : clock_(clock) {}

        Timestamp now() override
        {
            ++clock_.asked;
            if (!clock_.steps.empty()) {
                clock_.time += clock_.steps.front();
                clock_.steps.pop_front();
            }
            return {clock_.time};
        }

    private:
        ScriptedClock& clock_;
    };
};

} // namespace RendererTesting
