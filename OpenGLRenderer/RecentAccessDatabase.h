#pragma once

#include "SceneGraph/SGExtraData.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

/// Derived shared data by what it was derived from, so that all who ask for the same get one object.
///
/// A result is owned while it is in recent use: to the end of the N-th frame after the one in which it was
/// last stored or fetched. After that it is found only while somebody else owns it; being fetched makes it
/// owned again. The database lives on the root of a scene.
///
/// \tparam Key    has std::hash and ==
/// \tparam Value  derives from weak_base
template <typename Key, typename Value, int N>
class RecentAccessDatabase : public SGExtraData {
public:
    /// Whether a result is there and alive. Does not count as use.
    [[nodiscard]] bool contains(Key const& key) const
    {
        auto const found = weak.find(key);
        return found != weak.end() && !found->second.expired();
    }

    /// The result, which is in use from now on; null where contains(key) is false.
    smart_ptr<Value> get(Key const& key)
    {
        ages[key] = 0;
        return strong[key] = weak[key].lock();
    }

    /// Stores a result, in place of any earlier one.
    void add(Key const& key, smart_ptr<Value> const& value)
    {
        ages[key] = 0;
        strong[key] = value;
        weak[key] = value;
    }

    void beginFrame()
    {
        for (auto& [key, age] : ages)
            ++age;
    }

    void endFrame()
    {
        dropUnused();
        forgetDead();
    }

private:
    void dropUnused()
    {
        std::vector<Key> unused;
        for (auto const& [key, value] : strong) {
            auto const age = ages.find(key);
            if (age == ages.end() || age->second >= N)
                unused.push_back(key);
        }
        for (Key const& key : unused) {
            strong.erase(key);
            ages.erase(key);
        }
    }

    void forgetDead()
    {
        std::vector<Key> dead;
        for (auto const& [key, value] : weak)
            if (value.expired())
                dead.push_back(key);
        for (Key const& key : dead)
            weak.erase(key);
    }

    std::unordered_map<Key, std::int32_t> ages; ///< frames begun since the last use
    std::unordered_map<Key, smart_ptr<Value>> strong;
    std::unordered_map<Key, weak_ptr<Value>> weak; ///< all that is alive somewhere
};
