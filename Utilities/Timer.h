#pragma once

#include "Utilities/RogueSingleton.h"
#include "Utilities/smart_ptr.h"

#include <cstdint>
#include <functional>

/// A moment on the process's clock, in microseconds from an arbitrary start. Differences count, not values.
struct Timestamp {
    std::int64_t microseconds = 0;

    /// Microseconds since `earlier`; negative where the clock went back.
    [[nodiscard]] constexpr std::int64_t diffInMicrosec(Timestamp const& earlier) const
    {
        return microseconds - earlier.microseconds;
    }

    constexpr auto operator<=>(Timestamp const&) const = default;
};

/// The process's clock, RogueSingleton<Timer, TimerFactory>::getInstance(): monotonic unless replaced.
class Timer : public smart_base {
public:
    [[nodiscard]] virtual Timestamp now() = 0;
};

/// Makes the process's clock; a test can name a maker of its own.
class TimerFactory {
public:
    using Maker = std::function<smart_ptr<Timer>()>;

    [[nodiscard]] static smart_ptr<Timer> newInstance();

    /// Takes effect with the next instance; an empty maker brings the usual one back.
    static void setMaker(Maker maker);
};

extern template class RogueSingleton<Timer, TimerFactory>;
