// The atoms of a job by element, and which of them a line of centers means. Private to the room.
#pragma once

#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/sections/section_tokens.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Numbers of atoms by atomic number.
using ElementCounts = std::array<std::int64_t, 119>;

class AtomPopulation {
   public:
    explicit AtomPopulation(const GeomSection& geom);

    /// Tells what keeps the atoms from being counted; empty when nothing does.
    const std::string& problem() const noexcept { return problem_; }
    const ElementCounts& all() const noexcept { return all_; }        ///< with ghosts
    const ElementCounts& nuclei() const noexcept { return nuclei_; }  ///< without ghosts
    /// Counts the atoms that a line of centers means, and marks them as covered. False for a line that is not understood.
    bool count(const SectionReading& section, const SectionLine& line, bool with_ghosts, ElementCounts& counts);
    /// Tells whether each atom was among those counted.
    bool all_covered() const;

   private:
    bool count_range(std::string_view text, bool with_ghosts, ElementCounts& counts);

    std::vector<Species> atoms_;
    std::vector<bool> covered_;  // by number
    std::array<bool, 119> covered_elements_{};
    ElementCounts all_{};
    ElementCounts nuclei_{};
    std::size_t steps_ = 0;
    std::string problem_;
};

}  // namespace quor::input::gaussian
