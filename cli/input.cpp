// Reads the tool's input.
#include "input.hpp"

#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace quor_gjf {

using namespace quor::input::gaussian;

namespace {

void require_none(const std::string& problem, const std::string& json_path) {
    if (!problem.empty()) {
        std::fputs(json_path.empty() ? "" : error_json(json_path, problem).c_str(), stdout);
        throw MissingVocabulary(problem);
    }
    report_missing_vocabulary();
}

}  // namespace

std::string read_text(const std::string& path) {
    if (path == "-") {
        return read_stream(std::cin);
    }
    errno = 0;
    try {
        return read_whole_file(path);
    } catch (const GJFParseException&) {
        throw UnreadableInput(std::string("Cannot open file: ") + std::strerror(errno));
    }
}

void report_missing_vocabulary() {
    for (const std::string& told : {default_route_schema_problem(), default_route_schema_warning()}) {
        if (!told.empty()) {
            std::fprintf(stderr, "quor-gjf: %s\n", printable(told).c_str());
        }
    }
}

void require_vocabulary(const std::string& json_path) { require_none(default_route_schema_problem(), json_path); }

void require_facts(const std::string& json_path) { require_none(missing_for_checks(), json_path); }

}  // namespace quor_gjf
