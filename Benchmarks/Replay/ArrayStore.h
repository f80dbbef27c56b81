#pragma once

#include "Benchmarks/Replay/Recording.h"

#include <cstring>
#include <functional>
#include <string_view>
#include <unordered_map>

/// Puts arrays into a recording, each content once.
class ArrayStore {
public:
    explicit ArrayStore(Recording& recording) : recording_(recording) {}

    /// A word of the recording is the address of an array of so many bytes.
    void keepAt(std::size_t word, void const* data, std::size_t size)
    {
        recording_.addresses.push_back(word);
        recording_.words[word] = keep(data, size);
    }

    /// \return where the recording holds the bytes
    std::uint64_t keep(void const* data, std::size_t size)
    {
        std::vector<unsigned char>& arrays = recording_.arrays;
        auto const hash = std::hash<std::string_view>()({static_cast<char const*>(data), size});
        auto const [first, last] = known_.equal_range(hash);
        for (auto known = first; known != last; ++known)
            if (known->second.size == size && std::memcmp(&arrays[known->second.offset], data, size) == 0)
                return known->second.offset;
        std::size_t const offset = arrays.size();
        arrays.resize((offset + size + Recording::arrayAlignment) / Recording::arrayAlignment *
                      Recording::arrayAlignment);
        std::memcpy(&arrays[offset], data, size);
        known_.insert({hash, {offset, size}});
        return offset;
    }

private:
    struct Place {
        std::uint64_t offset;
        std::size_t size;
    };
    Recording& recording_;
    std::unordered_multimap<std::size_t, Place> known_;
};
