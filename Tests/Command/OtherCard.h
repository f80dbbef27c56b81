#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

/// The environment in which OtherCard.cpp is loaded into sgview, and gives its workers another card.
/// \param where  see there
inline std::map<std::string, std::optional<std::string>> environmentOfOtherCard(std::string const& where)
{
    char const* const options = std::getenv("ASAN_OPTIONS");
    return {{"LD_PRELOAD", OTHER_CARD},
            {"SG_OTHER_CARD", where},
            // A sanitizer would rather be loaded first.
            {"ASAN_OPTIONS", (options ? options + std::string(":") : "") + "verify_asan_link_order=0"}};
}
