#pragma once

#include "Utilities/smart_ptr.h"

#include <functional>
#include <string>
#include <utility>

class InTag;
class OutTag;
class Serializable;

/// One named part of a class's values: how it is written to an element and read back.
class Field : public smart_base {
public:
    /// Puts what has been read into the object it was read for. Does not throw for an object of the field's
    /// class.
    using Assignment = std::function<void(Serializable&)>;

    explicit Field(std::string name) : name_(std::move(name)) {}

    [[nodiscard]] std::string const& getName() const { return name_; }

    /// Writes the object's part as an element of the field's name. Throws TagError; nothing is then written.
    virtual void save(OutTag& parent, Serializable const& object) const = 0;

    /// Reads the child of the field's name, without touching an object yet. Throws TagError.
    [[nodiscard]] virtual Assignment load(InTag const& parent) const = 0;

private:
    std::string name_;
};
