#pragma once

#include "Utilities/Prefs.h"

#include <map>
#include <string>

/// Preferences that last as long as the object: for hosts that keep none, and for tests.
class MemoryPrefs : public Prefs {
public:
    [[nodiscard]] std::string getString(std::string const& key) const override;
    void setString(std::string const& key, std::string const& value) override;

private:
    std::map<std::string, std::string> entries_;
};
