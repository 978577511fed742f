// Documents that are written by the record of edits, and editors that come from elsewhere, which are compared.
#include <string>
#include <utility>

#include "../../support/files.hpp"
#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

const std::string two_jobs = "# hf/sto-3g\n\na\n\n0 1\nHe 0.0 0.0 0.0\nNe 0.0 0.0 5.0\n\n--Link1--\n" + bonded;

// Assigns an editor that takes another text to a document of `text`.
std::string written_with(const std::string& text, const std::string& other, const Edit& edit) {
    GJFDocument document(text);
    GJFDocument source(other);
    edit(source.job(0));
    document.job(0) = source.job(0);
    return document.to_text();
}

TEST(RecordedDocuments, TakeEditorsFromElsewhere) {
    const struct {
        const char* name;
        std::string other;
        Edit edit;
        std::string wanted;
    } cases[] = {
        {"of the same text", bonded, [](GJFEditor&) {}, bonded},
        {"of another title", replaced(bonded, "\nt\n", "\nu\n"), [](GJFEditor&) {}, replaced(bonded, "\nt\n", "\nu\n")},
        {"of another title that was edited", replaced(bonded, "\nt\n", "\nu\n"), [](GJFEditor& e) { e.set_title("t"); },
         bonded},
        {"of another memory, and edited", "%mem=1GB\n" + bonded, [](GJFEditor& e) { e.set_title("v"); },
         "%mem=1GB\n" + replaced(bonded, "\nt\n", "\nv\n")},
        {"of other coordinates", replaced(bonded, "1.4", "1.5"), [](GJFEditor&) {}, replaced(bonded, "1.4", "1.5")},
        {"with an atom less", bonded, [](GJFEditor& e) { e.remove_atom(3); },
         edited(bonded, [](GJFEditor& e) { e.remove_atom(3); })},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(written_with(bonded, c.other, c.edit), c.wanted) << c.name;
    }
}

TEST(RecordedDocuments, TakeTheirOwnEditorsBack) {
    GJFDocument document(two_jobs);
    GJFEditor copy = document.job(0);
    copy.translate_atoms({0}, 1, 0, 0);
    document.job(0).set_title("lost");
    document.job(0) = copy;
    EXPECT_EQ(document.to_text(), replaced(two_jobs, "He 0.0 0.0", "He 1.000000 0.0"));
    document.job(1) = copy;  // of another job, with which the second is then compared
    EXPECT_EQ(GJFDocument(document.to_text()).job(1).get_data().geom.atoms[1].info.element, "Ne");
}

TEST(RecordedDocuments, TakeAnotherEditorInPlaceOfAJobs) {
    const std::string other = replaced(bonded, "\nt\n", "\nu\n");
    GJFDocument document(two_jobs);
    EXPECT_THROW(document.set_job(2, GJFDocument(other).job(0)), GJFParseException);
    for (const char* element : {"H", "F"}) {  // compared with what was read, again and again
        GJFEditor editor = GJFDocument(other).job(0);
        editor.replace_atom(
            0, GJFDocument(replaced(bonded, "C  0.0", std::string(element) + "  0.0")).job(0).get_data().geom.atoms[0]);
        document.set_job(1, editor);
        EXPECT_EQ(document.to_text(),
                  replaced(replaced(two_jobs, "\nt\n", "\nu\n"), "C  0.0", std::string(element) + "  0.0"));
    }
    document.set_job(1, GJFDocument(bonded).job(0));
    EXPECT_EQ(document.to_text(), two_jobs);
    document.job(1).set_data(document.job(1).get_data());
    document.job(0).set_title("b");
    document.set_job(0, document.job(0));  // edited before: what was read is not at hand any more
    EXPECT_EQ(document.to_text(), replaced(two_jobs, "\na\n", "\nb\n"));
}

TEST(RecordedDocuments, KeepTheBytesOfWhatIsAsItWas) {
    const std::pair<const char*, Edit> cases[] = {
        {"title", [](GJFEditor& e) { e.set_title("x"), e.set_title("t"); }},
        {"atom", [](GJFEditor& e) { e.replace_atom(1, AtomCoord(e.get_data().geom.atoms[1])); }},
        {"atoms there and back", [](GJFEditor& e) { e.move_atom(0, 3), e.move_atom(3, 0); }},
        {"freeze codes of no atom", [](GJFEditor& e) { e.set_freeze_by_element("Xe", -1); }},
        {"bond", [](GJFEditor& e) { e.set_bond_order(0, 1, 3), e.set_bond_order(0, 1, 1); }},
        {"whole job", [](GJFEditor& e) { e.set_data(e.get_data()); }},
        {"sections",
         [](GJFEditor& e) { e.set_extra_input(1, e.get_data().extra_inputs[1].kind, e.get_data().extra_input_text(1)); }},
    };
    for (const auto& [name, edit] : cases) {
        EXPECT_EQ(edited(bonded, edit), bonded) << name;
    }
}

TEST(RecordedDocuments, WriteEveryPart) {
    const std::string overlays = "%nprocs=4\n# hf/sto-3g extraoverlays\n\n1//1;\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";
    const std::string symbolic = "# hf/sto-3g\n\nt\n\n0 1\nHe r 0.0 0.0\n\nr=0.5\n\n";
    EXPECT_EQ(edited(overlays, [](GJFEditor& e) { e.set_overlays("2//1;"); }), replaced(overlays, "1//1;", "2//1;"));
    EXPECT_EQ(edited(overlays, [](GJFEditor& e) { e.set_nproc(8); }), replaced(overlays, "%nprocs=4", "%nprocshared=8"));
    EXPECT_EQ(edited(overlays, [](GJFEditor& e) { e.remove_nproc(); }), replaced(overlays, "%nprocs=4\n", ""));
    EXPECT_EQ(edited(bonded,
                     [](GJFEditor& e) {
                         e.set_positions({{0, 0, 0}, {0, 0, 1.5}, {0, 0.9, 1.7}, {0.5, 0.9, -0.4}});
                     }),
              replaced(bonded, "0.0 0.0 1.4", "0.0 0.0 1.500000"));
    EXPECT_EQ(refusal(symbolic,
                      [](GJFEditor& e) {
                          e.set_positions({{1, 2, 3}});
                      }),
              "A coordinate of atom 1 is a variable and cannot be moved");
    EXPECT_EQ(refusal(overlays, [](GJFEditor& e) { e.set_overlays(std::nullopt); }),
              "The overlay section can be changed, but neither added nor removed, in a document");
}

TEST(RecordedDocuments, BeginAnewWhenSaved) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("job.gjf", two_jobs);
    GJFDocument document = GJFDocument::open(path);
    const GJFEditor before = document.job(0);
    document.job(0).set_mem("1GB");
    EXPECT_TRUE(document.save());
    EXPECT_TRUE(document.job(0).record()->empty());
    EXPECT_NE(document.job(0).record()->identity(), before.record()->identity());
    EXPECT_FALSE(document.save());
    document.job(0) = before;
    EXPECT_TRUE(document.save());
    EXPECT_EQ(quor::test::bytes_of(path), two_jobs);
}

}  // namespace
}  // namespace quor::input::gaussian::test
