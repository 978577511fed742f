// Looks at what lies beside an output: the scheduler's file, the job, the checkpoint, and how old the output is.
#include <gjf/core/output/diagnosis.hpp>

#include <core/fs/read_regular_file.hpp>
#include <gjf/core/output/failure_search.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quor::input::gaussian {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::minutes running_age{10};
constexpr std::size_t largest_scheduler_file = std::size_t{4} << 20;

// Of "dir/opt.log.gz" the name "opt".
std::string stem_of(const fs::path& path) {
    fs::path name = path.filename();
    if (name.extension() == ".gz" || name.extension() == ".xz") {
        name = name.stem();
    }
    return name.stem().string();
}

// "slurm-123.out", or "NAME.o123" and "NAME.e123".
bool is_scheduler_name(const std::string& name) {
    if (name.starts_with("slurm-") && name.ends_with(".out")) {
        return true;
    }
    const std::size_t dot = name.rfind('.');
    return dot != std::string::npos && dot + 2 < name.size() && (name[dot + 1] == 'o' || name[dot + 1] == 'e') &&
           std::all_of(name.begin() + static_cast<std::ptrdiff_t>(dot) + 2, name.end(), is_digit);
}

bool is_output_name(const std::string& name) {
    const auto ends = [&](const char* extension) { return name.ends_with(extension); };
    return !is_scheduler_name(name) && (ends(".log") || ends(".out") || ends(".log.gz") || ends(".out.gz"));
}

struct SchedulerFile {
    std::string path;
    std::string text;
};

// A scheduler's file belongs to an output whose name it has or names, or to the only output of the folder.
std::vector<SchedulerFile> scheduler_files(const fs::path& output) {
    std::vector<SchedulerFile> files;
    std::size_t outputs = 0;
    std::error_code error;
    const fs::path folder = output.has_parent_path() ? output.parent_path() : fs::path(".");
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        outputs += is_output_name(name) ? 1 : 0;
        if (is_scheduler_name(name) && name != output.filename()) {
            core::fs::ReadFile file = core::fs::read_regular_file(entry->path().string(), largest_scheduler_file);
            if (file.outcome == core::fs::ReadOutcome::Read) {
                files.push_back(
                    {(output.has_parent_path() ? entry->path() : fs::path(name)).string(), std::move(file.text)});
            }
        }
    }
    const std::string stem = stem_of(output);
    std::erase_if(files, [&](const SchedulerFile& file) {
        const bool is_named = fs::path(file.path).filename().string().starts_with(stem + ".") ||
                              file.text.find(stem + ".") != std::string::npos;
        return !is_named && outputs != 1;
    });
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return files;
}

void ask_scheduler(const fs::path& path, Diagnosis& diagnosis) {
    const StepEnd& end = diagnosis.summary.steps.back().end;
    for (const SchedulerFile& file : scheduler_files(path)) {
        std::vector<TailLine> lines;
        for (const std::string_view line : split_lines(file.text)) {
            lines.push_back({lines.size() + 1, line});
        }
        for (const Failure& failure : failures()) {
            const TailLine* const found =
                failure.where == "scheduler" && fits_end(failure, end) ? find_failure(failure, lines) : nullptr;
            if (found != nullptr) {
                set_cause(diagnosis, failure);
                diagnosis.cause_line = 0;
                diagnosis.cause_text.clear();
                diagnosis.scheduler_file = file.path;
                diagnosis.scheduler_text = trim_view(found->text);
                return;
            }
        }
    }
}

void look_for_files(const fs::path& path, Diagnosis& diagnosis) {
    std::error_code error;
    for (const char* const extension : {".gjf", ".com", ".gau", ".inp"}) {
        const fs::path job = path.parent_path() / (stem_of(path) + extension);
        if (diagnosis.job_file.empty() && fs::is_regular_file(job, error)) {
            diagnosis.job_file = job.string();
        }
    }
    const std::string name = link0_value(diagnosis.summary, "%chk");
    const fs::path checkpoint = path.parent_path() / name;
    if (!name.empty() && fs::is_regular_file(checkpoint, error)) {
        diagnosis.checkpoint = checkpoint.string();
    }
}

bool is_young(const fs::path& path) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(path, error);
    return !error && fs::file_time_type::clock::now() - time < running_age;
}

}  // namespace

Diagnosis diagnose_file(const std::string& path, const PointListener& listener) {
    Diagnosis diagnosis = diagnose_output(*open_output(path), listener);
    if (path == "-") {
        return diagnosis;
    }
    look_for_files(path, diagnosis);
    const bool is_cut_off = diagnosis.cause == "cut_off";
    if (is_cut_off) {
        ask_scheduler(path, diagnosis);
        diagnosis.may_run = diagnosis.scheduler_file.empty() && is_young(path);
        find_all(diagnosis);
    }
    return diagnosis;
}

}  // namespace quor::input::gaussian
