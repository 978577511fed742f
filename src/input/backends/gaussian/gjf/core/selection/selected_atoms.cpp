// Finds the atoms that a selection means, step by step on a stack of marks.
//
// Translation vectors stand in the list of atoms, but are none: they are selected by their symbol or number alone.
#include <gjf/core/selection/atom_labels.hpp>
#include <gjf/core/selection/selection.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>

namespace quor::input::gaussian {
namespace {

using Marks = std::vector<bool>;
using Point = std::array<double, 3>;

// Layers may be written out: High, Medium, Low.
std::string layer_name(const std::string& layer) {
    const std::string name = to_lower_copy(layer);
    const bool written_out = name == "high" || name == "medium" || name == "low";
    return written_out ? name.substr(0, 1) : name;
}

bool has_parameter(const AtomCoord& atom, std::string_view key, const std::string& value) {
    const auto found = std::find_if(atom.info.params.begin(), atom.info.params.end(),
                                    [&](const auto& entry) { return equals_folded(entry.first, key); });
    return found != atom.info.params.end() && equals_folded(found->second, value);
}

// The coordinates of a job's atoms; variables stand for their values.
class Places {
   public:
    explicit Places(const GeomSection& geometry) {
        for (const ZMatrixVariable& variable : geometry.cartesian_variables) {
            variables_[to_lower_copy(variable.name)] = &variable.value;
        }
        for (const AtomCoord& atom : geometry.atoms) {
            points_.push_back({value_of(atom.x_ref, atom.x), value_of(atom.y_ref, atom.y), value_of(atom.z_ref, atom.z)});
        }
    }

    const Point& operator[](std::size_t atom) const { return points_[atom]; }

   private:
    double value_of(const CoordinateValue& written, double number) const {
        if (written.text.empty() || written.value) {
            return number;
        }
        const bool has_sign = written.text.front() == '-' || written.text.front() == '+';
        const auto found = variables_.find(to_lower_copy(written.text.substr(has_sign ? 1 : 0)));
        const std::optional<double> value = found == variables_.end() ? std::nullopt : to_number(*found->second);
        if (!value || !std::isfinite(*value)) {
            throw SelectionError("'within' needs coordinates, and " + written.text + " has no value");
        }
        return written.text.front() == '-' ? -*value : *value;
    }

    std::map<std::string, const std::string*> variables_;
    std::vector<Point> points_;
};

// Sorts atoms into cubes as wide as the distance asked for, so that only neighbouring cubes are looked into.
class NearAtoms {
   public:
    NearAtoms(const Places& places, const Marks& marks, double distance) : places_(places), distance_(distance) {
        for (std::size_t i = 0; i < marks.size(); ++i) {
            if (marks[i]) {
                cubes_[cube_of(places_[i])].push_back(i);
            }
        }
    }

    bool has_one_near(const Point& point) const {
        const Cube middle = cube_of(point);
        for (int neighbour = 0; neighbour < 27; ++neighbour) {
            const Cube cube{middle[0] + neighbour % 3 - 1, middle[1] + neighbour / 3 % 3 - 1, middle[2] + neighbour / 9 - 1};
            const auto found = cubes_.find(cube);
            if (found != cubes_.end() && std::any_of(found->second.begin(), found->second.end(),
                                                     [&](std::size_t atom) { return is_near(places_[atom], point); })) {
                return true;
            }
        }
        return false;
    }

   private:
    using Cube = std::array<std::int64_t, 3>;

    Cube cube_of(const Point& point) const {
        // Far out, cubes are joined, which costs time alone.
        constexpr double farthest = 1e15;
        Cube cube{};
        std::transform(point.begin(), point.end(), cube.begin(), [&](double coordinate) {
            return static_cast<std::int64_t>(std::clamp(std::floor(coordinate / distance_), -farthest, farthest));
        });
        return cube;
    }

    bool is_near(const Point& a, const Point& b) const {
        return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]) <= distance_;
    }

    const Places& places_;
    double distance_;
    std::map<Cube, std::vector<std::size_t>> cubes_;
};

class SelectedAtoms {
   public:
    explicit SelectedAtoms(const GJFData& job) : job_(job), atoms_(job.geom.atoms) {
        for (const AtomCoord& atom : atoms_) {
            is_atom_.push_back(!is_translation_vector(atom));
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
            marks[i] = marks[i] && is_atom_[i];
        }
    }

    void take_test(const SelectionStep& step) {
        const std::string name = step.test == SelectionTest::Layer ? layer_name(step.name) : to_lower_copy(step.name);
        Marks marks(atoms_.size());
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            marks[i] = passes(i, step, name);
        }
        stack_.push_back(std::move(marks));
    }

    bool passes(std::size_t index, const SelectionStep& step, const std::string& name) const {
        const AtomCoord& atom = atoms_[index];
        switch (step.test) {
            case SelectionTest::All:
                return is_atom_[index];
            case SelectionTest::Frozen:
                return is_atom_[index] && atom.freeze.value_or(0) != 0;
            case SelectionTest::Element:
                return element_of_label(atom.info.element) == name || to_lower_copy(atom.info.element) == name;
            case SelectionTest::Layer:
                return atom.layer && layer_name(*atom.layer) == name;
            case SelectionTest::Fragment:
                return has_parameter(atom, "fragment", name);
            case SelectionTest::Type:
                return atom.info.mm_type == step.name;
            default:
                return has_parameter(atom, "resname", name);
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

    void take_near(double distance) {
        if (!places_) {
            places_.emplace(job_.geom);
        }
        keep_atoms(stack_.back());
        const NearAtoms near(*places_, stack_.back(), distance);
        Marks marks(atoms_.size());
        for (std::size_t i = 0; i < atoms_.size(); ++i) {
            marks[i] = is_atom_[i] && near.has_one_near((*places_)[i]);
        }
        stack_.back() = std::move(marks);
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
            marks[a] = marks[a] || partners[b];
            marks[b] = marks[b] || partners[a];
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
    const std::vector<AtomCoord>& atoms_;
    Marks is_atom_;
    std::optional<Places> places_;
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
