#pragma once

#include "Utilities/Serializable.h"
#include "Utilities/smart_ptr.h"

#include <utility>

/// Reads and writes one data member of a Class, which derives from Serializable, in an object that is known
/// as a Serializable. Throws std::bad_cast for an object of another class.
template <typename Class, typename T>
class MemberAccessor : public smart_base {
public:
    explicit MemberAccessor(T Class::*member) : member_(member) {}

    [[nodiscard]] T const& get(Serializable const& object) const
    {
        return dynamic_cast<Class const&>(object).*member_;
    }

    void set(Serializable& object, T value) const
    {
        dynamic_cast<Class&>(object).*member_ = std::move(value);
    }

private:
    T Class::*member_;
};

template <typename Class, typename T>
[[nodiscard]] smart_ptr<MemberAccessor<Class, T>> newMemberAccessor(T Class::*member)
{
    return make_smart<MemberAccessor<Class, T>>(member);
}
