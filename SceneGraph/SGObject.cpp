#include "SceneGraph/SGObject.h"

#include <unordered_set>
#include <utility>
#include <vector>

namespace {

/// One string a key, for the life of the process: a table then holds a pointer, however long the key. Never
/// destroyed, since a module's static destructors may still purge records.
std::string const* internedKey(std::string const& key)
{
    static auto& keys = *new std::unordered_set<std::string>;
    return &*keys.insert(key).first;
}

} // namespace

/// An object's records, and its place in the list of all objects that have had some. Few keys are in use, so
/// they are searched one by one. A removed record leaves its slot, since the same key returns next frame.
class SGObject::ExtraDataTable {
public:
    struct Slot {
        std::string const* key;
        smart_ptr<SGExtraData> data;
    };

    ExtraDataTable() : next(first)
    {
        if (next)
            next->previous = this;
        first = this;
    }
    ExtraDataTable(ExtraDataTable const&) = delete;
    ExtraDataTable& operator=(ExtraDataTable const&) = delete;

    ~ExtraDataTable()
    {
        (previous ? previous->next : first) = next;
        if (next)
            next->previous = previous;
    }

    [[nodiscard]] Slot* find(std::string const& key)
    {
        for (Slot& slot : slots)
            if (*slot.key == key)
                return &slot;
        return nullptr;
    }

    static ExtraDataTable* first;

    ExtraDataTable* previous = nullptr;
    ExtraDataTable* next;
    std::vector<Slot> slots;
};

SGObject::ExtraDataTable* SGObject::ExtraDataTable::first = nullptr;

SGObject::~SGObject()
{
    delete extraData_;
}

void SGObject::setExtraData(std::string const& key, smart_ptr<SGExtraData> data)
{
    if (extraData_) {
        if (ExtraDataTable::Slot* const slot = extraData_->find(key)) {
            slot->data.swap(data); // the old record goes when the table is in order again
            return;
        }
    }
    if (!data)
        return;
    if (!extraData_)
        extraData_ = new ExtraDataTable;
    extraData_->slots.push_back({internedKey(key), std::move(data)});
}

smart_ptr<SGExtraData> SGObject::privateGetExtraData(std::string const& key) const
{
    if (extraData_)
        if (ExtraDataTable::Slot const* const slot = extraData_->find(key))
            return slot->data;
    return {};
}

bool SGObject::hasExtraData() const
{
    if (extraData_)
        for (ExtraDataTable::Slot const& slot : extraData_->slots)
            if (slot.data)
                return true;
    return false;
}

void SGObject::clearExtraData()
{
    delete std::exchange(extraData_, nullptr);
}

void SGObject::removeExtraDataEverywhere(std::string_view prefix)
{
    // A record's destructor may destroy further objects and so change the list: collect first, then drop.
    std::vector<smart_ptr<SGExtraData>> dropped;
    for (ExtraDataTable* table = ExtraDataTable::first; table; table = table->next)
        for (ExtraDataTable::Slot& slot : table->slots)
            if (slot.data && slot.key->starts_with(prefix))
                dropped.push_back(std::move(slot.data));
}
