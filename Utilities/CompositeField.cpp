#include "Utilities/CompositeField.h"

#include "Utilities/InTag.h"
#include "Utilities/OutTag.h"

CompositeField::CompositeField(std::string name, smart_ptr<ClassDesc const> description)
    : Field(std::move(name)), description_(std::move(description))
{
}

void CompositeField::save(OutTag& parent, Serializable const& object) const
{
    parent.writeTag(getName(), [&] {
        for (auto const& field : description_->getFields())
            field->save(parent, object);
    });
}

Field::Assignment CompositeField::load(InTag const& parent) const
{
    InTag const tag = parent.getChild(getName());
    std::vector<Assignment> assignments;
    for (auto const& field : description_->getFields())
        assignments.push_back(field->load(tag));
    return [assignments = std::move(assignments)](Serializable& object) {
        for (auto const& assign : assignments)
            assign(object);
    };
}
