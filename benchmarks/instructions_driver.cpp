// Does fixed pieces of work for a count of instructions. All that is to be counted happens inside `measured_part`.
//
// Usage: instructions_driver PIECE         one of the pieces below
//        instructions_driver edit ATOMS    each operation of the editor on a job of so many atoms, naming one a line
#include "editor_operations.hpp"
#include "inputs.hpp"

#include <gjf/gjf.hpp>

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace {

volatile bool finished = false;

}  // namespace

// Named for the counter, which starts at its call and stops at its return: kept whole, and with something to do behind the
// work, so that neither is optimised away.
extern "C" __attribute__((noipa)) void measured_part(const std::function<void()>& work);
extern "C" void measured_part(const std::function<void()>& work) {
    finished = false;
    work();
    finished = true;
}

namespace {

using namespace quor::benchmarks;
using namespace quor::input::gaussian;

std::size_t read_and_write(const std::string& text) {
    return GJFEditor(GJFParser::parse_string(text)).to_gjf_string().size();
}

std::size_t small_read() { return GJFParser::parse_string(input_text("small.gjf")).geom.atoms.size(); }
// An answer of its own for nothing found, which is what is to be found.
std::size_t small_check() { return 1 + check_text(input_text("small.gjf")).size(); }
std::size_t cartesian_check() { return 1 + check_text(input_text("cartesian_10000.gjf")).size(); }
// All tables of facts, as the tool reads them to tell which is missing: a process reads them once.
std::size_t facts() { return 1 + missing_for_checks().size(); }
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

const struct {
    const char* name;
    std::size_t (*run)();
} pieces[] = {{"small_read", small_read},
              {"small_check", small_check},
              {"small_read_write", small_job},
              {"cartesian_read", cartesian_job},
              {"cartesian_check", cartesian_check},
              {"facts", facts},
              {"oniom_read", oniom_job},
              {"routes", routes}};

// Reads the inputs and does a small job, so that files, vocabulary and the binding of functions are not counted.
void warm_up() {
    input_text("cartesian_10000.gjf");
    input_text("oniom_10000.gjf");
    routes();
    small_job();
    small_check();
}

void run_editor_operations(const std::string& atoms) {
    const GJFData job = GJFParser::parse_string(input_text("oniom_" + atoms + ".gjf"));
    for (const EditorOperation& operation : editor_operations()) {
        Workbench bench(job);
        // The first run makes what is made once, such as the room for one more atom; the second is the one to count.
        for (std::size_t turn = 0; turn < 2; ++turn) {
            prepare(bench, operation.before, job);
            if (turn == 0) {
                operation.run(bench, turn);
            }
        }
        measured_part([&] { operation.run(bench, 1); });
        std::puts(operation.name);
    }
}

}  // namespace

int main(int argc, char** argv) {
    use_vocabulary_of_the_tree();
    if (argc == 3 && std::string_view(argv[1]) == "edit") {
        warm_up();
        run_editor_operations(argv[2]);
        return 0;
    }
    for (const auto& entry : pieces) {
        if (argc == 2 && std::string_view(argv[1]) == entry.name) {
            entry.run == facts ? void(default_route_schema()) : warm_up();
            std::size_t result = 0;
            measured_part([&] { result = entry.run(); });
            std::printf("%zu\n", result);
            return result == 0 ? 1 : 0;
        }
    }
    std::fputs("Usage: instructions_driver PIECE, or edit ATOMS\n", stderr);
    return 1;
}
