// Works on many files in several threads and prints the results in the order of the files.
#pragma once

#include "file_list.hpp"

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quor_gjf {

/// How many fixes of findings could be applied, and were.
struct FixCounts {
    std::size_t safe = 0;
    std::size_t unsafe = 0;  ///< with --unsafe-fixes alone
    std::size_t applied = 0;

    FixCounts& operator+=(const FixCounts& other) noexcept;
};

/// What a command has to say about one file.
struct FileResult {
    std::string out;
    std::string err;
    int code = 0;                                   ///< the file's share in the exit code; the greatest counts
    std::array<std::size_t, 3> counts{};            ///< findings by severity
    std::map<std::string, std::size_t> codes;       ///< and by code
    std::map<std::string, std::string> site_rules;  ///< what rules of a site that were found tell, by code
    FixCounts fixes;
    /// What is left to do when the files before it are done, before anything is printed; may be empty.
    std::function<void(FileResult&)> in_order;
    std::string once;      ///< goes to standard error, once however many files say it
    bool foreign = false;  ///< the file holds no Gaussian job and was passed over
};

/// The arguments that all commands over many files share.
struct BatchOptions {
    std::vector<std::string> paths;
    std::size_t threads = 0;  ///< 0: as many as there are cores
    bool json = false;
    Walk walk;
};

/// What is done with the files.
struct Batch {
    std::function<FileResult(const std::string& path)> work;  ///< called in several threads
    std::function<void(const FileResult&)> note;  ///< called in the order of the files, one at a time; may be empty
    std::string head;                             ///< printed before all outputs
    std::string separator;                        ///< printed between outputs
    std::function<std::string()> foot;            ///< gives what is printed behind them; may be empty
    /// What standard output gets for a file that cannot be used; empty: with --json an object, nothing otherwise.
    std::function<std::string(const std::string& path, const std::string& message)> tell_problem;
    PassedOver* passed_over = nullptr;       ///< where it is counted what was passed over; may be null
    std::size_t waiting = 0;                 ///< so many files more at once, whose work waits for the disk
    const char* output_name = "the output";  ///< for "cannot write ..."
};

/// Declares --exclude, --force-exclude and --hidden.
void add_walk_options(CLI::App& command, Walk& walk);

/// Declares FILE, what of folders is passed over, --json and -j.
void add_batch_options(CLI::App& command, BatchOptions& options);

/// Declares -j.
void add_thread_option(CLI::App& command, BatchOptions& options);

/// Returns how many files are worked on at once, as the options or the machine's cores say.
std::size_t thread_count(const BatchOptions& options);

/// Tells whether more than one file may come: outputs then carry a heading.
bool names_several_files(const std::vector<std::string>& paths);

/// Refuses a second "-".
void check_standard_input_once(const std::vector<std::string>& paths);

/// Runs the work on every file; returns the exit code.
///
/// What the work throws is told on standard error, and as an object with "error" among JSON. No more than a few results a
/// thread are held, however many files there are.
int run_batch(const BatchOptions& options, const Batch& batch);

}  // namespace quor_gjf
