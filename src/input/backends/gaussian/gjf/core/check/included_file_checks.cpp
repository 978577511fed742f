// Tells of files that lines "@file" name and that cannot be had beside the text. They may be there where the job runs, so
// nothing here is more than a note.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/reader/included_files.hpp>

#include <string>

namespace quor::input::gaussian {
namespace {

void check_included_files(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    if (job.included == nullptr) {
        return;
    }
    for (const IncludedFile& file : files_of_job(*job.included, job.reading())) {
        if (const std::string problem = find_problem(file); !problem.empty()) {
            findings.add("GJF-I001", Severity::Note, "the file " + problem, file.line,
                         "files are looked for in the folder of the job, and below it");
        }
    }
}

}  // namespace

const Family included_file_family = {Known::Control, check_included_files, {"GJF-I001"}, {"GJF-I001"}};

}  // namespace quor::input::gaussian
