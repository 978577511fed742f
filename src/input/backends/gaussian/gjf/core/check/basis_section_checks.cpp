// Checks of general basis sets and effective core potentials against the atoms of the molecule.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t element_count = 119;  // by atomic number

// The atoms that a line of centers names: elements, and atom numbers from 1.
struct Centers {
    std::vector<std::pair<int, std::string_view>> elements;
    std::vector<NumberRange> ranges;
};

bool add_center(std::string_view field, Centers& centers) {
    const std::string_view name = !field.empty() && field.front() == '-' ? field.substr(1) : field;
    if (const int number = atomic_number(name); number != 0) {
        // A minus sign before the element allows for its absence.
        centers.elements.emplace_back(field.front() == '-' ? -number : number, field);
        return true;
    }
    if (equals_folded(name, "bq")) {
        return true;
    }
    // Numbers past the last atom are a finding of their own.
    const std::optional<NumberRange> range = to_number_range(name, 1);
    if (range) {
        centers.ranges.push_back(*range);
    }
    return range.has_value();
}

// Tells whether a line of centers, with its 0, begins with a symbol of one or two letters that is none.
bool is_wrong_symbol(std::string_view line) {
    std::vector<std::string_view> fields;
    cut_section_line(line, fields);
    return fields.size() >= 2 && fields.back() == "0" && fields[0].size() <= 2 && !fields[0].empty() &&
           atomic_number(fields[0]) == 0 && !equals_folded(fields[0], "bq") &&
           std::all_of(fields[0].begin(), fields[0].end(), is_letter);
}

// Tells whether a line can surely name no atoms: it has a number with a point, or begins with a word that no label of an
// element begins. Where sections are left over, it is perhaps read in the place of another.
bool names_none(const CheckedJob& job, std::size_t number) {
    const std::vector<SectionLayout>& sections = job.layout.sections;
    if (is_wrong_symbol(job.line(number))) {
        return true;
    }
    if (std::any_of(sections.begin(), sections.end(),
                    [](const SectionLayout& section) { return section.kind == ExtraInputSectionKind::Unknown; })) {
        return false;
    }
    std::vector<std::string_view> fields;
    cut_section_line(job.line(number), fields);
    const bool is_word =
        !fields.empty() && fields[0].size() > 3 && std::all_of(fields[0].begin(), fields[0].end(), is_letter);
    return is_word || std::any_of(fields.begin(), fields.end(), [](std::string_view field) {
               return field.find('.') != std::string_view::npos && is_fortran_or_c_number(field);
           });
}

// Reads the tokens of a line of centers; absent when one of them is neither an element nor an atom.
std::optional<Centers> read_centers(const SectionReading& section, const SectionLine& line) {
    Centers centers;
    for (const SectionToken& token : section.tokens_of(line)) {
        if (token.kind != TokenKind::End && !add_center(section[token.span], centers)) {
            return std::nullopt;
        }
    }
    return centers;
}

// Blocks that a blank line cuts off their section are left over; returns the line of the first, or `otherwise`.
std::size_t first_cut_off(const CheckedJob& job, std::size_t otherwise) {
    for (const SectionLayout& section : job.layout.sections) {
        for (std::size_t line = section.lines.first; line <= section.lines.last; ++line) {
            if (section.kind == ExtraInputSectionKind::Unknown && trim_view(job.line(line)).substr(0, 4) == "****") {
                return section.lines.first;
            }
        }
    }
    return otherwise;
}

// Walks the blocks of a general basis set.
class BasisWalk {
   public:
    BasisWalk(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings)
        : job_(job), findings_(findings), coverage_steps_(atoms.size() + 1) {
        for (const MoleculeAtom& atom : atoms) {
            in_molecule_[static_cast<std::size_t>(atom.species.element)] = true;
            has_unknown_ = has_unknown_ || atom.species.kind == SpeciesKind::Unknown;
        }
    }

    void walk(const SectionLayout& layout) {
        const SectionReading section = read_section(layout.kind, job_.text(layout.lines));
        for (std::size_t i = 0; i < section.lines.size() && !includes_; ++i) {
            take_line(section, section.lines[i], layout.lines.first + i);
        }
        close_shell();
        if (open_block_ != 0 && !includes_ && has_stars_ && wants_potentials()) {
            findings_.add("GJF-S010", Severity::Error, "the core potentials seem to begin here, within the basis set",
                          open_block_, "a blank line parts them from the basis set");
        } else if (open_block_ != 0 && !includes_) {
            Finding& finding = findings_.add("GJF-S010", first_cut_off(job_, 0) != 0 ? Severity::Error : Severity::Warning,
                                             "the last block of the basis set is not closed", layout.lines.last,
                                             "end every block with ****");
            // Where no block has stars, these lines are perhaps the potentials, which have none.
            if (has_stars_ || !(job_.names_basis("genecp") || job_.has_keyword("pseudo"))) {
                offer(finding, "close it with ****", FixSafety::Unsafe, {job_.behind_line(layout.lines.last, "\n****")});
            }
        }
    }

    // Elements that have a core potential may go without functions.
    void cover_by_potentials(const SectionLayout& layout) {
        const SectionReading section = read_section(layout.kind, job_.text(layout.lines));
        opaque_ = opaque_ || !section.unclear.empty();
        for (const SectionLine& line : section.lines) {
            for (const SectionToken& token : section.tokens_of(line)) {
                if (token.kind == TokenKind::Element) {
                    covered_[static_cast<std::size_t>(atomic_number(section[token.span]))] = true;
                }
            }
        }
    }

    void check_coverage(const std::vector<MoleculeAtom>& atoms, std::size_t line) {
        std::set<int> reported;
        std::int64_t blocks = 0;  // that name atom i by its number
        for (std::size_t i = 0; i < atoms.size() && !opaque_; ++i) {
            const Species& species = atoms[i].species;
            blocks += coverage_steps_[i];
            const bool covered = covered_[static_cast<std::size_t>(species.element)] || blocks > 0;
            if (species.kind == SpeciesKind::Atom && species.certain && !covered &&
                reported.insert(species.element).second) {
                findings_.add("GJF-S007", Severity::Error,
                              std::string("no basis set is given for ") + element_symbol(species.element) + " (atom " +
                                  std::to_string(i + 1) + ")",
                              line, "name it in a line of centers");
            }
        }
    }

   private:
    // Tells whether the route asks for core potentials and no section is left for them.
    bool wants_potentials() const {
        return std::find(job_.layout.missing.begin(), job_.layout.missing.end(), ExtraInputSectionKind::ECP) !=
               job_.layout.missing.end();
    }

    // A primitive has an exponent above 0 and a coefficient, two for SP shells.
    void check_primitive(const SectionReading& section, const SectionLine& line, std::size_t number) {
        const auto tokens = section.tokens_of(line);
        const std::size_t wanted = 2 + std::size_t{shell_is_sp_};
        const auto odd = std::find_if_not(tokens.begin(), tokens.end(), [&](const SectionToken& token) {
            return is_fortran_or_c_number(section[token.span]);
        });
        if (odd != tokens.end()) {
            // Words behind all the numbers may go unread.
            const bool is_read = std::cmp_less(odd - tokens.begin(), wanted);
            findings_.add("GJF-S028", is_read ? Severity::Error : Severity::Warning,
                          "'" + std::string(section[odd->span]) + "' is no number",
                          job_.place_in(number, section[odd->span]));
        } else if (!tokens.empty() && section[tokens[0].span].front() == '-') {
            findings_.add("GJF-S028", Severity::Warning, "an exponent is above 0", number);
        } else if (tokens.size() != wanted) {
            (tokens.size() < wanted ? short_lines_ : long_lines_).push_back(number);
        }
    }

    // Reports the primitives of a shell that have a number too few or too many; where all have, the shell's letter is wrong.
    void tell_columns(std::vector<std::size_t>& lines, Severity severity, const char* of_one, const char* of_all) {
        const bool is_of_all = !lines.empty() && std::cmp_equal(lines.size(), given_primitives_) &&
                               (lines.size() > 1 || &lines == &long_lines_);
        for (std::size_t i = 0; i < (is_of_all ? 1 : lines.size()); ++i) {
            findings_.add(
                "GJF-S028", severity, is_of_all ? of_all : of_one, is_of_all ? shell_line_ : lines[i],
                shell_is_sp_ ? "an SP shell has an exponent and two coefficients" : "an exponent and a coefficient");
        }
        lines.clear();
    }

    // Reports a shell that wants more primitives than stand behind it: the next line is read as one and is none.
    void close_shell() {
        tell_columns(short_lines_, Severity::Error, "a coefficient is missing",
                     "each primitive of this shell lacks a coefficient");
        tell_columns(long_lines_, Severity::Warning, "a number is one too many",
                     "each primitive of this shell has a number too many");
        if (given_primitives_ < wanted_primitives_ && !includes_) {
            findings_.add("GJF-S024", Severity::Error,
                          "this shell has " + std::to_string(given_primitives_) + " of its " +
                              std::to_string(wanted_primitives_) + " primitives",
                          shell_line_, "a line of exponent and coefficients for each");
        }
        wanted_primitives_ = given_primitives_ = 0;
    }

    // Tells whether a line that is no primitive was meant as one: a shell wants more, and numbers stand here, some spoilt.
    bool take_spoilt_primitive(const SectionReading& section, const SectionLine& line, std::size_t number) {
        const auto tokens = section.tokens_of(line);
        if (given_primitives_ >= wanted_primitives_ || line.form != LineForm::Name || tokens.size() < 2 ||
            section[tokens[0].span].find('.') == std::string_view::npos ||
            !is_fortran_or_c_number(section[tokens[1].span])) {
            return false;
        }
        findings_.add("GJF-S028", Severity::Error, "'" + std::string(section[tokens[0].span]) + "' is no number",
                      job_.place_in(number, section[tokens[0].span]));
        ++given_primitives_;
        return true;
    }

    void open_shell(const SectionReading& section, const SectionLine& line, std::size_t number) {
        block_has_shells_ = true;
        shell_is_broken_ = false;
        shell_line_ = number;
        // Shells that the program expands by itself give their own number in another place.
        const auto tokens = section.tokens_of(line);
        const bool is_slater = equals_folded(section[tokens[0].span], "sto");
        shell_is_sp_ = equals_folded(section[tokens[0].span], "sp");
        wanted_primitives_ = is_slater ? 0 : to_int64(section[tokens[1].span]).value_or(0);
        if (!is_slater && tokens.size() > 2 && !is_fortran_or_c_number(section[tokens[2].span])) {
            findings_.add("GJF-S028", Severity::Warning, "'" + std::string(section[tokens[2].span]) + "' is no scale factor",
                          job_.place_in(number, section[tokens[2].span]));
        }
    }

    void take_line(const SectionReading& section, const SectionLine& line, std::size_t number) {
        if (line.form == LineForm::Primitive) {
            ++given_primitives_;
            check_primitive(section, line, number);
        } else if (take_spoilt_primitive(section, line, number)) {
            return;
        } else if (line.count > 0 && line.form != LineForm::Include) {
            close_shell();
        }
        if (line.form == LineForm::Include) {
            // What is not read may cover any atom.
            includes_ = opaque_ = true;
        } else if (line.form == LineForm::BlockEnd) {
            close_shell();
            if (open_block_ != 0 && open_block_ + 1 == number) {
                findings_.add("GJF-S028", Severity::Warning, "this block gives no functions to the atoms above it", number,
                              "the name of a basis set, or shells, stand before the stars");
            }
            open_block_ = 0;
            has_stars_ = true;
        } else if (line.form == LineForm::Centers) {
            if (open_block_ != 0) {
                Finding& finding = findings_.add(
                    "GJF-S010", Severity::Error,
                    "a new block begins here, but the one of line " + std::to_string(open_block_) + " is not closed", number,
                    "end every block with ****");
                relate_line(job_, open_block_, "the open block", finding);
                offer(finding, "close it with ****", FixSafety::Unsafe, {job_.behind_line(number - 1, "\n****")});
            }
            open(read_centers(section, line), number);
        } else if (line.form == LineForm::Shell) {
            open_shell(section, line, number);
        } else if (line.form == LineForm::Name) {
            take_name(number, trim_view(without_comment(section[line.span])));
        }
    }

    void open(const std::optional<Centers>& centers, std::size_t line) {
        open_block_ = line;
        block_has_shells_ = false;
        shell_is_broken_ = false;
        block_elements_.clear();
        if (!centers) {
            findings_.add("GJF-S011", names_none(job_, line) ? Severity::Error : Severity::Warning,
                          "this line names no atoms: elements or atom numbers, and a 0 behind them", line);
            // What cannot be followed may cover any atom.
            opaque_ = true;
            return;
        }
        for (const auto& [number, field] : centers->elements) {
            cover(number, job_.place_in(line, field));
        }
        for (const auto& [first, last] : centers->ranges) {
            if (std::cmp_greater_equal(last, coverage_steps_.size())) {
                findings_.add("GJF-S011", Severity::Warning, "atom " + std::to_string(last) + " is not in the molecule",
                              line);
            }
            const auto end = static_cast<std::int64_t>(coverage_steps_.size());
            if (first <= end) {
                ++coverage_steps_[static_cast<std::size_t>(first - 1)];
                --coverage_steps_[static_cast<std::size_t>(std::min(last, end - 1))];
            }
        }
    }

    void cover(int number, const TextPlace& place) {
        const auto element = static_cast<std::size_t>(std::abs(number));
        if (number > 0 && !in_molecule_[element]) {
            Finding& finding =
                findings_.add("GJF-S011", Severity::Warning, std::string(element_symbol(number)) + " is not in the molecule",
                              place, "remove it, or write -" + std::string(element_symbol(number)));
            if (place.column != 0 && !has_unknown_) {
                offer(finding, "write -" + std::string(element_symbol(number)), FixSafety::Unsafe,
                      {job_.replacing({place.line, place.column, 0}, "-")});
            }
        }
        block_elements_.push_back({element, place});
        covered_[element] = true;
    }

    // Takes a line that is laid out as that of a shell, but has no type of shell, or no number of primitives.
    bool take_broken_shell(std::size_t line, std::string_view text) {
        std::vector<std::string_view> fields;
        cut_section_line(text, fields);
        if (fields.size() < 2 || !std::all_of(fields[0].begin(), fields[0].end(), is_letter)) {
            return false;
        }
        const std::string type = to_lower_copy(fields[0]);
        constexpr std::string_view further_letters = "jlmno";
        const bool is_letter_of_shell = is_shell_letter(type[0]) || further_letters.find(type[0]) != std::string_view::npos;
        const bool is_type = type == "sp" || (type.size() == 1 && is_letter_of_shell);
        const bool has_count = to_int64(fields[1]).has_value();
        if (is_type == has_count || (!is_type && type.size() != 1)) {
            return false;
        }
        const std::string_view odd = fields[is_type ? 1 : 0];
        findings_.add("GJF-S028", Severity::Error,
                      "'" + std::string(odd) + (is_type ? "' is no number of primitives" : "' is no type of shell"),
                      job_.place_in(line, odd), "a shell begins as S 3 1.00: type, number of primitives, scale factor");
        block_has_shells_ = shell_is_broken_ = true;
        return true;
    }

    // Reports elements of this block that an earlier one names a set for.
    void check_named_before() {
        for (const auto& [element, place] : block_elements_) {
            if (named_[element] && !block_has_shells_) {
                Finding& finding = findings_.add(
                    "GJF-S008", Severity::Warning,
                    std::string(element_symbol(static_cast<int>(element))) + " is given a basis set twice", place);
                relate(*named_[element], "first here", finding);
            }
            named_[element] = place;
        }
    }

    void take_name(std::size_t line, std::string_view text) {
        if (is_fortran_or_c_number(text.substr(0, text.find_first_of(" \t,")))) {
            if (!std::exchange(shell_is_broken_, true)) {
                findings_.add("GJF-S028", block_has_shells_ ? Severity::Error : Severity::Warning,
                              "the shell before has all its primitives: this is one too many", line,
                              "the second number of a shell's line tells how many follow");
            }
            return;
        }
        if (take_broken_shell(line, text)) {
            return;
        }
        check_named_before();
        const std::string name(text);
        const bool is_path = text.find('/') != std::string_view::npos;
        if (text.find_first_not_of('*') == text.npos || (is_path && job_.schema.knows_basis_exact(name.substr(1)))) {
            findings_.add("GJF-S009", Severity::Error, "'" + name + "' is no basis set", job_.place_in(line, text),
                          is_path ? "without the slash" : "four stars end a block");
            return;
        }
        if (is_path || stuttgart_core(text) || !job_.schema.is_loaded() || job_.schema.knows_basis(name)) {
            return;
        }
        // Words for further functions stand behind the name.
        const std::string_view set = text.substr(0, text.find_first_of("(*"));
        const std::vector<std::string> near = findings_.may_look_for_names()
                                                  ? near_names(to_lower_copy(set), all_basis_sets(job_.schema))
                                                  : std::vector<std::string>();
        const bool is_sure = is_misspelt(set, near) || is_misspelt_model(set, near);
        Finding& finding = findings_.add("GJF-S009", is_sure ? Severity::Error : Severity::Warning,
                                         "'" + name + "' is no basis set", job_.place_in(line, text), did_you_mean(near));
        if (set.size() == text.size()) {
            offer_near(job_, job_.place_in(line, set), set, near, finding);
        }
    }

    const CheckedJob& job_;
    Findings& findings_;
    bool has_stars_ = false;
    std::size_t open_block_ = 0;  // line of the centers of the block that is open
    bool block_has_shells_ = false;
    bool shell_is_broken_ = false;  // so that what stands below it says nothing
    std::size_t shell_line_ = 0;
    bool shell_is_sp_ = false;
    std::int64_t wanted_primitives_ = 0;
    std::int64_t given_primitives_ = 0;
    std::vector<std::size_t> short_lines_;  // primitives of the shell with a number too few
    std::vector<std::size_t> long_lines_;   // and with one too many
    bool opaque_ = false;
    bool includes_ = false;
    std::vector<std::pair<std::size_t, TextPlace>> block_elements_;
    std::array<bool, element_count> in_molecule_{};
    bool has_unknown_ = false;  // an atom whose element nobody knows
    std::array<bool, element_count> covered_{};
    std::array<std::optional<TextPlace>, element_count> named_{};
    std::vector<std::int64_t> coverage_steps_;  // where ranges of atom numbers begin and end
};

void check_basis_sections(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    if (atoms.empty()) {
        return;
    }
    const bool covers_all = (job.names_basis("gen") || job.names_basis("genecp")) && job.route.oniom_expression.empty();
    for (const SectionLayout& section : job.layout.sections) {
        if (section.kind == ExtraInputSectionKind::BasisSet) {
            BasisWalk walk(job, atoms, findings);
            walk.walk(section);
            for (const SectionLayout& other : job.layout.sections) {
                if (other.kind == ExtraInputSectionKind::ECP) {
                    walk.cover_by_potentials(other);
                }
            }
            if (covers_all) {
                walk.check_coverage(atoms, first_cut_off(job, section.lines.first));
            }
        } else if (section.kind == ExtraInputSectionKind::ECP) {
            check_potentials(job, section, atoms, findings);
        }
    }
    check_order_of_potentials(job, findings);
}

}  // namespace

const Family basis_section_family = {Known::Molecule,
                                     check_basis_sections,
                                     {"GJF-S007", "GJF-S008", "GJF-S009", "GJF-S010", "GJF-S011", "GJF-S012", "GJF-S024",
                                      "GJF-S026", "GJF-S028", "GJF-S029"}};

}  // namespace quor::input::gaussian
