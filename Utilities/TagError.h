#pragma once

#include <stdexcept>
#include <string>

/// Tags that cannot be read, or a value that cannot be written to one. what() gives the place, which is an
/// element with those around it or a line of the text, and the reason:
/// "material/ambient: no attribute \"g\"".
class TagError : public std::runtime_error {
public:
    TagError(std::string const& place, std::string const& reason) : std::runtime_error(place + ": " + reason)
    {
    }
};
