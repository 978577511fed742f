// Checks the sets that blocks of a general basis set name: the elements that they have, and the core potentials that they
// count on.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Elements = std::array<bool, 119>;  // by atomic number

// The elements of a line of centers that the molecule has, each with where it stands.
using PlacedElements = std::vector<std::pair<int, std::string_view>>;

Elements nuclei_of(const std::vector<MoleculeAtom>& atoms) {
    Elements present{};
    for (const MoleculeAtom& atom : atoms) {
        present[static_cast<std::size_t>(atom.species.nuclear_charge())] = true;
    }
    present[0] = false;
    return present;
}

PlacedElements elements_of(const SectionReading& section, const SectionLine& line, const std::vector<MoleculeAtom>& atoms,
                           const Elements& present) {
    PlacedElements found;
    Elements seen{};
    const auto add = [&](const Species& species, std::string_view place) {
        if (species.kind == SpeciesKind::Atom && !std::exchange(seen[static_cast<std::size_t>(species.element)], true)) {
            found.emplace_back(species.element, place);
        }
    };
    for (const SectionToken& token : section.tokens_of(line)) {
        const std::string_view text = section[token.span];
        if (token.kind == TokenKind::Element) {
            const int element = atomic_number(text.substr(text.starts_with('-') ? 1 : 0));
            add(Species{present[static_cast<std::size_t>(element)] ? SpeciesKind::Atom : SpeciesKind::Unknown, element,
                        true},
                text);
        } else if (const std::optional<NumberRange> range = to_number_range(text, 1);
                   range && token.kind == TokenKind::Atoms) {
            for (std::int64_t i = range->first; i <= std::min<std::int64_t>(range->last, std::ssize(atoms)); ++i) {
                add(atoms[static_cast<std::size_t>(i - 1)].species, text);
            }
        }
    }
    return found;
}

// Returns the elements that are given a core potential; absent where that is not known.
std::optional<Elements> elements_with_potential(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms,
                                                const Elements& present) {
    Elements given{};
    const bool are_read = job.names_basis("genecp") || job.has_keyword("pseudo");
    if (job.has_keyword("pseudo") && !job.has_option("pseudo", "read")) {
        return std::nullopt;
    }
    bool found = !are_read;
    for (const SectionLayout& layout : job.layout.sections) {
        if (layout.kind != ExtraInputSectionKind::ECP) {
            continue;
        }
        found = true;
        const SectionReading section = read_section(layout.kind, job.text(layout.lines));
        for (const SectionLine& line : section.lines) {
            if (line.form == LineForm::Include || line.form == LineForm::LeftOver || !section.unclear.empty()) {
                return std::nullopt;
            }
            for (const auto& [element, place] :
                 line.form == LineForm::Centers ? elements_of(section, line, atoms, present) : PlacedElements()) {
                given[static_cast<std::size_t>(element)] = true;
            }
        }
    }
    return found ? std::optional(given) : std::nullopt;
}

class NamedBlocks {
   public:
    NamedBlocks(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings)
        : job_(job),
          atoms_(atoms),
          findings_(findings),
          present_(nuclei_of(atoms)),
          with_potential_(elements_with_potential(job, atoms, present_)) {}

    void check(const SectionLayout& layout) {
        const SectionReading section = read_section(layout.kind, job_.text(layout.lines));
        PlacedElements centers;
        std::size_t line_of_centers = 0;
        for (std::size_t i = 0; i < section.lines.size(); ++i) {
            const SectionLine& line = section.lines[i];
            if (line.form == LineForm::Centers) {
                centers = elements_of(section, line, atoms_, present_);
                line_of_centers = layout.lines.first + i;
            } else if (line.form == LineForm::Name) {
                const std::string name =
                    job_.schema.normalize_basis(to_lower_copy(trim_view(without_comment(section[line.span]))));
                for (const auto& [element, place] : centers) {
                    check_element(name, element, job_.place_in(line_of_centers, place));
                }
            }
        }
    }

   private:
    void check_element(const std::string& name, int element, const TextPlace& place) {
        const std::string symbol(element_symbol(element));
        report_lack(name, element, place, findings_);
        const auto index = static_cast<std::size_t>(element);
        const int cores = basis_elements(name) == nullptr ? 0 : core_electrons(name, element).value_or(0);
        if (cores > 0 && with_potential_ && !(*with_potential_)[index] && !std::exchange(told_[index], true)) {
            findings_.add("GJF-B001", Severity::Warning,
                          name + " leaves " + std::to_string(cores) + " electrons of " + symbol +
                              " to a core potential, and none is given",
                          place, "write genecp, and the potential behind the basis set");
        }
    }

    const CheckedJob& job_;
    const std::vector<MoleculeAtom>& atoms_;
    Findings& findings_;
    Elements present_;
    std::optional<Elements> with_potential_;
    Elements told_{};
};

// Reports the names of potentials that are nearly those of basis sets which bring one; a name may be of a potential that is
// written out.
void check_names_of_potentials(const CheckedJob& job, const SectionLayout& layout, Findings& findings) {
    const SectionReading section = read_section(layout.kind, job.text(layout.lines));
    for (std::size_t i = 0; i < section.lines.size() && job.schema.is_loaded(); ++i) {
        const std::string_view name = trim_view(without_comment(section[section.lines[i].span]));
        if (section.lines[i].form != LineForm::Name || name.find_first_of(" \t,/") != std::string_view::npos ||
            stuttgart_core(name) || job.schema.knows_basis(std::string(name)) || !findings.may_look_for_names()) {
            continue;
        }
        const std::string lower = to_lower_copy(name);
        const std::vector<std::string> near = near_names(lower, all_basis_sets(job.schema));
        // The potential of lanl2dz is lanl2 too.
        if (!near.empty() &&
            std::none_of(near.begin(), near.end(), [&](const std::string& set) { return set.starts_with(lower); })) {
            const TextPlace place = job.place_in(layout.lines.first + i, name);
            const bool is_sure = is_misspelt(lower, near) || is_misspelt_model(lower, near);
            Finding& finding = findings.add("GJF-S009", is_sure ? Severity::Error : Severity::Warning,
                                            "'" + std::string(name) + "' is no core potential", place, did_you_mean(near));
            offer_near(job, place, name, near, finding);
        }
    }
}

void check_named_blocks(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    const bool reads_basis = job.names_basis("gen") || job.names_basis("genecp");
    if (!reads_basis || !job.route.oniom_expression.empty() || !job.schema.is_loaded() || job.has_keyword("iop") ||
        job.has_keyword("massage")) {
        return;
    }
    NamedBlocks blocks(job, atoms, findings);
    for (const SectionLayout& layout : job.layout.sections) {
        if (layout.kind == ExtraInputSectionKind::BasisSet) {
            blocks.check(layout);
        } else if (layout.kind == ExtraInputSectionKind::ECP) {
            check_names_of_potentials(job, layout, findings);
        }
    }
}

}  // namespace

const Family named_block_family = {Known::Molecule, check_named_blocks, {"GJF-B001"}};

}  // namespace quor::input::gaussian
