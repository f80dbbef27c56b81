#pragma once

#include <stdexcept>

namespace sgview {

/// A command line that asks for what there is not. what() is one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace sgview
