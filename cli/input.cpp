// Reads the tool's input.
#include "input.hpp"

#include <cstdio>
#include <iostream>
#include <iterator>

namespace quor_gjf {

using quor::input::gaussian::GJFMultiData;
using quor::input::gaussian::GJFParser;

GJFMultiData read_jobs(const std::string& path) {
    if (path != "-") {
        return GJFParser::parse_file_multi(path);
    }
    const std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    return GJFParser::parse_string_multi(text);
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
