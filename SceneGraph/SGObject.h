#pragma once

#include "SceneGraph/SGExtraData.h"
#include "Utilities/smart_ptr.h"

#include <string>
#include <string_view>

/// An object of the scene graph that carries records by key. The object owns its records.
class SGObject : public weak_base {
public:
    SGObject() = default;
    SGObject(SGObject const&) = delete;
    SGObject& operator=(SGObject const&) = delete;
    ~SGObject() override;

    /// Hangs `data` on the object, in place of any record already under `key`; a null pointer removes it.
    void setExtraData(std::string const& key, smart_ptr<SGExtraData> data);

    /// The record under `key`, or null. The typed read is
    /// boost::dynamic_pointer_cast<Record>(object->privateGetExtraData(key)).
    [[nodiscard]] smart_ptr<SGExtraData> privateGetExtraData(std::string const& key) const;

    [[nodiscard]] bool hasExtraData() const;

    /// Drops every record of this object.
    void clearExtraData();

    /// Drops, on every object of the process, the records whose key starts with `prefix`. For a module that
    /// is about to be unloaded: no code of its records' destructors may be left to run.
    static void removeExtraDataEverywhere(std::string_view prefix);

private:
    class ExtraDataTable;

    ExtraDataTable* extraData_ = nullptr; ///< made with the first record
};
