// Writing: of jobs that were read, and of documents in which one atom was moved. Bytes are those written.
#include "inputs.hpp"
#include "measuring.hpp"

#include <gjf/gjf.hpp>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;

void write(::benchmark::State& state, const std::string& name) {
    const std::string& text = input_text(name + ".gjf");
    const GJFMultiEditor editor(GJFParser::parse_string_multi(text));
    const bool single = editor.job_count() == 1;
    const std::size_t bytes = (single ? editor.job(0).to_gjf_string() : editor.to_gjf_string()).size();
    measure(state, {bytes, atoms_of(text)},
            [&] { ::benchmark::DoNotOptimize(single ? editor.job(0).to_gjf_string() : editor.to_gjf_string()); });
}

void write_document(::benchmark::State& state, const std::string& name) {
    const std::string& text = input_text(name + ".gjf");
    GJFDocument document(text);
    document.job(0).translate_atoms({document.job(0).get_data().geom.atoms.size() / 2}, 0.5, 0.25, 0.125);
    measure(state, {document.to_text().size(), atoms_of(text)}, [&] { ::benchmark::DoNotOptimize(document.to_text()); });
}

// Z-matrices are not written anew, so theirs is no benchmark here.
const bool registered = [] {
    for (const std::string name : {"small", "medium", "large", "oniom_large", "gen", "jobs"}) {
        ::benchmark::RegisterBenchmark(("write/" + name).c_str(), [name](::benchmark::State& state) {
            write(state, name);
        })->Unit(::benchmark::kMicrosecond);
    }
    for (const std::string name : {"small", "medium", "large", "oniom_large"}) {
        ::benchmark::RegisterBenchmark(("write_document/" + name).c_str(), [name](::benchmark::State& state) {
            write_document(state, name);
        })->Unit(::benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace quor::benchmarks
