// Routes, with the vocabulary loaded: interpreting them, and what the reader asks of them.
#include "inputs.hpp"
#include "measuring.hpp"

#include <gjf/gjf.hpp>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;

std::size_t bytes_of(const std::vector<std::string>& routes) {
    std::size_t bytes = 0;
    for (const std::string& route : routes) {
        bytes += route.size();
    }
    return bytes;
}

void interpret(::benchmark::State& state, const std::vector<std::string>& routes) {
    const SimpleYAMLParser& schema = default_route_schema();
    measure(state, {bytes_of(routes), 0}, [&] {
        for (const std::string& route : routes) {
            G16KeywordParser parser(schema);
            parser.parse(route);
            ::benchmark::DoNotOptimize(parser.get_parsed_keywords());
        }
    });
}

void interpret_longest(::benchmark::State& state) { interpret(state, {input_routes().back()}); }
BENCHMARK(interpret_longest)->Name("route/25_words")->Unit(::benchmark::kMicrosecond);

void interpret_all(::benchmark::State& state) { interpret(state, input_routes()); }
BENCHMARK(interpret_all)->Name("route/all_200")->Unit(::benchmark::kMicrosecond);

std::vector<ControlSection> control_sections() {
    std::vector<ControlSection> sections;
    for (const std::string& route : input_routes()) {
        sections.push_back(GJFParser::parse_control_section({route}));
    }
    return sections;
}

// Words cut, the route interpreted, and all stored, as the reader does it once for each job.
void read_control_sections(::benchmark::State& state) {
    std::vector<std::vector<std::string>> lines;
    for (const std::string& route : input_routes()) {
        lines.push_back({"%chk=job.chk", "%mem=8GB", route});
    }
    measure(state, {bytes_of(input_routes()), 0}, [&] {
        for (const std::vector<std::string>& section : lines) {
            ::benchmark::DoNotOptimize(GJFParser::parse_control_section(section));
        }
    });
}
BENCHMARK(read_control_sections)->Name("route/control_sections_200")->Unit(::benchmark::kMicrosecond);

void expected_sections(::benchmark::State& state) {
    const std::vector<ControlSection> sections = control_sections();
    measure(state, {}, [&] {
        for (const ControlSection& section : sections) {
            ::benchmark::DoNotOptimize(GJFParser::expected_extra_input_order(section));
        }
    });
}
BENCHMARK(expected_sections)->Name("route/expected_sections_200")->Unit(::benchmark::kMicrosecond);

void geometry_questions(::benchmark::State& state) {
    const std::vector<ControlSection> sections = control_sections();
    measure(state, {}, [&] {
        for (const ControlSection& section : sections) {
            ::benchmark::DoNotOptimize(GJFParser::is_geom_check(section) || GJFParser::is_geom_allchk(section));
        }
    });
}
BENCHMARK(geometry_questions)->Name("route/geometry_questions_200")->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace quor::benchmarks
