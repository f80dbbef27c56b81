#pragma once

#include "SceneGraph/SGObject.h"

/// The object's record under `key`; null where there is none or one of another type.
template <typename Record>
[[nodiscard]] smart_ptr<Record> getExtraData(SGObject const& object, std::string const& key)
{
    return boost::dynamic_pointer_cast<Record>(object.privateGetExtraData(key));
}
