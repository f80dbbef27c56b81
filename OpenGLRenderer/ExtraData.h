#pragma once

#include "SceneGraph/SGObject.h"

#include <typeinfo>

/// The object's record under `key`, which stays the object's; null where there is none or one of another
/// type.
template <typename Record>
[[nodiscard]] Record* findExtraData(SGObject const& object, SGExtraDataKey key)
{
    SGExtraData* const data = object.findExtraData(key);
    if (!data)
        return nullptr;
    // Nearly always exactly what is asked for, and told so much sooner than by a cast.
    if (typeid(*data) == typeid(Record))
        return static_cast<Record*>(data);
    return dynamic_cast<Record*>(data);
}

/// The same, shared: for records that are to outlive their place.
template <typename Record>
[[nodiscard]] smart_ptr<Record> getExtraData(SGObject const& object, SGExtraDataKey key)
{
    return smart_ptr<Record>(findExtraData<Record>(object, key));
}

template <typename Record>
[[nodiscard]] smart_ptr<Record> getExtraData(SGObject const& object, std::string const& key)
{
    return getExtraData<Record>(object, SGExtraDataKey(key));
}
