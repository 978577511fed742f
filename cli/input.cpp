// Reads the tool's input.
#include "input.hpp"

#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace quor_gjf {

std::string read_text(const std::string& path) {
    if (path == "-") {
        return quor::input::gaussian::read_stream(std::cin);
    }
    errno = 0;
    try {
        return quor::input::gaussian::read_whole_file(path);
    } catch (const quor::input::gaussian::GJFParseException&) {
        throw UnreadableInput(std::string("Cannot open file: ") + std::strerror(errno));
    }
}

void report_missing_vocabulary() {
    if (const std::string problem = quor::input::gaussian::default_route_schema_problem(); !problem.empty()) {
        std::fprintf(stderr, "quor-gjf: %s\n", printable(problem).c_str());
    }
}

}  // namespace quor_gjf
