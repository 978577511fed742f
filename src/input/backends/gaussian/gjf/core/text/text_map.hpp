// Hash tables of text that are looked up by view, without making a string of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace quor::input::gaussian {

/// Mixes eight characters at a time. Route words have few, for which calling the library's own takes longer.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
        constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;
        std::uint64_t hash = text.size() * odd;
        const auto mix = [&](std::size_t begin, std::size_t count) {
            std::uint64_t word = 0;
            std::memcpy(&word, text.data() + begin, count);
            hash = (hash ^ word) * odd;
            hash ^= hash >> 32;
        };
        std::size_t begin = 0;
        for (; begin + sizeof hash <= text.size(); begin += sizeof hash) {
            mix(begin, sizeof hash);
        }
        if (begin < text.size()) {
            mix(begin, text.size() - begin);
        }
        return hash;
    }
};

template <class Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

using TextSet = std::unordered_set<std::string, TextHash, std::equal_to<>>;

/// Finds the value under `key`, or null.
template <class Value>
const Value* find_value(const TextMap<Value>& map, std::string_view key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

}  // namespace quor::input::gaussian
