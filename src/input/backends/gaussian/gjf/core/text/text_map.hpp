// A hash map from text that is looked up by view, without making a string of it. Its keys are the vocabulary's; those that a
// job file chooses could be made to collide. Private to the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quor::input::gaussian {

/// Mixes eight characters at a time, the last ones with some before them. Route words have few, for which the standard
/// library's own takes longer.
struct TextHash {
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const noexcept { return static_cast<std::size_t>(sum_of(text)); }

    /// The same on all machines.
    static std::uint64_t sum_of(std::string_view text) noexcept {
        const std::size_t size = text.size();
        std::uint64_t hash = size * odd;
        if (size >= 8) {
            for (std::size_t begin = 0; begin + 8 < size; begin += 8) {
                hash = mixed(hash, load<std::uint64_t>(text, begin));
            }
            return mixed(hash, load<std::uint64_t>(text, size - 8));
        }
        if (size >= 4) {
            return mixed(hash, load<std::uint32_t>(text, 0) | load<std::uint32_t>(text, size - 4) << 32);
        }
        for (const char c : text) {
            hash = mixed(hash, static_cast<unsigned char>(c));
        }
        return hash;
    }

   private:
    static constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;

    static std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) noexcept {
        hash = (hash ^ word) * odd;
        return hash ^ (hash >> 32);
    }

    template <class Word>
    static std::uint64_t load(std::string_view text, std::size_t begin) noexcept {
        Word word = 0;
        std::memcpy(&word, text.data() + begin, sizeof word);
        return word;
    }
};

template <class Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

/// Finds the value under `key`, or null.
template <class Value>
const Value* find_value(const TextMap<Value>& map, std::string_view key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

}  // namespace quor::input::gaussian
