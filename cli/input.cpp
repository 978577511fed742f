// Reads the tool's input.
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>

namespace quor_gjf {
namespace {

std::string read_stream(std::istream& stream) {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace

std::string read_text(const std::string& path) {
    if (path == "-") {
        return read_stream(std::cin);
    }
    std::ifstream file(path, std::ios::binary);
    // A folder opens, but nothing can be read from it.
    file.peek();
    if (!file.is_open() || file.bad()) {
        throw UnreadableInput("GJF Parse Error: Cannot open file: " + path);
    }
    return read_stream(file);
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
