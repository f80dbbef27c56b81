#pragma once

#include "SceneGraph/SGExtraData.h"
#include "SceneGraph/SGExtraDataKey.h"
#include "Utilities/smart_ptr.h"

#include <string>
#include <string_view>
#include <vector>

/// An object of the scene graph that carries records by key. The object owns its records.
class SGObject : public weak_base {
public:
    SGObject() = default;
    SGObject(SGObject const&) = delete;
    SGObject& operator=(SGObject const&) = delete;
    ~SGObject() override;

    /// Hangs `data` on the object, in place of any record already under `key`; a null pointer removes it.
    void setExtraData(SGExtraDataKey key, smart_ptr<SGExtraData> data);
    void setExtraData(std::string const& key, smart_ptr<SGExtraData> data);

    /// The record under `key`, or null. The typed read is
    /// boost::dynamic_pointer_cast<Record>(object->privateGetExtraData(key)).
    [[nodiscard]] smart_ptr<SGExtraData> privateGetExtraData(std::string const& key) const;

    /// The same for those who read often and keep nothing: the record is the object's.
    [[nodiscard]] SGExtraData* findExtraData(SGExtraDataKey key) const
    {
        Slot const* const slot = extraData_ ? extraData_->find(key) : nullptr;
        return slot ? slot->data.get() : nullptr;
    }

    /// Whether the object carries a record, or has carried one: quicker to tell than hasExtraData().
    [[nodiscard]] bool mayHaveExtraData() const { return extraData_ != nullptr; }

    [[nodiscard]] bool hasExtraData() const;

    /// Drops every record of this object.
    void clearExtraData();

    /// Drops, on every object of the process, the records whose key starts with `prefix`. For a module that
    /// is about to be unloaded: no code of its records' destructors may be left to run.
    static void removeExtraDataEverywhere(std::string_view prefix);

private:
    struct Slot {
        SGExtraDataKey key;
        smart_ptr<SGExtraData> data;
    };

    /// An object's records, and its place in the list of all objects that have had some. Few keys are in use,
    /// so they are searched one by one. A removed record leaves its slot, since the same key returns next
    /// frame.
    class ExtraDataTable {
    public:
        ExtraDataTable();
        ExtraDataTable(ExtraDataTable const&) = delete;
        ExtraDataTable& operator=(ExtraDataTable const&) = delete;
        ~ExtraDataTable();

        [[nodiscard]] Slot* find(SGExtraDataKey key)
        {
            for (Slot& slot : slots)
                if (slot.key == key)
                    return &slot;
            return nullptr;
        }

        static ExtraDataTable* first;

        ExtraDataTable* previous = nullptr;
        ExtraDataTable* next;
        std::vector<Slot> slots;
    };

    ExtraDataTable* extraData_ = nullptr; ///< made with the first record
};
