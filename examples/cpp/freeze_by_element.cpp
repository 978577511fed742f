// Freezes all atoms of an element: freeze_by_element IN ELEMENT CODE OUT
#include <gjf/gjf.hpp>

#include <cstdlib>
#include <exception>
#include <iostream>

namespace gjf = quor::input::gaussian;

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: freeze_by_element IN ELEMENT CODE OUT\n";
        return 2;
    }
    try {
        gjf::GJFEditor editor(gjf::GJFParser::parse_file(argv[1]));
        editor.set_freeze_by_element(argv[2], std::atoi(argv[3]));
        std::cout << "frozen atoms: " << editor.get_frozen_atoms() << '\n';
        editor.save_to_file(argv[4]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
