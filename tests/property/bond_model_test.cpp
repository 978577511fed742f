// Random sequences of atom edits: bonds stay equal to a naive model, in which each atom holds its own name and bonds name
// atoms.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "../support/sample_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using Pair = std::pair<std::string, std::string>;

Pair make_pair_of(const std::string& a, const std::string& b) { return a < b ? Pair(a, b) : Pair(b, a); }

// Atoms are names in order; a bond is a pair of names with an order.
struct Model {
    std::vector<std::string> atoms;
    std::map<Pair, double> bonds;
    int next_name = 0;

    std::string new_name() { return "A" + std::to_string(next_name++); }

    void remove(std::size_t index) {
        const std::string name = atoms[index];
        atoms.erase(atoms.begin() + static_cast<std::ptrdiff_t>(index));
        for (auto bond = bonds.begin(); bond != bonds.end();) {
            bond = bond->first.first == name || bond->first.second == name ? bonds.erase(bond) : std::next(bond);
        }
    }
    void reorder(const std::vector<std::size_t>& order) {
        std::vector<std::string> moved;
        for (const std::size_t old : order) {
            moved.push_back(atoms[old]);
        }
        atoms = moved;
    }
};

void expect_equal(const GJFEditor& editor, const Model& model) {
    std::vector<std::string> atoms;
    for (const AtomCoord& atom : editor.get_data().geom.atoms) {
        atoms.push_back(atom.info.element);
    }
    ASSERT_EQ(atoms, model.atoms);
    std::map<Pair, double> bonds;
    for (const Bond& bond : editor.get_all_bonds()) {
        ASSERT_LT(bond.atom1, bond.atom2);
        ASSERT_LT(bond.atom2, atoms.size());
        bonds[make_pair_of(atoms[bond.atom1], atoms[bond.atom2])] = bond.order;
    }
    ASSERT_EQ(bonds, model.bonds);
    ASSERT_EQ(editor.get_bond_count(), model.bonds.size());
}

class RandomEdits {
   public:
    explicit RandomEdits(unsigned seed) : random_(seed), editor_(test::make_job(0)) {}

    void run(int steps) {
        for (int step = 0; step < steps; ++step) {
            one_step();
            expect_equal(editor_, model_);
            if (::testing::Test::HasFatalFailure()) {
                FAIL() << "step " << step;
            }
        }
    }

   private:
    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }

    std::vector<std::size_t> some_indices() {
        std::vector<std::size_t> indices;
        for (std::size_t i = below(4); i-- > 0;) {
            indices.push_back(below(model_.atoms.size()));
        }
        return indices;
    }

    void add() {
        const std::string name = model_.new_name();
        AtomCoord atom;
        atom.info.element = name;
        std::vector<std::pair<std::size_t, double>> bonds;
        for (std::size_t i = model_.atoms.empty() ? 0 : below(3); i-- > 0;) {
            const std::size_t partner = below(model_.atoms.size());
            const double order = static_cast<double>(below(4)) - 1.0;
            bonds.emplace_back(partner, order);
            if (order > 0) {
                model_.bonds[make_pair_of(model_.atoms[partner], name)] = order;
            }
        }
        editor_.add_atom_with_connectivity(atom, bonds);
        model_.atoms.push_back(name);
    }

    void move_group(bool to_end) {
        const std::vector<std::size_t> indices = some_indices();
        to_end ? editor_.move_atoms_to_end(indices) : editor_.move_atoms_to_beginning(indices);
        const std::set<std::size_t> chosen(indices.begin(), indices.end());
        std::vector<std::size_t> order;
        for (const bool wanted : {!to_end, to_end}) {
            for (std::size_t i = 0; i < model_.atoms.size(); ++i) {
                if ((chosen.count(i) > 0) == wanted) {
                    order.push_back(i);
                }
            }
        }
        model_.reorder(order);
    }

    void remove_group() {
        const std::vector<std::size_t> indices = some_indices();
        editor_.remove_atoms(indices);
        const std::set<std::size_t> chosen(indices.begin(), indices.end());
        std::for_each(chosen.rbegin(), chosen.rend(), [this](std::size_t index) { model_.remove(index); });
    }

    void shuffle() {
        std::vector<std::size_t> order(model_.atoms.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::shuffle(order.begin(), order.end(), random_);
        editor_.reorder_atoms_with_connectivity(order);
        model_.reorder(order);
    }

    void move_one() {
        const std::size_t from = below(model_.atoms.size());
        const std::size_t to = below(model_.atoms.size());
        editor_.move_atom(from, to);
        const std::string name = model_.atoms[from];
        model_.atoms.erase(model_.atoms.begin() + static_cast<std::ptrdiff_t>(from));
        model_.atoms.insert(model_.atoms.begin() + static_cast<std::ptrdiff_t>(to), name);
    }

    void change_bond() {
        const std::size_t a = below(model_.atoms.size());
        const std::size_t b = below(model_.atoms.size());
        if (a == b) {
            return;
        }
        const Pair pair = make_pair_of(model_.atoms[a], model_.atoms[b]);
        const double order = static_cast<double>(below(5)) - 1.0;
        if (order < 0) {
            editor_.remove_bond(a, b);
        } else {
            editor_.set_bond_order(a, b, order);
        }
        if (order > 0) {
            model_.bonds[pair] = order;
        } else {
            model_.bonds.erase(pair);
        }
    }

    void one_step() {
        if (model_.atoms.size() < 2) {
            add();
            return;
        }
        switch (below(10)) {
            case 0:
            case 1:
                add();
                break;
            case 9:
                remove_group();
                break;
            case 2: {
                const std::size_t index = below(model_.atoms.size());
                editor_.remove_atom(index);
                model_.remove(index);
                break;
            }
            case 3:
                move_one();
                break;
            case 4:
                move_group(true);
                break;
            case 5:
                move_group(false);
                break;
            case 6:
                shuffle();
                break;
            default:
                change_bond();
                break;
        }
    }

    std::mt19937 random_;
    Model model_;
    GJFEditor editor_;
};

TEST(RandomEdits, KeepBondsEqualToANaiveModel) {
    for (unsigned seed = 1; seed <= 10; ++seed) {
        SCOPED_TRACE(seed);
        RandomEdits(seed).run(1000);
    }
}

}  // namespace
}  // namespace quor::input::gaussian
