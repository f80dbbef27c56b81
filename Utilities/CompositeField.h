#pragma once

#include "Utilities/ClassDesc.h"
#include "Utilities/Field.h"

/// A class's fields as one: an element whose children are the fields' elements. Children of other names are
/// not looked at.
class CompositeField : public Field {
public:
    CompositeField(std::string name, smart_ptr<ClassDesc const> description);

    void save(OutTag& parent, Serializable const& object) const override;
    [[nodiscard]] Assignment load(InTag const& parent) const override;

private:
    smart_ptr<ClassDesc const> description_;
};
