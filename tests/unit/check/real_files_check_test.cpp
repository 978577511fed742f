// No false alarm: the example jobs raise nothing, and of the real job files only those that are known to be faulty raise an
// error.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "../../support/files.hpp"
#include "../../support/real_files.hpp"

using namespace quor::input::gaussian;

namespace {

namespace fs = std::filesystem;

bool is_job_file(const fs::path& path) { return path.extension() != ".md" && path.extension() != ".tsv"; }

std::set<std::string> error_codes(const std::string& text) {
    std::set<std::string> codes;
    for (const Finding& finding : check_text(text)) {
        if (finding.severity == Severity::Error) {
            codes.insert(finding.code);
        }
    }
    return codes;
}

TEST(ExampleFiles, RaiseNothing) {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(fs::path(QUOR_GJF_SOURCE_DIR) / "examples/jobs")) {
        if (!is_job_file(entry.path())) {
            continue;
        }
        ++count;
        for (const Finding& finding : check_text(quor::test::bytes_of(entry.path()))) {
            ADD_FAILURE() << entry.path().filename() << ":" << finding.line << ": " << finding.message << " ["
                          << finding.code << "]";
        }
    }
    EXPECT_GE(count, 42U);
}

// What is wrong with each real file that raises an error was looked at by eye.
const std::map<std::string, std::set<std::string>> true_errors = {
    {"test__static__14-butanedione.gjf", {"GJF-S001"}},          // genecp without basis set and potential
    {"test__static__L-Ala.gjf", {"GJF-S001"}},                   // geom=connectivity without the rows
    {"test__static__chiral_fluorine.gjf", {"GJF-S001"}},         // the same
    {"test__static__chiral_fluorine_2.gjf", {"GJF-S001"}},       // the same
    {"test__static__chiral_fluorine_4.gjf", {"GJF-S001"}},       // the same
    {"test__static__methane_perturbed_key.gjf", {"GJF-T001"}},   // ends with an atom
    {"test__static__pcseg_dcm.gjf", {"GJF-W005"}},               // wB97X-D is wB97XD in Gaussian
    {"tests__test_files__gaussian_input_02.com", {"GJF-T001"}},  // ends with an atom
    {"tests__g16__53_err_wrong_charge_multiplicity.com", {"GJF-M002"}},
    {"tests__g16__54_err_missing_basis_heavy_atom.com", {"GJF-R013"}},  // lead with 6-311+G(d,p)
    {"tests__g16__57_err_syntax_route_typo.com", {"GJF-W005"}},         // B3LPY
    {"tests__g16__60_err_missing_end_blank_line.com", {"GJF-T001"}},
    {"GaussianTests__inputs__pd_genecp_ts_lastpoint_saved_from_gaussview.com",
     {"GJF-S001"}},                                                          // genecp without both sections
    {"inputs__additional__model_custom_basis_opt_input.com", {"GJF-S007"}},  // nitrogen without basis set
    {"inputs__genecp__modred_gen.com", {"GJF-M002"}},                        // 97 electrons as a singlet
};

TEST(RealFiles, RaiseErrorsWhereTheyAreFaulty) {
    const fs::path folder = quor::test::real_files_folder();
    if (folder.empty()) {
        GTEST_SKIP() << quor::test::no_real_files;
    }
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || !is_job_file(entry.path())) {
            continue;
        }
        ++count;
        const auto known = true_errors.find(entry.path().filename().string());
        EXPECT_EQ(error_codes(quor::test::bytes_of(entry.path())),
                  known == true_errors.end() ? std::set<std::string>() : known->second)
            << entry.path();
    }
    EXPECT_GE(count, 100U);
}

}  // namespace
