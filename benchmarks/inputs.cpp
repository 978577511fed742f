// Reads the inputs from the folder that the build wrote them to.
#include "inputs.hpp"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace quor::benchmarks {
namespace {

std::string read_file(const std::string& path) {
    const std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file || text.str().empty()) {
        std::fprintf(stderr, "Cannot read %s; build the target benchmark_inputs\n", path.c_str());
        std::exit(1);
    }
    return text.str();
}

}  // namespace

std::string input_path(const std::string& name) { return QUOR_GJF_INPUT_FOLDER "/" + name; }

const std::string& input_text(const std::string& name) {
    static std::map<std::string, std::string> texts;
    std::string& text = texts[name];
    if (text.empty()) {
        text = read_file(input_path(name));
    }
    return text;
}

const std::vector<std::string>& input_routes() {
    static const std::vector<std::string> routes = [] {
        std::vector<std::string> lines;
        std::istringstream text(input_text("routes.txt"));
        for (std::string line; std::getline(text, line);) {
            lines.push_back(line);
        }
        return lines;
    }();
    return routes;
}

std::string vocabulary_path() { return QUOR_GJF_VOCABULARY; }

void use_vocabulary_of_the_tree() { setenv("QUOR_G16_ROUTE_SCHEMA_YAML", QUOR_GJF_VOCABULARY, 0); }

}  // namespace quor::benchmarks
