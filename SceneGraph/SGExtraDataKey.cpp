#include "SceneGraph/SGExtraDataKey.h"

#include <functional>
#include <mutex>
#include <unordered_set>

namespace {

struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
};

/// Never destroyed, since a module's static destructors may still purge records.
struct Names {
    std::mutex mutex;
    std::unordered_set<std::string, Hash, std::equal_to<>> all;
};

std::string const* interned(std::string_view name)
{
    static Names& names = *new Names;
    std::scoped_lock const lock(names.mutex);
    auto const found = names.all.find(name);
    return &*(found != names.all.end() ? found : names.all.emplace(name).first);
}

} // namespace

SGExtraDataKey::SGExtraDataKey(std::string_view name) : name_(interned(name)) {}
