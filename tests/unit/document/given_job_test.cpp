// What a document changes, and what it refuses, when an editor is given a whole job that differs from the one in the text.
#include <gjf/core/reader/gjf_parser.hpp>

#include <string>
#include <utility>

#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

const std::string zmatrix_job =
    "%lindaworkers=node1\n%debug\n%mem=1GB\n# hf/sto-3g\n\nwater\n\n0 1\nO\nH  1  r   ! first\nH  1  0.97  2  a\n\nr = 0.96 "
    "! "
    "bond\na 104.5\n\n";
const std::string cartesian_job = "# hf/sto-3g\n\nwater\n\n0 1\nO   0.0  0.0  0.1\nH   0.0  0.7 -0.4\n\n";
const std::string overlay_job = "# hf/sto-3g extraoverlays\n\n1//1,2;\n2//1;\n\nhelium\n\n0 1\nHe 0.0 0.0 0.0\n\n";

TEST(GivenJobs, ChangeTheLinesThatDiffer) {
    const struct {
        const char* name;
        std::string text;
        Change change;
        std::string wanted;
    } cases[] = {
        {"nothing", zmatrix_job, [](GJFData&) {}, zmatrix_job},
        {"the value of a variable", zmatrix_job, [](GJFData& d) { d.geom.variables[0].value = "1.00"; },
         replaced(zmatrix_job, "r = 0.96 !", "r = 1.00 !")},
        {"the value of a variable without a sign", zmatrix_job, [](GJFData& d) { d.geom.variables[1].value = "100.0"; },
         replaced(zmatrix_job, "a 104.5", "a 100.0")},
        {"a reference", zmatrix_job,
         [](GJFData& d) { d.geom.zmatrix_entries[2].bond->atom = 2, d.geom.zmatrix_entries[2].angle->atom = 1; },
         replaced(zmatrix_job, "H  1  0.97  2", "H  2  0.97  1")},
        {"the value of a reference", zmatrix_job, [](GJFData& d) { d.geom.zmatrix_entries[2].bond->value = "r"; },
         replaced(zmatrix_job, "0.97", "   r")},
        {"a label of a row", zmatrix_job, [](GJFData& d) { d.geom.zmatrix_entries[1].info.element = "F"; },
         replaced(zmatrix_job, "H  1  r", "F  1  r")},
        {"a Link 0 line less", zmatrix_job, [](GJFData& d) { d.control.other_link0_lines = {"%debug"}; },
         replaced(zmatrix_job, "%lindaworkers=node1\n", "")},
        {"a Link 0 line more", zmatrix_job, [](GJFData& d) { d.control.other_link0_lines.push_back("%subst l101 here"); },
         replaced(zmatrix_job, "%mem=1GB\n", "%mem=1GB\n%subst l101 here\n")},
        {"the memory", zmatrix_job, [](GJFData& d) { d.control.mem = "2GB"; }, replaced(zmatrix_job, "1GB", "2GB")},
        {"a coordinate by name", cartesian_job, [](GJFData& d) { d.geom.atoms[0].z_ref.text = "0.15"; },
         replaced(cartesian_job, " 0.1\n", "0.15\n")},
        {"bonds as text", replaced(bonded, "opt=modredundant", ""),
         [](GJFData& d) {
             d.extra_inputs[0] = ExtraInputSection{ExtraInputSectionKind::Connectivity, "1 2 2.0\n2\n3\n4"};
         },
         replaced(replaced(bonded, "opt=modredundant", ""), " 1 2 1.0 4 1.0\n 2 3 1.0\n 3\n 4\n", " 1 2 2.0\n 2\n 3\n 4\n")},
        {"the overlays", overlay_job, [](GJFData& d) { d.extra_overlays = "1//1,2;\n3//1;"; },
         replaced(overlay_job, "2//1;", "3//1;")},
    };
    for (const auto& c : cases) {
        try {
            EXPECT_EQ(edited(c.text, giving(c.change)), c.wanted) << c.name;
        } catch (const GJFParseException& error) {
            ADD_FAILURE() << c.name << ": " << error.what();
        }
    }
}

TEST(GivenJobs, RefuseWhatNoLineCanHold) {
    const char* const variables = "Variables can be given other values, but neither be added nor removed, in a document";
    const char* const references = "The references of a Z-matrix row can be changed, but neither be added nor removed";
    const char* const rows = "Rows can neither be added to a Z-matrix nor removed from it";
    const char* const overlays = "The overlay section can be changed, but neither added nor removed, in a document";
    const char* const forms =
        "A molecule cannot be turned from Cartesian coordinates into a Z-matrix, nor back, in a document";
    const struct {
        std::string text;
        Change change;
        std::string message;
    } cases[] = {
        {zmatrix_job, [](GJFData& d) { d.geom.variables.pop_back(); }, variables},
        {zmatrix_job,
         [](GJFData& d) {
             d.geom.variables.push_back({"b", "1.0"});
         },
         variables},
        {zmatrix_job, [](GJFData& d) { d.geom.variables[0].name = "q"; }, variables},
        {zmatrix_job, [](GJFData& d) { d.geom.zmatrix_entries[2].angle.reset(); }, references},
        {zmatrix_job, [](GJFData& d) { d.geom.zmatrix_entries.pop_back(); }, rows},
        {zmatrix_job, [](GJFData& d) { d.geom.zmatrix_entries.push_back(d.geom.zmatrix_entries[1]); }, rows},
        {bonded, [](GJFData& d) { std::swap(d.extra_inputs[0], d.extra_inputs[1]); },
         "The changed text cannot be read: Invalid connectivity atom index 'B' in line: B 1 2 F"},
        {overlay_job, [](GJFData& d) { d.extra_overlays.reset(); }, overlays},
        {cartesian_job, [](GJFData& d) { d.extra_overlays = "1//1;"; }, overlays},
        {cartesian_job, [](GJFData& d) { d.geom = GJFParser::parse_string(zmatrix_job).geom; }, forms},
        {zmatrix_job, [](GJFData& d) { d.geom = GJFParser::parse_string(cartesian_job).geom; }, forms},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(refusal(c.text, giving(c.change)), c.message);
    }
}

TEST(GivenJobs, StandBeforeOthers) {
    GJFDocument document(cartesian_job);
    document.insert_job(0, GJFParser::parse_string("# hf/3-21g\n\nfirst\n\n0 1\nHe 0.0 0.0 0.0\n\n"));
    const std::string text = document.to_text();
    EXPECT_EQ(document.original_text(), cartesian_job);
    EXPECT_EQ(document.path(), "");
    ASSERT_GT(text.size(), cartesian_job.size());
    EXPECT_EQ(text.substr(text.size() - cartesian_job.size()), cartesian_job);
    const GJFMultiData read = GJFParser::parse_string_multi(text);
    ASSERT_EQ(read.jobs.size(), 2U);
    EXPECT_EQ(read.jobs[0].title, "first");
    EXPECT_EQ(read.jobs[1].title, "water");
    EXPECT_THROW(document.insert_job(3, read.jobs[0]), GJFParseException);
}

TEST(GivenJobs, TakeThePlaceOfAllOthers) {
    const GJFData helium = GJFParser::parse_string("# hf/3-21g\n\nfirst\n\n0 1\nHe 0.0 0.0 0.0\n\n");
    for (const std::string& text : {cartesian_job, cartesian_job + "--Link1--\n" + cartesian_job, "\n" + cartesian_job}) {
        for (const std::size_t place : {std::size_t{0}, std::size_t{1}}) {
            GJFDocument document(text);
            document.insert_job(place, helium);
            while (document.job_count() > 1) {
                document.remove_job(document.job(0).get_data().title == "first" ? 1 : 0);
            }
            EXPECT_EQ(document.to_text().substr(0, 8), "# hf/3-2") << document.to_text();
            EXPECT_EQ(GJFDocument(document.to_text()).job_count(), 1U);
        }
    }
}

TEST(GivenJobs, MoveWithTheirDocument) {
    GJFDocument document(cartesian_job);
    document = GJFDocument(zmatrix_job);
    EXPECT_EQ(document.original_text(), zmatrix_job);
    EXPECT_EQ(document.job(0).get_data().geom.zmatrix_entries.size(), 3U);
}

}  // namespace
}  // namespace quor::input::gaussian::test
