// Reads the tool's input.
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iostream>

namespace quor_gjf {
namespace {

// Reads by block into the text itself: what a stream buffer cannot hold for want of memory it would drop in silence.
std::string read_stream(std::istream& stream) {
    std::string text;
    std::array<char, 1 << 14> block;
    do {
        stream.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    return text;
}

}  // namespace

std::string read_text(const std::string& path) {
    if (path == "-") {
        return read_stream(std::cin);
    }
    std::ifstream file(path, std::ios::binary);
    std::string text = read_stream(file);
    // A folder opens, but nothing can be read from it.
    if (!file.is_open() || file.bad()) {
        throw UnreadableInput("GJF Parse Error: Cannot open file: " + path);
    }
    return text;
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
