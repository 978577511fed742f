// Writes the jobs of two files into one: merge_files FIRST SECOND OUT
#include <gjf/gjf.hpp>

#include <exception>
#include <iostream>
#include <utility>

namespace gjf = quor::input::gaussian;

int main(int argc, char** argv) {
    if (argc < 4) {
        std::cerr << "usage: merge_files FIRST SECOND OUT\n";
        return 2;
    }
    try {
        gjf::GJFMultiEditor merged(gjf::GJFParser::parse_file_multi(argv[1]));
        gjf::GJFMultiData second = gjf::GJFParser::parse_file_multi(argv[2]);
        for (gjf::GJFData& job : second.jobs) {
            merged.add_job(std::move(job));
        }
        merged.save_to_file(argv[argc - 1]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
