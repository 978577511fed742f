// Adds a hydrogen atom bonded to the first atom: add_atom IN OUT
#include <gjf/gjf.hpp>

#include <exception>
#include <iostream>

namespace gjf = quor::input::gaussian;

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: add_atom IN OUT\n";
        return 2;
    }
    try {
        gjf::GJFEditor editor(gjf::GJFParser::parse_file(argv[1]));
        gjf::AtomCoord hydrogen;
        hydrogen.info.element = "H";
        hydrogen.x = 1.0;
        hydrogen.y = -0.5;
        editor.add_atom_with_connectivity(hydrogen, {{0, 1.0}});
        std::cout << "bonds: " << editor.get_bond_count() << '\n';
        editor.save_to_file(argv[argc - 1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
