#pragma once

#include "Utilities/smart_ptr.h"

/// The one T of the process, made on first use by `Factory::newInstance()`, which returns a smart_ptr<T>.
///
/// Each singleton is instantiated in this library alone and declared `extern` beside its class: host and
/// module then share it.
template <typename T, typename Factory>
class RogueSingleton {
public:
    [[nodiscard]] static T& getInstance()
    {
        if (!instance)
            instance = Factory::newInstance();
        return *instance;
    }

    /// Drops the instance; the next use makes a new one.
    static void reset() { instance.reset(); }

private:
    static smart_ptr<T> instance;
};

template <typename T, typename Factory>
smart_ptr<T> RogueSingleton<T, Factory>::instance;
