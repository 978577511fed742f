// Checks of core potentials: that one is for an element of the molecule, that they stand behind the basis set, and those
// that are written out, number by number.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

// Reports potentials of which none is for an element of the molecule.
void check_elements_of_potentials(const SectionReading& section, std::size_t first_line,
                                  const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    bool any_element = false;
    std::array<bool, 119> in_molecule{};  // by atomic number
    for (const MoleculeAtom& atom : atoms) {
        in_molecule[static_cast<std::size_t>(atom.species.element)] = true;
    }
    for (const SectionLine& line : section.lines) {
        for (const SectionToken& token : section.tokens_of(line)) {
            const std::string_view field = section[token.span];
            if (line.form != LineForm::Centers || token.kind == TokenKind::End) {
                continue;
            }
            const bool may_lack = field.front() == '-';
            const int element = atomic_number(field.substr(may_lack ? 1 : 0));
            // Atom numbers look like the terms of a potential, so nothing can be said of them.
            if (token.kind != TokenKind::Element || in_molecule[static_cast<std::size_t>(element)]) {
                return;
            }
            // A minus sign says that the element may be absent.
            any_element = any_element || !may_lack;
        }
    }
    if (any_element) {
        findings.add("GJF-S012", Severity::Warning, "no core potential is for an element of the molecule", first_line);
    }
}

// Walks potentials that are written out: centers; a name, the highest momentum and the electrons that are left out; then for
// the highest momentum and each below it a title, the number of terms, and the terms. They are read by their number alone.
class WrittenPotentials {
   public:
    WrittenPotentials(const CheckedJob& job, const SectionLayout& section, Findings& findings)
        : job_(job), findings_(findings), line_(section.lines.first - 1), last_(section.lines.last) {}

    void walk() {
        while (next() && is_centers() && next() && take_potential()) {
        }
    }

   private:
    // Goes to the next line that is more than a comment.
    bool next() {
        do {
            if (++line_ > last_) {
                return false;
            }
            cut_section_line(job_.line(line_), fields_);
        } while (fields_.empty());
        return fields_[0].front() != '@';
    }

    bool is_centers() const { return fields_.size() >= 2 && fields_.back() == "0" && is_letter(fields_[0].back()); }

    bool is_term() const {
        return (fields_.size() == 3 || fields_.size() == 4) &&
               std::all_of(fields_.begin(), fields_.end(), is_fortran_or_c_number);
    }

    bool fail(std::size_t line, std::string message, const char* hint) {
        findings_.add("GJF-S029", Severity::Error, std::move(message), line, hint);
        return false;
    }

    // Tells whether what follows can be walked.
    bool take_potential() {
        constexpr const char* form = "a potential begins with its name, its highest momentum and the electrons of the core";
        if (fields_.size() == 2 && is_integer_text(fields_[1]) && !is_integer_text(fields_[0])) {
            return fail(line_, "the number of electrons of the core is missing", form);
        }
        if (fields_.size() != 3 || !is_integer_text(fields_[1]) || !is_integer_text(fields_[2])) {
            return fields_.size() == 1;
        }
        const std::size_t head = line_;
        const std::int64_t parts = to_int64(fields_[1]).value_or(0) + 1;
        count_line_ = 0;
        for (std::int64_t i = 0; i < parts; ++i) {
            if (!next()) {
                return line_ > last_ && fail(head,
                                             "this potential has " + std::to_string(i) + " of the " + std::to_string(parts) +
                                                 " parts that its highest momentum asks for",
                                             form);
            }
            if (!take_part()) {
                return false;
            }
        }
        return is_at_end(head, parts);
    }

    // Behind the last part stand the next centers, or nothing.
    bool is_at_end(std::size_t head, std::int64_t parts) {
        const std::size_t before = line_;
        if (!next()) {
            return false;
        }
        if (is_term()) {
            return fail(count_line_, "more terms stand behind than this number", "");
        }
        if (!is_centers()) {
            return fail(head,
                        "more stands behind than the " + std::to_string(parts) +
                            " parts that the highest momentum of this potential asks for",
                        "");
        }
        line_ = before;
        return true;
    }

    bool take_part() {
        if (is_term() && count_line_ != 0) {
            return fail(count_line_, "more terms stand behind than this number", "");
        }
        if (is_term() || (fields_.size() == 1 && is_integer_text(fields_[0]))) {
            return fail(line_, "the title of a part is missing before this line", "as in d-ul potential");
        }
        if (!next()) {
            return fail(last_, "the number of terms is missing behind this title", "");
        }
        const std::int64_t terms = fields_.size() == 1 ? to_int64(fields_[0]).value_or(-1) : -1;
        if (terms < 0) {
            return fail(line_, "this is no number of terms", "a number alone stands behind the title of a part");
        }
        count_line_ = line_;
        for (std::int64_t i = 0; i < terms; ++i) {
            const bool is_there = next();
            if (is_there && !is_term() && is_fortran_or_c_number(fields_[0])) {
                return fail(line_, "this is no term", "a term is a power, an exponent and a coefficient");
            }
            if (!is_there || !is_term()) {
                return fail(count_line_, "only " + std::to_string(i) + " terms stand behind this number", "");
            }
        }
        return true;
    }

    const CheckedJob& job_;
    Findings& findings_;
    std::size_t line_;
    std::size_t last_;
    std::size_t count_line_ = 0;  // of the last number of terms
    std::vector<std::string_view> fields_;
};

}  // namespace

void check_potentials(const CheckedJob& job, const SectionLayout& layout, const std::vector<MoleculeAtom>& atoms,
                      Findings& findings) {
    check_elements_of_potentials(read_section(layout.kind, job.text(layout.lines)), layout.lines.first, atoms, findings);
    WrittenPotentials(job, layout, findings).walk();
}

// Reports a basis set and core potentials that stand in each other's place.
void check_order_of_potentials(const CheckedJob& job, Findings& findings) {
    const auto has_stars = [&](const SectionLayout& section) {
        const SectionReading reading = read_section(ExtraInputSectionKind::BasisSet, job.text(section.lines));
        return std::any_of(reading.lines.begin(), reading.lines.end(), [](const SectionLine& line) {
            return line.form == LineForm::BlockEnd || line.form == LineForm::Include;
        });
    };
    const auto find = [&](ExtraInputSectionKind kind) {
        return std::find_if(job.layout.sections.begin(), job.layout.sections.end(),
                            [kind](const SectionLayout& section) { return section.kind == kind; });
    };
    const auto basis = find(ExtraInputSectionKind::BasisSet);
    const auto potentials = find(ExtraInputSectionKind::ECP);
    const auto end = job.layout.sections.end();
    if (basis != end && potentials != end && !has_stars(*basis) && has_stars(*potentials)) {
        findings.add("GJF-S026", Severity::Error,
                     "this looks like core potentials, and what stands behind it like a basis set", basis->lines.first,
                     "the basis set stands first");
    }
}

}  // namespace quor::input::gaussian
