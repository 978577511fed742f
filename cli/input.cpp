// Reads the tool's input.
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <cstdio>
#include <iostream>

namespace quor_gjf {

std::string read_text(const std::string& path) {
    if (path == "-") {
        return quor::input::gaussian::read_stream(std::cin);
    }
    try {
        return quor::input::gaussian::read_whole_file(path);
    } catch (const quor::input::gaussian::GJFParseException& error) {
        throw UnreadableInput(error.what());
    }
}

void report_missing_vocabulary() {
    if (quor::input::gaussian::default_route_schema().is_loaded()) {
        return;
    }
    std::fputs(
        "quor-gjf: no route vocabulary was found, so no keyword is known; set QUOR_G16_ROUTE_SCHEMA_YAML to the path of "
        "gaussian_route.yaml\n",
        stderr);
}

}  // namespace quor_gjf
