// What is lost of a job in the fixed layout, and what is not.
#include <gjf/core/document/fixed_layout.hpp>

#include <gjf/core/reader/gjf_parser.hpp>

#include <string>

#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

const std::string plain = "%mem=1GB\n#p hf/sto-3g\n\nt\n\n0 1\nC-CT-0.1(Fragment=1) -1 0.0 0.0 0.0 L\nH 1 0.0 0.0 1.0\n\n";

std::string loss_after(const std::string& text, const Edit& edit) {
    GJFEditor editor(GJFParser::parse_string(text));
    edit(editor);
    const std::optional<LayoutLoss> loss = find_layout_loss(editor);
    return loss ? loss->reason : std::string();
}

TEST(FixedLayout, TellsWhatItCannotCarry) {
    const std::string molecule = "# hf\n\nt\n\n0 1\n";
    const std::string too_wide =
        " atoms are too wide for their columns; use_numeric_coordinates() writes them with six decimals";
    const struct {
        const char* name;
        std::string text;
        Edit edit;
        std::string reason;
    } cases[] = {
        {"a Z-matrix", molecule + "O\nH 1 0.9\n\n", [](GJFEditor&) {}, "the fixed layout cannot carry its Z-matrix"},
        {"a link atom", molecule + "C 0 0.0 0.0 0.0 L H 2\nC 0 0.0 0.0 1.5 H\n\n", [](GJFEditor&) {},
         "the fixed layout cannot carry its link atoms"},
        {"a link atom without a freeze code", molecule + "C 0.0 0.0 0.0 L H,2\nC 0.0 0.0 1.5 H\n\n", [](GJFEditor&) {},
         "the fixed layout cannot carry its link atoms"},
        {"coordinates that touch", molecule + "He 0.1234567890 0.1234567890 0.0\n\n", [](GJFEditor&) {},
         "the coordinates of 1" + too_wide},
        {"a type of two words", plain, [](GJFEditor& e) { e.set_atom_type(1, "C T"); },
         "the label of atom 2 would be read as another one"},
        {"a fragment of two", plain, [](GJFEditor& e) { e.set_fragment_by_index({0}, "a,b"); },
         "the label of atom 1 would be read as another one"},
        {"memory over two lines", plain, [](GJFEditor& e) { e.set_mem("1GB\n%nproc=3"); },
         "the fixed layout cannot carry its Link 0 lines"},
        {"an empty line in a section", plain, [](GJFEditor& e) { e.add_extra_input("a\n\nb"); },
         "the fixed layout cannot carry its extra input sections"},
        {"a layer of two words", plain, [](GJFEditor& e) { e.set_oniom_layer_all("H L"); },
         "the fixed layout cannot carry its atoms"},
        {"no atoms", plain, [](GJFEditor& e) { e.clear_atoms(); },
         "its text would not read back (GJF Parse Error: Geometry section must have at least 2 lines)"},
        {"a title of two sections", plain, [](GJFEditor& e) { e.set_title("a\n\nb"); },
         "its text would not read back (GJF Parse Error: Geometry section must have at least 2 lines)"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(loss_after(c.text, c.edit), c.reason) << c.name;
    }
}

TEST(FixedLayout, CarriesTheRest) {
    const std::pair<const char*, Edit> cases[] = {
        {"the job", [](GJFEditor&) {}},
        {"moved atoms",
         [](GJFEditor& e) {
             e.translate_atoms({0, 1}, 0.123456789, 0, 0);
         }},
        {"charges of many digits", [](GJFEditor& e) { e.set_atom_mm_charge(0, 0.12345678901234); }},
        {"bonds",
         [](GJFEditor& e) {
             e.add_keyword_with_options("geom", {{"connectivity", {}}}), e.set_bond_order(0, 1, 1.5);
         }},
        {"a whole number before a layer",
         [](GJFEditor& e) {
             e.set_oniom_layer_all("H");
             AtomCoord atom = e.get_data().geom.atoms[1];
             atom.freeze.reset();
             atom.x_ref = {"2", 2.0};
             atom.x = 2;
             e.replace_atom(1, atom);
         }},
    };
    for (const auto& [name, edit] : cases) {
        EXPECT_EQ(loss_after(plain, edit), "") << name;
    }
}

}  // namespace
}  // namespace quor::input::gaussian::test
