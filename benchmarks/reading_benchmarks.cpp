// Reading: of a text, of a file, with layout; checking; and both directions in one.
#include "inputs.hpp"
#include "measuring.hpp"

#include <gjf/gjf.hpp>

#include <string>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;

using Work = void (*)(const std::string& name, const std::string& text);

void read(const std::string&, const std::string& text) { ::benchmark::DoNotOptimize(GJFParser::parse_string(text)); }

void read_all(const std::string&, const std::string& text) {
    ::benchmark::DoNotOptimize(GJFParser::parse_string_multi(text));
}

// With what the file's own text takes, which the others have been given.
void read_file(const std::string& name, const std::string&) {
    ::benchmark::DoNotOptimize(GJFParser::parse_file(input_path(name)));
}

void read_whole_file(const std::string& name, const std::string&) {
    ::benchmark::DoNotOptimize(GJFParser::parse_file_multi(input_path(name)));
}

void read_layout(const std::string&, const std::string& text) { ::benchmark::DoNotOptimize(read_jobs_with_layout(text)); }

void check(const std::string&, const std::string& text) { ::benchmark::DoNotOptimize(check_text(text)); }

void read_write(const std::string&, const std::string& text) {
    ::benchmark::DoNotOptimize(GJFEditor(GJFParser::parse_string(text)).to_gjf_string());
}

void read_write_all(const std::string&, const std::string& text) {
    ::benchmark::DoNotOptimize(GJFMultiEditor(GJFParser::parse_string_multi(text)).to_gjf_string());
}

void open_document(const std::string&, const std::string& text) {
    ::benchmark::DoNotOptimize(GJFDocument(text).job_count());
}

const struct {
    const char* name;
    Work of_one_job;
    Work of_many;
} works[] = {
    {"read", read, read_all}, {"read_file", read_file, read_whole_file},  {"read_layout", read_layout, read_layout},
    {"check", check, check},  {"read_write", read_write, read_write_all}, {"open_document", open_document, open_document}};

void run(::benchmark::State& state, const std::string& name, Work work) {
    const std::string& text = input_text(name);
    measure(state, {text.size(), atoms_of(text)}, [&] { work(name, text); });
}

const bool registered = [] {
    for (const auto& entry : works) {
        for (const std::string name : {"small", "medium", "large", "oniom_large", "zmatrix", "gen", "jobs"}) {
            const Work work = name == "jobs" ? entry.of_many : entry.of_one_job;
            ::benchmark::RegisterBenchmark((std::string(entry.name) + '/' + name).c_str(), [work, name](
                                                                                               ::benchmark::State& state) {
                run(state, name + ".gjf", work);
            })->Unit(::benchmark::kMicrosecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace quor::benchmarks
