#include "Utilities/Tag.h"

#include "Utilities/Strings.h"
#include "Utilities/TagError.h"

#include <algorithm>

std::string const& Tag::getAttr(std::string const& name) const
{
    auto const found = std::ranges::find(attributes_, name, &Attribute::first);
    if (found == attributes_.end())
        throw TagError(path_, "no attribute " + inQuotes(name));
    return found->second;
}

void Tag::addAttr(std::string name, std::string value)
{
    attributes_.emplace_back(std::move(name), std::move(value));
}
