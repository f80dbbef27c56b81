#include "SceneGraph/SGObject.h"

#include <utility>

SGObject::ExtraDataTable* SGObject::ExtraDataTable::first = nullptr;

SGObject::ExtraDataTable::ExtraDataTable() : next(first)
{
    if (next)
        next->previous = this;
    first = this;
}

SGObject::ExtraDataTable::~ExtraDataTable()
{
    (previous ? previous->next : first) = next;
    if (next)
        next->previous = previous;
}

SGObject::~SGObject()
{
    delete extraData_;
}

void SGObject::setExtraData(SGExtraDataKey key, smart_ptr<SGExtraData> data)
{
    if (extraData_) {
        if (Slot* const slot = extraData_->find(key)) {
            slot->data.swap(data); // the old record goes when the table is in order again
            return;
        }
    }
    if (!data)
        return;
    if (!extraData_)
        extraData_ = new ExtraDataTable;
    extraData_->slots.push_back({key, std::move(data)});
}

void SGObject::setExtraData(std::string const& key, smart_ptr<SGExtraData> data)
{
    setExtraData(SGExtraDataKey(key), std::move(data));
}

smart_ptr<SGExtraData> SGObject::privateGetExtraData(std::string const& key) const
{
    if (extraData_)
        for (Slot const& slot : extraData_->slots)
            if (slot.key.name() == key)
                return slot.data;
    return {};
}

bool SGObject::hasExtraData() const
{
    if (extraData_)
        for (Slot const& slot : extraData_->slots)
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
        for (Slot& slot : table->slots)
            if (slot.data && slot.key.name().starts_with(prefix))
                dropped.push_back(std::move(slot.data));
}
