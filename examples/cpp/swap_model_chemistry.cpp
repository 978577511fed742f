// Gives every job of a file another method and basis set: swap_model_chemistry IN METHOD BASIS OUT
#include <gjf/gjf.hpp>

#include <cstddef>
#include <exception>
#include <iostream>

namespace gjf = quor::input::gaussian;

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: swap_model_chemistry IN METHOD BASIS OUT\n";
        return 2;
    }
    try {
        gjf::GJFMultiEditor file(gjf::GJFParser::parse_file_multi(argv[1]));
        for (std::size_t i = 0; i < file.job_count(); ++i) {
            file.job(i).set_model_chemistry_method(argv[2]);
            file.job(i).set_model_chemistry_basis(argv[3]);
        }
        file.save_to_file(argv[4]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
