// How often a route is interpreted while a job of the package is changed and saved.
#include "../../../python/src/job_handle.hpp"

#include <gjf/core/route/interpretation_count.hpp>

#include <gtest/gtest.h>

#include <string>

#include "../../support/files.hpp"

#ifndef NDEBUG

namespace quor_python {
namespace {

using quor::input::gaussian::interpreted_routes;

const std::string job_file = "#p b3lyp/6-31g(d) opt=(ts,calcfc) freq\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";

std::string with_new_basis(std::string text) { return text.replace(text.rfind("6-31g(d)"), 8, "cc-pvdz"); }

// Does what `job.route.basis = "cc-pvdz"` and `job.save()` do to the last job of a text; returns how often it interprets.
std::size_t change_and_save(const std::string& text) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("jobs.gjf", text);
    JobHandle job = read_all_jobs(text).back();
    const std::size_t before = interpreted_routes();
    job.editor.set_model_chemistry_basis("cc-pvdz");
    const JobHandle saved = save_job(job, {path, true, true, false});
    const std::size_t count = interpreted_routes() - before;
    EXPECT_EQ(read_file_text(path), with_new_basis(text));
    EXPECT_EQ(saved.source->text, with_new_basis(text));
    EXPECT_EQ(saved.index, job.index);
    EXPECT_EQ(saved.editor.get_basis_set(), "cc-pvdz");
    EXPECT_TRUE(is_as_read(saved));
    return count;
}

TEST(Interpretations, AreTwoForEachJobOfAFileThatIsChangedAndSaved) {
    const std::size_t before = interpreted_routes();
    read_first_job(job_file);
    EXPECT_EQ(interpreted_routes() - before, 1U);
    EXPECT_EQ(change_and_save(job_file), 2U);
    EXPECT_EQ(change_and_save(job_file + "--Link1--\n" + job_file), 4U);
}

}  // namespace
}  // namespace quor_python

#endif
