// Works on files in several threads and hands the results on in the order of the files.
//
// Result number i lies in slot i modulo the number of slots. A thread takes a file only when its slot is free, so slow
// printing, or one slow file, holds the others back. The thread whose result is next hands it on, and those behind it that
// are ready: no thread waits for results, and none is woken for each.
#include "batch.hpp"

#include "commands.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace quor_gjf {
namespace {

constexpr std::size_t slots_per_thread = 8;
constexpr std::size_t most_threads = 256;

class OrderedWork {
   public:
    using Work = std::function<FileResult(const ListedFile&)>;
    using HandOn = std::function<bool(FileResult&)>;  // false: no more is wanted

    OrderedWork(FileList& files, const Work& work, const HandOn& hand_on) : files_(files), work_(work), hand_on_(hand_on) {}

    // Works through all files in this thread and as many more as make up `threads`; returns false when no more was wanted.
    bool run(std::size_t threads) {
        slots_.resize(threads * slots_per_thread);
        std::vector<std::thread> helpers;
        try {
            while (helpers.size() + 1 < threads) {
                helpers.emplace_back([this] { work_on_all(); });
            }
        } catch (const std::system_error&) {
            // The system gives no more threads: those there are do the work.
        }
        work_on_all();
        for (std::thread& helper : helpers) {
            helper.join();
        }
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        return !refused_;
    }

   private:
    void work_on_all() {
        try {
            while (work_on_one()) {
            }
        } catch (...) {
            const std::lock_guard lock(mutex_);
            failure_ = std::current_exception();
            finish();
        }
    }

    bool work_on_one() {
        std::unique_lock lock(mutex_);
        room_.wait(lock, [this] { return finished_ || taken_ < given_ + slots_.size(); });
        const std::optional<ListedFile> file = finished_ ? std::nullopt : files_.next();
        if (!file) {
            finish();
            return false;
        }
        const std::size_t number = taken_++;
        lock.unlock();
        FileResult result = work_(*file);
        lock.lock();
        slots_[number % slots_.size()] = std::move(result);
        hand_on_ready(lock);
        return true;
    }

    // Hands on what is ready, unless another thread is at it, which will see this thread's result too.
    void hand_on_ready(std::unique_lock<std::mutex>& lock) {
        if (handing_on_) {
            return;
        }
        handing_on_ = true;
        while (slots_[given_ % slots_.size()] && !refused_) {
            FileResult result = *std::exchange(slots_[given_ % slots_.size()], std::nullopt);
            lock.unlock();
            const bool more_wanted = hand_on_(result);
            lock.lock();
            ++given_;
            room_.notify_one();
            if (!more_wanted) {
                refused_ = true;
                finish();
            }
        }
        handing_on_ = false;
    }

    void finish() {
        finished_ = true;
        room_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable room_;  // a slot is free, or there is nothing more to do
    FileList& files_;
    const Work& work_;
    const HandOn& hand_on_;
    std::vector<std::optional<FileResult>> slots_;
    std::size_t taken_ = 0;  // files handed to threads
    std::size_t given_ = 0;  // results handed on
    bool handing_on_ = false;
    bool finished_ = false;  // no more files are taken
    bool refused_ = false;   // no more results are wanted
    std::exception_ptr failure_;
};

FileResult failure_of(const std::string& path, const std::string& text, int code, const Batch& batch, bool json) {
    const std::string message = quor::input::gaussian::bare_message(text);
    FileResult result;
    result.code = code;
    result.err = printable(path) + ": " + printable(message) + "\n";
    if (batch.tell_problem) {
        result.out = batch.tell_problem(path, message);
    } else if (json) {
        result.out = quor::input::gaussian::error_json(path, message);
    }
    return result;
}

// Tells whether a file that may be another program's is read as a Gaussian job, or names a method in its route.
bool holds_job(const std::string& path) {
    const std::vector<quor::input::gaussian::JobReading> readings =
        quor::input::gaussian::read_jobs_with_layout(read_text(path));
    return std::any_of(readings.begin(), readings.end(), [](const quor::input::gaussian::JobReading& reading) {
        const auto& route = reading.job.control.parsed_keywords;
        return reading.error.empty() || (route && !route->method.empty());
    });
}

FileResult work_on(const ListedFile& file, const Batch& batch, bool json) {
    if (!file.problem.empty()) {
        return failure_of(file.path, file.problem, exit_usage, batch, json);
    }
    try {
        if (file.is_doubtful && !holds_job(file.path)) {
            FileResult result;
            result.foreign = true;
            return result;
        }
        return batch.work(file.path);
    } catch (const quor::input::gaussian::ConfigurationError& error) {
        FileResult result = failure_of(file.path, error.what(), exit_usage, batch, json);
        result.err.clear();
        result.once = printable(error.what()) + '\n';
        return result;
    } catch (const UnreadableInput& error) {
        return failure_of(file.path, error.what(), exit_usage, batch, json);
    } catch (const std::exception& error) {
        return failure_of(file.path, error.what(), exit_failure, batch, json);
    }
}

// Writes at once, so that it stands before what is said of the next file.
bool write_out(const std::string& text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

// How many threads find something to do.
std::size_t useful_threads(const BatchOptions& options, const Batch& batch) {
    std::error_code error;
    const bool known = std::none_of(options.paths.begin(), options.paths.end(),
                                    [&](const std::string& path) { return std::filesystem::is_directory(path, error); });
    const std::size_t wanted = thread_count(options) + batch.waiting;
    return known ? std::clamp<std::size_t>(options.paths.size(), 1, wanted) : wanted;
}

std::size_t count_files(const BatchOptions& options) {
    FileList files(options.paths, options.walk);
    std::size_t count = 0;
    while (files.next()) {
        ++count;
    }
    return count;
}

// Prints what comes of the files, one after another.
class Teller {
   public:
    Teller(const BatchOptions& options, const Batch& batch) : options_(options), batch_(batch) {}

    bool print(const std::string& text) const {
        if (!text.empty() && !write_out(text)) {
            std::fprintf(stderr, "quor-gjf: cannot write %s\n", batch_.output_name);
            return false;
        }
        return true;
    }

    bool tell(FileResult& result) {
        if (const auto finish = std::exchange(result.in_order, nullptr)) {
            finish(result);
        }
        const bool is_new = !result.once.empty() && told_.insert(result.once).second;
        if (!result.out.empty() || !result.err.empty() || is_new) {
            progress_.clear();
        }
        if (!result.out.empty() && !print((written_ ? batch_.separator : std::string()) + result.out)) {
            return false;
        }
        written_ = written_ || !result.out.empty();
        std::fputs(result.err.c_str(), stderr);
        std::fputs(is_new ? result.once.c_str() : "", stderr);
        foreign += result.foreign ? 1 : 0;
        exit_code = std::max(exit_code, result.code);
        if (batch_.note && !result.foreign) {
            batch_.note(result);
        }
        progress_.show(++done_, [this] { return count_files(options_); });
        return true;
    }

    void end() { progress_.clear(); }

    int exit_code = exit_success;
    std::size_t foreign = 0;

   private:
    const BatchOptions& options_;
    const Batch& batch_;
    Progress progress_;
    std::set<std::string> told_;
    std::size_t done_ = 0;
    bool written_ = false;
};

}  // namespace

std::size_t thread_count(const BatchOptions& options) {
    const std::size_t wanted = options.threads > 0 ? options.threads : std::thread::hardware_concurrency();
    return std::clamp<std::size_t>(wanted, 1, most_threads);
}

void add_walk_options(CLI::App& command, Walk& walk) {
    command
        .add_option(
            "--exclude", walk.exclude,
            "Pass over what fits these patterns below folders, as 'old/**' or '*_tmp.gjf'; may be given several times")
        ->type_name("PATTERN")
        ->allow_extra_args(false);
    command.add_flag("--force-exclude", walk.force_exclude, "Pass over files too that are named and fit");
    command.add_flag("--hidden", walk.hidden, "Take hidden files and folders too");
}

void add_batch_options(CLI::App& command, BatchOptions& options) {
    command.add_option("FILE", options.paths,
                       "Job files; folders with all *.gjf, *.com, *.gau and *.inp below them; - reads standard input");
    add_walk_options(command, options.walk);
    command.add_flag("--json", options.json, "Print one JSON object a file and line");
    add_thread_option(command, options);
}

void add_thread_option(CLI::App& command, BatchOptions& options) {
    command.add_option("-j,--threads", options.threads, "Work on this many files at once (default: the number of cores)")
        ->check(CLI::Range(std::size_t{1}, most_threads))
        ->type_name("N");
    // Jobs are what a file holds.
    command
        .add_option_function<std::string>(
            "--jobs", [](const std::string&) { throw CLI::ValidationError("--jobs", "it is called --threads"); })
        ->group("");
}

bool names_several_files(const std::vector<std::string>& paths) {
    std::error_code error;
    return paths.size() > 1 || (!paths.empty() && std::filesystem::is_directory(paths.front(), error));
}

void check_standard_input_once(const std::vector<std::string>& paths) {
    if (std::count(paths.begin(), paths.end(), "-") > 1) {
        throw CLI::ValidationError("FILE", "standard input can be read once");
    }
}

int run_batch(const BatchOptions& options, const Batch& batch) {
    check_standard_input_once(options.paths);
    FileList files(options.paths, options.walk);
    Teller teller(options, batch);
    const OrderedWork::Work work = [&](const ListedFile& file) { return work_on(file, batch, options.json); };
    const OrderedWork::HandOn hand_on = [&](FileResult& result) { return teller.tell(result); };
    if (!teller.print(batch.head) || !OrderedWork(files, work, hand_on).run(useful_threads(options, batch))) {
        return exit_failure;
    }
    teller.end();
    if (batch.passed_over != nullptr) {
        *batch.passed_over = {files.passed_over().hidden, files.passed_over().excluded, teller.foreign};
    }
    return teller.print(batch.foot ? batch.foot() : std::string()) ? teller.exit_code : exit_failure;
}

}  // namespace quor_gjf
