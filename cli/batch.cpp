// A bounded queue between worker threads and the one that prints.
//
// Result number i lies in slot i modulo the number of slots. A worker takes a file only when its slot is free, so slow
// printing, or one slow file, holds the workers back.
#include "batch.hpp"

#include "commands.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "json.hpp"
#include "terminal.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <mutex>
#include <optional>
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

    OrderedWork(FileList& files, const Work& work, std::size_t threads)
        : files_(files), work_(work), slots_(threads * slots_per_thread) {
        try {
            for (std::size_t i = 0; i < threads; ++i) {
                workers_.emplace_back([this] { run(); });
            }
        } catch (const std::system_error&) {
            // The system gives no more threads: those there are do the work.
            if (workers_.empty()) {
                throw;
            }
        }
    }

    OrderedWork(const OrderedWork&) = delete;
    OrderedWork& operator=(const OrderedWork&) = delete;

    ~OrderedWork() {
        {
            const std::lock_guard lock(mutex_);
            finished_ = true;
        }
        room_.notify_all();
        for (std::thread& worker : workers_) {
            worker.join();
        }
    }

    // Returns the result of the next file, or nothing after the last.
    std::optional<FileResult> next() {
        std::unique_lock lock(mutex_);
        std::optional<FileResult>& slot = slots_[given_ % slots_.size()];
        ready_.wait(lock, [&] { return slot.has_value() || (finished_ && given_ == taken_) || failure_; });
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        if (!slot) {
            return std::nullopt;
        }
        std::optional<FileResult> result = std::exchange(slot, std::nullopt);
        ++given_;
        room_.notify_one();
        return result;
    }

   private:
    void run() {
        try {
            while (work_on_one()) {
            }
        } catch (...) {
            const std::lock_guard lock(mutex_);
            failure_ = std::current_exception();
        }
        ready_.notify_one();
    }

    bool work_on_one() {
        std::unique_lock lock(mutex_);
        room_.wait(lock, [this] { return finished_ || taken_ < given_ + slots_.size(); });
        const std::optional<ListedFile> file = finished_ ? std::nullopt : files_.next();
        if (!file) {
            finished_ = true;
            room_.notify_all();
            return false;
        }
        const std::size_t number = taken_++;
        lock.unlock();
        FileResult result = work_(*file);
        lock.lock();
        slots_[number % slots_.size()] = std::move(result);
        ready_.notify_one();
        return true;
    }

    std::mutex mutex_;
    std::condition_variable room_;   // a slot is free, or there is nothing more to do
    std::condition_variable ready_;  // a result is there, or the last worker has ended
    FileList& files_;
    const Work& work_;
    std::vector<std::optional<FileResult>> slots_;
    std::size_t taken_ = 0;  // files handed to workers
    std::size_t given_ = 0;  // results handed on
    bool finished_ = false;  // no more files are taken
    std::exception_ptr failure_;
    std::vector<std::thread> workers_;
};

FileResult failure_of(const std::string& path, const std::string& message, int code, bool json) {
    FileResult result;
    result.code = code;
    result.err = printable(path) + ": " + printable(message) + "\n";
    if (json) {
        Json object = json_of_file(path);
        object["error"] = message;
        result.out = json_line(object);
    }
    return result;
}

FileResult work_on(const ListedFile& file, const Batch& batch, bool json) {
    if (!file.problem.empty()) {
        return failure_of(file.path, file.problem, exit_usage, json);
    }
    try {
        return batch.work(file.path);
    } catch (const UnreadableInput& error) {
        return failure_of(file.path, error.what(), exit_usage, json);
    } catch (const std::exception& error) {
        return failure_of(file.path, error.what(), exit_failure, json);
    }
}

// Writes at once, so that it stands before what is said of the next file.
bool write_out(const std::string& text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

std::size_t thread_count(const BatchOptions& options) {
    const std::size_t wanted = options.threads > 0 ? options.threads : std::thread::hardware_concurrency();
    return std::clamp<std::size_t>(wanted, 1, most_threads);
}

}  // namespace

void add_batch_options(CLI::App& command, BatchOptions& options) {
    command.add_option("FILE", options.paths,
                       "Job files; folders with all *.gjf, *.com, *.gau and *.inp below them; - reads standard input");
    command.add_flag("--json", options.json, "Print one JSON object a file and line");
    add_thread_option(command, options);
}

void add_thread_option(CLI::App& command, BatchOptions& options) {
    command.add_option("-j,--jobs", options.threads, "Work on this many files at once (default: the number of cores)")
        ->check(CLI::Range(std::size_t{1}, most_threads))
        ->type_name("N");
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
    FileList files(options.paths);
    const OrderedWork::Work work = [&](const ListedFile& file) { return work_on(file, batch, options.json); };
    OrderedWork results(files, work, thread_count(options));
    Progress progress;
    int exit_code = exit_success;
    std::size_t done = 0;
    bool written = false;
    while (const std::optional<FileResult> result = results.next()) {
        if (!result->out.empty() || !result->err.empty()) {
            progress.clear();
        }
        if (!result->out.empty() && !write_out((written ? batch.separator : std::string()) + result->out)) {
            std::fprintf(stderr, "quor-gjf: cannot write %s\n", batch.output_name);
            return exit_failure;
        }
        written = written || !result->out.empty();
        std::fputs(result->err.c_str(), stderr);
        exit_code = std::max(exit_code, result->code);
        if (batch.note) {
            batch.note(*result);
        }
        progress.show(++done);
    }
    progress.clear();
    return exit_code;
}

}  // namespace quor_gjf
