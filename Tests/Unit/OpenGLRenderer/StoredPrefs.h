#pragma once

#include "Utilities/MemoryPrefs.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace RendererTesting {

/// Preferences that note what is asked of them, such as "get GL_VBO" and "set GL_VBO = True".
class NotingPrefs : public MemoryPrefs {
public:
    [[nodiscard]] std::string getString(std::string const& key) const override
    {
        note("get " + key);
        return MemoryPrefs::getString(key);
    }
    void setString(std::string const& key, std::string const& value) override
    {
        note("set " + key + " = " + value);
        MemoryPrefs::setString(key, value);
    }

    mutable std::vector<std::string> notes;
    std::function<void()> whenAsked; ///< before each

private:
    void note(std::string text) const
    {
        notes.push_back(std::move(text));
        if (whenAsked)
            whenAsked();
    }
};

/// The process's preferences while it lives: empty at first, made on first use.
class StoredPrefs {
public:
    StoredPrefs()
    {
        PrefsFactory::setMaker([this] {
            ++made;
            return store;
        });
        RogueSingleton<Prefs, PrefsFactory>::reset();
    }
    StoredPrefs(StoredPrefs const&) = delete;
    StoredPrefs& operator=(StoredPrefs const&) = delete;
    ~StoredPrefs()
    {
        PrefsFactory::setMaker({});
        RogueSingleton<Prefs, PrefsFactory>::reset();
    }

    smart_ptr<NotingPrefs> const store = make_smart<NotingPrefs>();
    int made = 0;
};

} // namespace RendererTesting
