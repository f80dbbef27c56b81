#pragma once

#include "Utilities/smart_ptr.h"

#include <string>

class Field;
class InTag;
class OutTag;

/// A value whose named fields can be written to tags and read back.
class Serializable {
public:
    Serializable() = default;
    Serializable(Serializable const&) = default;
    Serializable& operator=(Serializable const&) = default;

    /// Writes the value as an element `name`.
    virtual void save(OutTag& tag, std::string const& name) const;

    /// Reads what save() wrote under the same name. Throws TagError; the value is then unchanged.
    virtual void load(InTag& tag, std::string const& name);

    /// The value's fields, gathered under one name.
    [[nodiscard]] virtual smart_ptr<Field> makeField(std::string const& name) const = 0;

    virtual ~Serializable() = default;
};
