// Follows the lines that name files: each path is resolved before it is judged, and judged before it is opened.
#include <gjf/core/reader/included_files.hpp>

#include <core/fs/read_regular_file.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace quor::input::gaussian {
namespace {

namespace fs = std::filesystem;
using core::fs::ReadOutcome;

const char* problem_of(ReadOutcome outcome) noexcept {
    switch (outcome) {
        case ReadOutcome::Missing:
            return "is not there";
        case ReadOutcome::NotRegular:
            return "is no file that can be included";
        case ReadOutcome::TooLarge:
            return "is too large to be looked at";
        case ReadOutcome::Unreadable:
        case ReadOutcome::Outside:
            return "cannot be read";
        case ReadOutcome::Read:
            break;
    }
    return "";
}

class IncludedFiles {
   public:
    // `error` tells that the folder of the text cannot be found, and then nothing is opened.
    IncludedFiles(const fs::path& path, std::error_code& error)
        : folder_(fs::canonical(path.has_parent_path() ? path.parent_path() : fs::path("."), error)) {
        open_.push_back(error ? path : fs::weakly_canonical(path, error));
    }

    std::vector<IncludedFile> read(std::string_view text) {
        std::vector<IncludedFile> files;
        for (std::size_t number = 1; !text.empty(); ++number) {
            const std::string_view line = take_line(text);
            if (!is_include_line(line)) {
                continue;
            }
            IncludedFile& file = files.emplace_back(IncludedFile{number, std::string(included_name(line))});
            if (left_ == 0) {
                file.problem = "is one file more than are looked at";
                break;
            }
            --left_;
            file.problem = follow(file);
        }
        return files;
    }

   private:
    // Reads a file, and those that it names; returns why it cannot.
    const char* follow(IncludedFile& file) {
        if (open_.size() > deepest_included_file) {
            return "is named too deep in other files";
        }
        if (file.name.empty() || file.name.find('\0') != std::string::npos) {
            return problem_of(ReadOutcome::Missing);
        }
        std::error_code error;
        const fs::path path = fs::weakly_canonical(folder_ / file.name, error);
        if (error) {
            return problem_of(error == std::errc::not_a_directory ? ReadOutcome::Missing : ReadOutcome::Unreadable);
        }
        if (std::mismatch(folder_.begin(), folder_.end(), path.begin(), path.end()).first != folder_.end()) {
            return "lies outside the folder of the job";
        }
        if (std::find(open_.begin(), open_.end(), path) != open_.end()) {
            return "would include itself";
        }
        auto [outcome, text] = core::fs::read_regular_file(path.string(), room_);
        if (outcome != ReadOutcome::Read) {
            return problem_of(outcome);
        }
        if (text.find('\0') != std::string::npos) {
            return "is no text";
        }
        room_ -= text.size();
        file.text = std::move(text);
        open_.push_back(path);
        file.files = read(file.text);
        open_.pop_back();
        return "";
    }

    fs::path folder_;
    std::vector<fs::path> open_;  // the text itself, and the files that are being read
    std::size_t left_ = most_included_files;
    std::size_t room_ = largest_included_text;
};

}  // namespace

std::string_view included_name(std::string_view line) {
    std::string_view name = trim_view(without_comment(line));
    name = trim_view(name.substr(std::min<std::size_t>(name.size(), 1)));
    if (name.size() > 2 && equals_folded(name.substr(name.size() - 2), "/n")) {
        name = trim_view(name.substr(0, name.size() - 2));
    }
    return name;
}

std::vector<IncludedFile> read_included_files(std::string_view text, const std::string& path) {
    std::error_code error;
    if (path.empty() || text.find('@') == std::string_view::npos) {
        return {};
    }
    IncludedFiles files(path, error);
    return error ? std::vector<IncludedFile>() : files.read(text);
}

std::string find_problem(const IncludedFile& file) {
    if (!file.problem.empty()) {
        return file.name + ' ' + file.problem;
    }
    for (const IncludedFile& named : file.files) {
        if (std::string problem = find_problem(named); !problem.empty()) {
            return problem;
        }
    }
    return {};
}

std::vector<IncludedFile> files_of_job(const std::vector<IncludedFile>& files, const JobReading& reading) {
    const LineRange& lines = reading.layout.lines;
    std::vector<IncludedFile> chosen;
    std::copy_if(files.begin(), files.end(), std::back_inserter(chosen),
                 [&](const IncludedFile& file) { return file.line >= lines.first && file.line <= lines.last; });
    return chosen;
}

std::string with_included_files(std::string_view text, const std::vector<IncludedFile>& files, std::size_t first_line) {
    std::string result;
    auto file = files.begin();
    for (std::size_t number = first_line; !text.empty(); ++number) {
        const std::string_view whole = text;
        take_line(text);
        file = std::find_if(file, files.end(), [number](const IncludedFile& each) { return each.line >= number; });
        if (file == files.end() || file->line != number || !file->problem.empty()) {
            result += whole.substr(0, whole.size() - text.size());
            continue;
        }
        result += with_included_files(file->text, file->files);
        if (!result.empty() && result.back() != '\n') {
            result += '\n';
        }
    }
    return result;
}

std::optional<JobReading> read_with_included_files(std::string_view text, const JobReading& reading,
                                                   const std::vector<IncludedFile>& files) {
    const std::vector<IncludedFile> named = files_of_job(files, reading);
    if (named.empty() ||
        std::any_of(named.begin(), named.end(), [](const IncludedFile& file) { return !find_problem(file).empty(); })) {
        return std::nullopt;
    }
    const std::string whole = with_included_files(reading.places.lines.in(text), named, reading.layout.lines.first);
    std::vector<JobReading> readings = read_jobs_with_layout(whole);
    return readings.size() == 1 ? std::optional(std::move(readings.front())) : std::nullopt;
}

}  // namespace quor::input::gaussian
