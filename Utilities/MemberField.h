#pragma once

#include "Utilities/Field.h"
#include "Utilities/MemberAccessor.h"
#include "Utilities/SimpleTypeHandler.h"

/// A data member of a Class as a field.
template <typename Class, typename T>
class MemberField : public Field {
public:
    MemberField(std::string name, smart_ptr<MemberAccessor<Class, T>> accessor)
        : Field(std::move(name)), accessor_(std::move(accessor))
    {
    }

    void save(OutTag& parent, Serializable const& object) const override
    {
        SimpleTypeHandler<T>::save(parent, getName(), accessor_->get(object));
    }

    [[nodiscard]] Assignment load(InTag const& parent) const override
    {
        return [accessor = accessor_, value = SimpleTypeHandler<T>::load(parent, getName())](
                   Serializable& object) mutable { accessor->set(object, std::move(value)); };
    }

private:
    smart_ptr<MemberAccessor<Class, T>> accessor_;
};

template <typename Class, typename T>
[[nodiscard]] smart_ptr<Field> newMemberField(std::string name, T Class::*member)
{
    return make_smart<MemberField<Class, T>>(std::move(name), newMemberAccessor<Class, T>(member));
}
