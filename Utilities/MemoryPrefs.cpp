#include "Utilities/MemoryPrefs.h"

std::string MemoryPrefs::getString(std::string const& key) const
{
    auto const found = entries_.find(key);
    return found == entries_.end() ? std::string() : found->second;
}

void MemoryPrefs::setString(std::string const& key, std::string const& value)
{
    entries_[key] = value;
}
