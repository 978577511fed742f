// replay_regressions TREE: runs stored inputs through the fuzzers' properties, which end the program where
// one does not hold.
//
// Each fuzzer takes what of the tree was stored for it, the fuzzers' seeds, and examples where it reads job text. Single
// files may follow as NAME=PATH. The file under way is named before it is run.
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "../../fuzz/fuzzers.hpp"
#include "../support/files.hpp"

namespace {

namespace fs = std::filesystem;

struct Fuzzer {
    const char* name;
    int (*run)(const std::uint8_t* data, std::size_t size);
    bool reads_jobs;
};

constexpr Fuzzer fuzzers[] = {
    {"job_text", quor::fuzz::job_text, true},
    {"multi_job", quor::fuzz::multi_job, true},
    {"route", quor::fuzz::route, false},
    {"schema_document", quor::fuzz::schema_document, false},
    {"schema_image", quor::fuzz::schema_image, false},
    {"editor_operations", quor::fuzz::editor_operations, false},
    {"check_text", quor::fuzz::check_text, true},
    {"document", quor::fuzz::document, true},
    {"messages", quor::fuzz::messages, false},
    {"outputs", quor::fuzz::outputs, false},
    {"c_interface", quor::fuzz::c_interface, false},
};

void run_file(const Fuzzer& fuzzer, const fs::path& path) {
    std::cout << fuzzer.name << ' ' << path.filename().string() << std::endl;
    const std::string text = quor::test::bytes_of(path);
    fuzzer.run(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

std::size_t run_folder(const Fuzzer& fuzzer, const fs::path& folder) {
    std::size_t count = 0;
    if (fs::is_directory(folder)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            run_file(fuzzer, entry.path());
            ++count;
        }
    }
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: replay_regressions TREE [NAME=PATH]...\n";
        return 2;
    }
    const fs::path tree = argv[1];
    std::size_t count = 0;
    for (const Fuzzer& fuzzer : fuzzers) {
        for (int i = 2; i < argc; ++i) {
            const std::string_view argument = argv[i];
            if (argument.substr(0, argument.find('=')) == fuzzer.name) {
                run_file(fuzzer, argument.substr(argument.find('=') + 1));
            }
        }
        std::size_t found = run_folder(fuzzer, tree / "tests/regressions" / fuzzer.name) +
                            run_folder(fuzzer, tree / "fuzz/seeds" / fuzzer.name);
        if (fuzzer.reads_jobs) {
            found += run_folder(fuzzer, tree / "examples/jobs") + run_folder(fuzzer, tree / "examples/forms");
        }
        if (found == 0) {
            std::cerr << fuzzer.name << ": nothing to replay\n";
            return 1;
        }
        count += found;
    }
    std::cout << count << " inputs replayed\n";
    return 0;
}
