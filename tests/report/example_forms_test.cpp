// The example jobs of forms that the class interface refuses: what the reading holds of each, what its JSON says, and that
// an edit of something else leaves its bytes.
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/reader/job_text.hpp>
#include <gjf/core/report/json.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace quor::input::gaussian {
namespace {

const std::filesystem::path forms_folder = std::filesystem::path(QUOR_GJF_SOURCE_DIR) / "examples/forms";

struct Form {
    const char* file;
    std::size_t atoms;
    std::size_t variables;
    std::size_t sections;
    const char* json;  // a part of it
};

const Form forms[] = {
    {"restart_alone", 0, 0, 0, R"("route_words":["#","opt=restart"])"},
    {"restart_with_title", 0, 0, 0, R"("title":"still here")"},
    {"restart_frequencies", 0, 0, 0, R"("route_words":["#","freq=restart"])"},
    {"restart_excited_states", 0, 0, 0, R"("title":"","molecule":{"charges":[])"},
    {"restart_scan", 0, 0, 0, R"("route_words":["#","scan=restart"])"},
    {"restart_lst", 0, 0, 0, R"("route_words":["#","lst=restart"])"},
    {"restart_admp", 0, 0, 0, R"("route_words":["#","admp=restart"])"},
    {"restart_bomd", 0, 0, 0, R"("route_words":["#","bomd=restart"])"},
    {"restart_irc", 0, 0, 0, R"("options":[{"name":"maxpoints","value":"60"},{"name":"restart"}])"},
    {"restart_of_job", 0, 0, 0, R"("route_words":["#P","Restart"],"route":{"print_level":"p")"},
    {"restart_oniom_solvent", 0, 0, 0,
     R"("title":"methanol in water","molecule":{"charges":[{"charge":0,"multiplicity":1},)"},
    {"restart_g2", 0, 0, 0, R"("title":"water")"},
    {"second_half_of_g1", 0, 0, 0, R"("title":"water, from the frequencies of a job before")"},
    {"archived_again", 0, 0, 0, R"("route_words":["#","rearchive"])"},
    {"first_line_of_old_files", 3, 0, 0, R"("link0":{"chk":"first_line_of_old_files.chk"},"route_words":["#","hf/sto-3g"])"},
    {"nonstandard_route", 0, 0, 0, R"("route_words":["#","nonstd")"},
    {"modified_checkpoint", 0, 0, 0, R"("charges":[{"charge":0,"multiplicity":1}])"},
    {"model_builder", 0, 0, 0, R"("charges":[{"charge":0,"multiplicity":1}])"},
    {"harmonic_constraints", 3, 0, 1, R"("text":"O 0.000 0.000 0.120\nH 0.000 0.760 -0.470\nH)"},
    {"code_behind_variable", 3, 2, 0, R"("variables":[{"name":"r","value":"0.96"},{"name":"a","value":"104.5"}])"},
    {"rows_by_labels", 3, 0, 0, R"("bond":{"atom":1,"value":"0.96"},"angle":{"atom":2,"value":"104.5"})"},
    {"rows_with_layers", 3, 0, 0, R"("bond":{"atom":1,"value":"1.09"},"angle":{"atom":2,"value":"109.5"})"},
    {"short_layer_names", 6, 0, 0, R"("layer":"Low")"},
    {"link_atom_without_host", 8, 0, 0, R"("z":1.53,"layer":"L"})"},
    {"dash_for_dummy", 6, 0, 0, R"({"element":"-","bond":{"atom":1,"value":"1.0"},"angle":{"atom":2,"value":"90."}})"},
    {"half_cartesian", 3, 2, 0, R"("bond":{"atom":0,"value":"xo"})"},
    {"values_behind_blanks", 2, 1, 0, R"("cartesian_variables":[{"name":"z","value":"0.37"}])"},
    {"numbers_with_d", 2, 0, 0, R"("z":0.37)"},
    {"second_zmatrix", 3, 3, 1, R"("text":"hnc\n\n0 1\nC\nN 1 r\nH 1 s 2 a\n\nr 1.17\ns 2.10\na 5.")"},
    {"qst3_without_changes", 3, 0, 3, R"("text":"hnc\n\n0 1\nC 0.0 0.0 0.0\nN 0.0 0.0 1.17\nH 0.0 0.0 2.17"},)"},
    {"included_basis", 3, 0, 1, R"("text":"@water.gbs/N")"},
    {"included_atoms", 0, 0, 0, R"("charges":[{"charge":0,"multiplicity":1}])"},
    {"blanks_in_route", 3, 0, 0, R"("method":"hf","basis_set":"sto-3g")"},
    {"oniom_basis", 3, 0, 1, R"("kind":25)"},
    {"orbital_window", 3, 0, 1, R"("kind":40)"},
    {"two_key_lists", 3, 0, 2, R"("kind":46)"},
    {"both_parameters", 3, 0, 2, R"("kind":24)"},
    {"generic_solvent", 3, 0, 1, R"("kind":30)"},
    {"wfx_file", 3, 0, 1, R"("kind":54)"},
    {"other_spellings", 3, 0, 0, R"("link0":{"chk":"water.chk","oldchk":"old.chk","nproc":4)"},
    {"no_title", 3, 0, 0, R"("title":"")"},
    {"bonds_without_numbers", 3, 0, 1, R"("bonds":[[1,2,1.0],[1,3,1.0],[2,3,0.5]])"},
    {"unreadable_second", 3, 0, 0, R"({"error":{"line":15,"message":"Invalid charge/spin line: 0 x"}})"},
};

TEST(ExampleForms, HoldWhatTheySay) {
    std::set<std::string> told;
    for (const Form& form : forms) {
        told.insert(form.file);
        const std::string text = read_whole_file((forms_folder / (std::string(form.file) + ".gjf")).string());
        const std::vector<JobReading> readings = read_jobs_with_layout(text);
        const GJFData& job = readings.front().job;
        EXPECT_EQ(readings.front().error, "") << form.file;
        EXPECT_EQ(job.geom.atom_count(), form.atoms) << form.file;
        EXPECT_EQ(job.geom.variables.size() + job.geom.constants.size() + job.geom.cartesian_variables.size(),
                  form.variables)
            << form.file;
        EXPECT_EQ(job.extra_inputs.size(), form.sections) << form.file;
        EXPECT_TRUE(readings.front().layout.missing.empty()) << form.file;
        EXPECT_NE(readings_json(form.file, readings).find(form.json), std::string::npos)
            << form.file << readings_json(form.file, readings);
    }
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(forms_folder)) {
        if (entry.path().extension() == ".gjf") {
            files.insert(entry.path().stem().string());
        }
    }
    EXPECT_EQ(files, told);
}

TEST(ExampleForms, KeepTheirBytesWhenSomethingElseIsEdited) {
    for (const Form& form : forms) {
        const std::string text = read_whole_file((forms_folder / (std::string(form.file) + ".gjf")).string());
        GJFDocument document(text);
        EXPECT_EQ(document.to_text(), text) << form.file;
        document.job(0).set_mem("3GB");
        std::string edited = document.to_text();
        const std::string line = "%mem=3GB\n";
        ASSERT_NE(edited.find(line), std::string::npos) << form.file;
        EXPECT_EQ(edited.erase(edited.find(line), line.size()), text) << form.file;
    }
}

}  // namespace
}  // namespace quor::input::gaussian
