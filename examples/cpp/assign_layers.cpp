// Puts a hydroxyl group into the high layer of an ONIOM job, all else into the low one: assign_layers IN OUT
#include <gjf/gjf.hpp>

#include <cmath>
#include <cstddef>
#include <exception>
#include <iostream>
#include <vector>

namespace gjf = quor::input::gaussian;

namespace {

double distance(const gjf::AtomCoord& a, const gjf::AtomCoord& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

// Oxygen, and every hydrogen within 1.1 angstrom of one.
bool in_hydroxyl(const gjf::AtomCoord& atom, const std::vector<gjf::AtomCoord>& atoms) {
    if (atom.info.element == "O") {
        return true;
    }
    for (const gjf::AtomCoord& other : atoms) {
        if (atom.info.element == "H" && other.info.element == "O" && distance(atom, other) < 1.1) {
            return true;
        }
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: assign_layers IN OUT\n";
        return 2;
    }
    try {
        gjf::GJFEditor editor(gjf::GJFParser::parse_file(argv[1]));
        const std::vector<gjf::AtomCoord>& atoms = editor.get_data().geom.atoms;
        editor.set_oniom_layer_by_selector([&](const gjf::AtomCoord& atom, std::size_t) { return in_hydroxyl(atom, atoms); },
                                           "H");
        std::cout << "high layer: " << editor.get_atoms_by_oniom_layer("H") << '\n';
        editor.save_to_file(argv[argc - 1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
