// Finds atoms that are near each other without comparing all pairs. Private to the library.
#pragma once

#include <gjf/core/chemistry/space.hpp>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quor::input::gaussian {

/// Sorts atoms into cubes of space, so that neighbours are found in constant time.
class Cells {
   public:
    /// Room for `atoms` is made at once. Cubes are as long as the distance that is looked for, or `cubes` times as long:
    /// where few atoms lie in a cube, fewer cubes are then looked into.
    explicit Cells(double reach, std::size_t atoms = 0, double cubes = 1)
        : reach_(reach), farthest_squared_(reach * reach * (1 + 1e-9)), cubes_a_length_(1 / (cubes * reach * (1 + 1e-6))) {
        entries_.reserve(atoms);
        chains_.assign(std::bit_ceil(std::max(atoms, fewest_chains)), nothing);
    }

    /// Tells whether `test` holds for an atom put in before that may lie within reach; asks no further then.
    template <typename Test>
    bool any_near(const Position& position, Test test) const {
        Cell low = cell_of(position);
        Cell high = low;
        for (std::size_t i = 0; i < 3; ++i) {  // cubes are longer than the reach, so the next one is the last that counts
            const auto begin = static_cast<double>(low[i]);
            high[i] += (position[i] + reach_) * cubes_a_length_ >= begin + 1 ? 1 : 0;
            low[i] -= (position[i] - reach_) * cubes_a_length_ < begin ? 1 : 0;
        }
        for (Cell cell = low; cell[0] <= high[0]; ++cell[0]) {
            for (cell[1] = low[1]; cell[1] <= high[1]; ++cell[1]) {
                for (cell[2] = low[2]; cell[2] <= high[2]; ++cell[2]) {
                    if (any_in(key(cell), position, test)) {
                        return true;
                    }
                }
            }
        }
        return false;
    }
    /// Calls `take` for every such atom.
    template <typename Take>
    void for_each_near(const Position& position, Take take) const {
        any_near(position, [&](std::size_t atom) {
            take(atom);
            return false;
        });
    }
    void put(const Position& position, std::size_t atom) {
        if (entries_.size() == chains_.size()) {
            chains_.assign(2 * chains_.size(), nothing);
            for (std::size_t i = 0; i < entries_.size(); ++i) {
                chain(i);
            }
        }
        entries_.push_back({position, key(cell_of(position)), atom, nothing});
        chain(entries_.size() - 1);
    }

   private:
    using Cell = std::array<std::int64_t, 3>;
    static constexpr std::uint64_t mixing = 0x9E3779B97F4A7C15U;

    // An atom, and the entry before it among those whose cubes share a chain.
    struct Entry {
        Position position;
        std::uint64_t key;
        std::size_t atom;
        std::size_t before;
    };
    static constexpr std::size_t nothing = static_cast<std::size_t>(-1);
    static constexpr std::size_t fewest_chains = 64;  // a power of two

    template <typename Test>
    bool any_in(std::uint64_t cube, const Position& position, const Test& test) const {
        for (std::size_t i = chains_[chain_of(cube)]; i != nothing; i = entries_[i].before) {
            if (entries_[i].key == cube && may_be_near(entries_[i].position, position) && test(entries_[i].atom)) {
                return true;
            }
        }
        return false;
    }
    // What is no number is near all: others decide.
    bool may_be_near(const Position& a, const Position& b) const noexcept {
        const double x = a[0] - b[0];
        const double y = a[1] - b[1];
        const double z = a[2] - b[2];
        return !(x * x + y * y + z * z > farthest_squared_);
    }
    std::size_t chain_of(std::uint64_t cube) const noexcept {
        return static_cast<std::size_t>((cube * mixing) >> 32) & (chains_.size() - 1);
    }
    void chain(std::size_t entry) noexcept {
        std::size_t& last = chains_[chain_of(entries_[entry].key)];
        entries_[entry].before = last;
        last = entry;
    }

    Cell cell_of(const Position& position) const noexcept {
        constexpr double farthest = 1e9;  // farther out, cubes are joined, which costs time alone
        Cell cell{};
        for (std::size_t i = 0; i < 3; ++i) {
            const double place = position[i] * cubes_a_length_;
            // What is no number has no place of its own.
            const double kept = place > -farthest ? std::min(place, farthest) : place <= -farthest ? -farthest : 0;
            const auto whole = static_cast<std::int64_t>(kept);
            cell[i] = whole - (kept < static_cast<double>(whole) ? 1 : 0);  // rounded down, without a call
        }
        return cell;
    }
    static std::uint64_t key(const Cell& cell) noexcept {
        std::uint64_t value = 0;
        for (const std::int64_t index : cell) {
            value = value * mixing + static_cast<std::uint64_t>(index);
        }
        return value;
    }

    double reach_;
    double farthest_squared_;
    double cubes_a_length_;
    std::vector<Entry> entries_;
    std::vector<std::size_t> chains_;  // each by its last entry
};

}  // namespace quor::input::gaussian
