// Finds the atoms that a selection means, step by step on a stack of marks.
//
// Translation vectors stand in the list of atoms, but are none: they are selected by their symbol or number alone.
#include <gjf/core/selection/selection.hpp>

#include <gjf/core/chemistry/cells.hpp>
#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <optional>

namespace quor::input::gaussian {
namespace {

using Marks = std::vector<bool>;

// Layers may be written out: High, Medium, Low.
std::string layer_name(const std::string& layer) {
    const char letter = layer_letter(layer);
    return letter == '?' ? to_lower_copy(layer) : std::string(1, letter);
}

bool has_parameter(const AtomInfo& info, std::string_view key, const std::string& value) {
    const std::string* found = find_parameter(info, key);
    return found != nullptr && equals_folded(*found, value);
}

// Tells whether a species is the one that is asked for: atoms are told by their element, all else by its kind.
bool is_same(const Species& species, const Species& wanted) noexcept {
    return species.kind == wanted.kind && species.nuclear_charge() == wanted.nuclear_charge();
}

class SelectedAtoms {
   public:
    explicit SelectedAtoms(const GJFData& job) : job_(job) {
        for (const AtomCoord& atom : job.geom.atoms) {
            atoms_.push_back({&atom.info, &atom, species_of(atom.info)});
        }
        for (const ZMatrixEntry& row : job.geom.zmatrix_entries) {
            atoms_.push_back({&row.info, nullptr, species_of(row.info)});
        }
    }

    std::vector<std::size_t> find(const Selection& selection) {
        for (const SelectionStep& step : selection.steps) {
            take(step);
        }
        std::vector<std::size_t> indices;
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            if (stack_.back()[i]) {
                indices.push_back(i);
            }
        }
        return indices;
    }

   private:
    struct SeenAtom {
        const AtomInfo* info;
        const AtomCoord* line;  // null for a row of a Z-matrix
        Species species;

        bool is_atom() const noexcept { return species.kind != SpeciesKind::TranslationVector; }
    };

    void take(const SelectionStep& step) {
        switch (step.test) {
            case SelectionTest::Not:
                stack_.back().flip();
                return keep_atoms(stack_.back());
            case SelectionTest::Within:
                return take_near(step.distance);
            case SelectionTest::BondedTo:
                return take_bonded();
            case SelectionTest::And:
            case SelectionTest::Or:
                return join(step.test == SelectionTest::And);
            case SelectionTest::Numbers:
                return take_numbers(step.numbers);
            default:
                return take_test(step);
        }
    }

    void keep_atoms(Marks& marks) const {
        for (std::size_t i = 0; i < marks.size(); ++i) {
            marks[i] = marks[i] && atoms_[i].is_atom();
        }
    }

    void take_test(const SelectionStep& step) {
        const std::string name = step.test == SelectionTest::Layer ? layer_name(step.name) : to_lower_copy(step.name);
        // A symbol or an atomic number asks for the species, any other name for the label as it is written.
        const Species wanted = is_integer_text(name) ? species_of_name(name) : species_of_symbol(name);
        Marks marks(atoms_.size());
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            marks[i] = step.test == SelectionTest::Element && wanted.kind != SpeciesKind::Unknown
                           ? is_same(atoms_[i].species, wanted)
                           : passes(atoms_[i], step, name);
        }
        stack_.push_back(std::move(marks));
    }

    static bool passes(const SeenAtom& atom, const SelectionStep& step, const std::string& name) {
        switch (step.test) {
            case SelectionTest::All:
                return atom.is_atom();
            case SelectionTest::Frozen:
                return atom.is_atom() && atom.line != nullptr && atom.line->freeze.value_or(0) != 0;
            case SelectionTest::Element:
                return equals_folded(atom.info->element, name);
            case SelectionTest::Layer:
                return atom.line != nullptr && atom.line->layer && layer_name(*atom.line->layer) == name;
            case SelectionTest::Fragment:
                return has_parameter(*atom.info, "fragment", name);
            case SelectionTest::Type:
                return atom.info->mm_type == step.name;
            default:
                return has_parameter(*atom.info, "resname", name);
        }
    }

    void take_numbers(const std::vector<NumberRange>& numbers) {
        Marks marks(atoms_.size());
        for (const auto& [first, last] : numbers) {
            if (last > atoms_.size()) {
                throw SelectionError("there is no atom " + std::to_string(std::max(first, atoms_.size() + 1)) +
                                     ": the job has " + std::to_string(atoms_.size()));
            }
            std::fill(marks.begin() + static_cast<std::ptrdiff_t>(first - 1),
                      marks.begin() + static_cast<std::ptrdiff_t>(last), true);
        }
        stack_.push_back(std::move(marks));
    }

    // The distance is in the job's own units; the last digit of one that is met exactly does not decide.
    void take_near(double distance_wanted) {
        find_positions();
        keep_atoms(stack_.back());
        const double reach = distance_wanted * length_unit(job_) * (1 + 1e-12);
        Cells cells(reach, atoms_.size());
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            if (stack_.back()[i]) {
                cells.put(positions_[i], i);
            }
        }
        Marks marks(atoms_.size());
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            const auto is_near = [&](std::size_t other) { return distance(positions_[i], positions_[other]) <= reach; };
            marks[i] = atoms_[i].is_atom() && cells.any_near(positions_[i], is_near);
        }
        stack_.back() = std::move(marks);
    }

    void find_positions() {
        const std::vector<AtomPosition> found = positions(job_);
        positions_.resize(found.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            if (!found[i].position) {
                throw SelectionError("'within' needs coordinates, and " + position_fault_text(found[i], i + 1));
            }
            positions_[i] = *found[i].position;
        }
    }

    void take_bonded() {
        const ConnectivitySection* connectivity = job_.connectivity();
        if (connectivity == nullptr) {
            throw SelectionError("'bonded to' needs connectivity, and the job has none");
        }
        Marks marks(atoms_.size());
        const Marks& partners = stack_.back();
        for (const Bond& bond : connectivity->bonds) {
            const auto a = static_cast<std::size_t>(bond.atom1);
            const auto b = static_cast<std::size_t>(bond.atom2);
            // The bonds of a molecule that stands in a checkpoint, and of a Z-matrix, may name any atom.
            if (a < marks.size() && b < marks.size()) {
                marks[a] = marks[a] || partners[b];
                marks[b] = marks[b] || partners[a];
            }
        }
        stack_.back() = std::move(marks);
    }

    void join(bool both) {
        const Marks second = std::move(stack_.back());
        stack_.pop_back();
        Marks& first = stack_.back();
        for (std::size_t i = 0; i < first.size(); ++i) {
            first[i] = both ? first[i] && second[i] : first[i] || second[i];
        }
    }

    const GJFData& job_;
    std::vector<SeenAtom> atoms_;
    std::vector<Position> positions_;
    std::vector<Marks> stack_;
};

}  // namespace

std::vector<std::size_t> selected_atoms(const Selection& selection, const GJFData& job) {
    return SelectedAtoms(job).find(selection);
}

std::vector<std::size_t> select(const GJFData& job, std::string_view text) {
    return selected_atoms(parse_selection(text), job);
}

}  // namespace quor::input::gaussian
