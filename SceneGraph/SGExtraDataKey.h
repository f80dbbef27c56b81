#pragma once

#include <string>
#include <string_view>

/// The name under which records hang on objects, made once and compared by address.
///
/// Keys of one name are equal, in whichever library or module they were made. A key may be made by a static
/// initialiser.
class SGExtraDataKey {
public:
    explicit SGExtraDataKey(std::string_view name);

    [[nodiscard]] std::string const& name() const { return *name_; }

    bool operator==(SGExtraDataKey const&) const = default;

private:
    std::string const* name_; ///< one for all keys of the name, for the life of the process
};
