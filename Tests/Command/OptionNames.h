#pragma once

#include <regex>
#include <set>
#include <string>

/// The long names of all options that a help tells of.
inline std::set<std::string> optionsIn(std::string const& help)
{
    static std::regex const entry("\n  (?:-[A-Za-z],|   ) (--[a-z-]+)");
    std::set<std::string> names;
    for (std::sregex_iterator i(help.begin(), help.end(), entry), end; i != end; ++i)
        names.insert((*i)[1]);
    return names;
}
