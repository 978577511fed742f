// Does fixed pieces of work for a count of instructions. All that is to be counted happens inside `measured_part`.
//
// Usage: instructions_driver PIECE
#include "inputs.hpp"

#include <gjf/gjf.hpp>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

using namespace quor::input::gaussian;
using quor::benchmarks::input_routes;
using quor::benchmarks::input_text;

std::size_t read_and_write(const std::string& text) {
    return GJFEditor(GJFParser::parse_string(text)).to_gjf_string().size();
}

std::size_t small_job() { return read_and_write(input_text("small.gjf")); }
std::size_t cartesian_job() { return GJFParser::parse_string(input_text("cartesian_10000.gjf")).geom.atoms.size(); }
std::size_t oniom_job() { return GJFParser::parse_string(input_text("oniom_10000.gjf")).geom.atoms.size(); }

std::size_t routes() {
    std::size_t words = 0;
    for (const std::string& route : input_routes()) {
        G16KeywordParser parser(default_route_schema());
        parser.parse(route);
        words += parser.get_parsed_keywords().keywords.size();
    }
    return words;
}

using Piece = std::size_t (*)();

const struct {
    const char* name;
    Piece piece;
} pieces[] = {
    {"small_read_write", small_job}, {"cartesian_read", cartesian_job}, {"oniom_read", oniom_job}, {"routes", routes}};

}  // namespace

// Named for the counter, which starts and stops at it.
extern "C" __attribute__((noinline)) std::size_t measured_part(Piece piece);
extern "C" std::size_t measured_part(Piece piece) { return piece(); }

int main(int argc, char** argv) {
    quor::benchmarks::use_vocabulary_of_the_tree();
    for (const auto& entry : pieces) {
        if (argc == 2 && std::strcmp(argv[1], entry.name) == 0) {
            // A small job beforehand: vocabulary loaded, functions bound. Then the inputs, so that reading files is not
            // counted.
            const std::size_t warm = small_job() + input_routes().size() + input_text("cartesian_10000.gjf").size() +
                                     input_text("oniom_10000.gjf").size();
            std::printf("%zu\n", warm == 0 ? 0 : measured_part(entry.piece));
            return 0;
        }
    }
    std::fputs("Usage: instructions_driver small_read_write|cartesian_read|oniom_read|routes\n", stderr);
    return 1;
}
