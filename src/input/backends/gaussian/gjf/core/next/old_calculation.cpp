// Reads an output with the job beside it.
#include <gjf/core/next/next_job.hpp>

#include <gjf/core/output/output_source.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace quor::input::gaussian {
namespace {

namespace fs = std::filesystem;

bool is_job_name(const fs::path& path) {
    const std::string extension = path.extension().string();
    return extension == ".gjf" || extension == ".com" || extension == ".gau" || extension == ".inp";
}

std::string output_beside(const fs::path& job) {
    std::error_code error;
    for (const char* const extension : {".log", ".out", ".log.gz", ".out.gz", ".log.xz", ".out.xz"}) {
        const fs::path output = job.parent_path() / (job.stem().string() + extension);
        if (fs::is_regular_file(output, error)) {
            return output.string();
        }
    }
    throw NextJobRefused("there is no output beside the job");
}

}  // namespace

OldCalculation read_old_calculation(const std::string& path) {
    if (path == "-") {
        throw NextJobRefused("standard input has no name, and nothing beside it");
    }
    OldCalculation old;
    old.output_path = is_job_name(path) ? output_beside(path) : path;
    old.diagnosis = diagnose_file(old.output_path);
    old.job_path = is_job_name(path) ? path : old.diagnosis.job_file;
    if (!old.job_path.empty()) {
        std::ifstream file(old.job_path, std::ios::binary);
        old.job_text.assign(std::istreambuf_iterator<char>(file), {});
        if (!file || old.job_text.empty()) {
            throw NextJobRefused("the job beside the output cannot be read: " + old.job_path);
        }
    }
    return old;
}

}  // namespace quor::input::gaussian
