// Core potentials: blocks of centers with the name of a library's potential, or one that is written out term by term.
//
// A line of atom numbers cannot be told from a term but by walking all blocks to the end.
#include <gjf/core/sections/centers.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>

#include <algorithm>
#include <optional>

namespace quor::input::gaussian {
namespace {

// Power, exponent, coefficient and perhaps one for spin and orbit.
bool is_term(const SectionScanner& scan) {
    return (scan.size() == 3 || scan.size() == 4) && is_integer_text(scan.field(0)) &&
           std::all_of(scan.fields().begin() + 1, scan.fields().end(), is_fortran_or_c_number);
}

// Walks whole blocks. Tokens are added as it goes; the reading is to be dropped when it fails.
class PotentialBlocks {
   public:
    explicit PotentialBlocks(SectionReading& section) noexcept : scan_(section) {}

    // Returns whether the section is made of whole blocks to its end.
    bool read() {
        while (scan_.next()) {
            if (centers_of(scan_) == Centers::None) {
                return false;
            }
            add_centers(scan_);
            if (!read_potential()) {
                return false;
            }
        }
        return true;
    }

   private:
    bool next(LineForm form) {
        if (!scan_.next()) {
            return false;
        }
        scan_.begin(form);
        scan_.add_rest(0);
        return true;
    }

    bool read_potential() {
        if (!next(LineForm::Name) || is_number_range_text(scan_.field(0)) || ends_block(scan_.field(0))) {
            return false;
        }
        if (scan_.size() != 3) {
            return scan_.size() == 1;
        }
        const std::optional<std::int64_t> highest = to_int64(scan_.field(1));
        const std::optional<std::int64_t> electrons = to_int64(scan_.field(2));
        bool whole = highest && *highest >= 0 && electrons && *electrons >= 0;
        for (std::int64_t i = 0; whole && i <= *highest; ++i) {
            whole = read_component();
        }
        return whole;
    }

    // Takes a title, the number of terms, and the terms.
    bool read_component() {
        if (!next(LineForm::Name) || !next(LineForm::Shell) || scan_.size() != 1) {
            return false;
        }
        const std::int64_t count = to_int64(scan_.field(0)).value_or(-1);
        bool whole = count >= 0;
        for (std::int64_t i = 0; whole && i < count; ++i) {
            whole = next(LineForm::Primitive) && is_term(scan_);
        }
        return whole;
    }

    SectionScanner scan_;
};

// Marks what looks like centers in a section of any form; tells whether a line of it could name atoms by number. A name such
// as "Fe 2 0", right behind a line of elements, could not.
bool mark_likely_centers(SectionReading& section) {
    bool could_name_numbers = false;
    Centers before = Centers::None;
    for (SectionScanner scan(section); scan.next();) {
        const Centers centers = centers_of(scan);
        const bool is_name = before != Centers::None && scan.size() == 3 && !is_number_range_text(scan.field(0));
        could_name_numbers = could_name_numbers || (centers == Centers::Numbers && !is_name);
        before = is_name ? Centers::None : centers;
        if (centers != Centers::None && !is_name) {
            add_centers(scan);
        }
    }
    return could_name_numbers;
}

}  // namespace

void read_potentials(SectionReading& section) {
    SectionReading whole = section;
    if (PotentialBlocks(whole).read()) {
        section = std::move(whole);
    } else if (mark_likely_centers(section)) {
        section.unclear = "it names atoms by number";
    }
}

}  // namespace quor::input::gaussian
