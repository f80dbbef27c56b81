#pragma once

#include "Utilities/RogueSingleton.h"
#include "Utilities/smart_ptr.h"

#include <functional>
#include <string>

/// The user's preferences: texts under keys.
///
/// The process's store is RogueSingleton<Prefs, PrefsFactory>::getInstance().
class Prefs : public smart_base {
public:
    /// The text under `key`; empty where there is none.
    [[nodiscard]] virtual std::string getString(std::string const& key) const = 0;

    virtual void setString(std::string const& key, std::string const& value) = 0;
};

/// Makes the process's store: a PrefsFile at its usual place, or MemoryPrefs where the environment names no
/// such place, unless a host or a test has named another maker.
class PrefsFactory {
public:
    using Maker = std::function<smart_ptr<Prefs>()>;

    [[nodiscard]] static smart_ptr<Prefs> newInstance();

    /// Takes effect with the next instance; an empty maker brings the usual one back.
    static void setMaker(Maker maker);
};

extern template class RogueSingleton<Prefs, PrefsFactory>;
