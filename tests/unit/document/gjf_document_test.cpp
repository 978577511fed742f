// What a document changes in the text for each edit, and what it refuses.
#include <gjf/core/reader/gjf_parser.hpp>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "../../support/files.hpp"
#include "document_edits.hpp"
#include "water.hpp"

namespace quor::input::gaussian::test {
namespace {

// A carriage return at the end of a text belongs to the end of its last line, as everywhere in reading.
TEST(Documents, WriteNothingBehindACarriageReturnThatEndsTheText) {
    const std::string restart = "%chk=a\n# hf/sto-3g geom=allcheck\r";
    const std::string hydrogen = "# hf/sto-3g\n\nt\n\n0 1\nH 0 0 0\nH 0 0 0.7\r";
    const std::string windows = "# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nH 0 0 0\r";
    AtomCoord atom;
    atom.info.element = "He";
    atom.x = atom.y = atom.z = 1.0;
    const EditCase cases[] = {
        {"a keyword", restart, [](GJFEditor& job) { job.add_keyword("freq"); }, "%chk=a\n# hf/sto-3g geom=allcheck freq\r"},
        {"a Link 0 line", "# hf/sto-3g geom=allcheck\r", [](GJFEditor& job) { job.set_mem("1GB"); },
         "%mem=1GB\n# hf/sto-3g geom=allcheck\r"},
        {"an atom", hydrogen, [&](GJFEditor& job) { job.add_atom(atom); },
         "# hf/sto-3g\n\nt\n\n0 1\nH 0 0 0\nH 0 0 0.7\r\nHe 1.000000 1.000000 1.000000\n"},
        {"an atom of many lines", windows, [&](GJFEditor& job) { job.add_atom(atom); },
         "# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nH 0 0 0\r\nHe 1.000000 1.000000 1.000000\r\n"},
        {"the last atom", hydrogen, [](GJFEditor& job) { job.remove_atom(1); }, "# hf/sto-3g\n\nt\n\n0 1\nH 0 0 0\n"},
    };
    for (const EditCase& row : cases) {
        EXPECT_EQ(edited(row.text, row.edit), row.wanted) << row.name;
    }
}

TEST(Documents, KeepTheirBytes) {
    const std::string texts[] = {
        water,
        replaced(water, "\n", "\r\n"),
        "\xEF\xBB\xBF" + water,
        water + "--link1--\n" + water + "\n\n\n",
        "# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 r\n\nr=0.96\n\nleft over",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(edited(text, [](GJFEditor&) {}), text);
    }
}

TEST(Documents, ChangeLink0Lines) {
    check_edits({
        {"mem", water, [](GJFEditor& e) { e.set_mem("8GB"); }, water_with("%Mem = 1GB", "%Mem = 8GB")},
        {"nproc", water, [](GJFEditor& e) { e.set_nproc(16); }, water_with("%NProcShared=4", "%NProcShared=16")},
        {"chk", water, [](GJFEditor& e) { e.set_checkpoint_file("b.chk"); }, water_with("water.chk !", "b.chk !")},
        {"no mem", water, [](GJFEditor& e) { e.remove_mem(); }, water_with("%Mem = 1GB\n", "")},
        {"oldchk", water, [](GJFEditor& e) { e.set_oldchk_file("old.chk"); },
         water_with("%NProcShared=4\n", "%NProcShared=4\n%oldchk=old.chk\n")},
        {"first line", "# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n", [](GJFEditor& e) { e.set_mem("1GB"); },
         "%mem=1GB\n# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n"},
        {"byte order mark", "\xEF\xBB\xBF" + water, [](GJFEditor& e) { e.set_mem("8GB"); },
         "\xEF\xBB\xBF" + water_with("%Mem = 1GB", "%Mem = 8GB")},
        {"byte order mark before the line", "\xEF\xBB\xBF" + water, [](GJFEditor& e) { e.set_checkpoint_file("b.chk"); },
         "\xEF\xBB\xBF" + water_with("water.chk !", "b.chk !")},
        {"carriage returns", "%mem=1GB\r\n# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0 0 0\r\n\r\n",
         [](GJFEditor& e) {
             e.set_mem("2GB");
             e.set_nproc(2);
         },
         "%mem=2GB\r\n%nprocshared=2\r\n# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0 0 0\r\n\r\n"},
    });
}

TEST(Documents, ChangeTheRoute) {
    const std::string odd = replaced(water, "Freq !", "frobnicate=7 Freq !");
    check_edits({
        {"method", water, [](GJFEditor& e) { e.set_method("m062x"); }, water_with("B3LYP/", "m062x/")},
        {"basis", water, [](GJFEditor& e) { e.set_model_chemistry_basis("def2tzvp"); }, water_with("6-31G(d)", "def2tzvp")},
        {"no basis", water, [](GJFEditor& e) { e.clear_basis_set(); }, water_with("B3LYP/6-31G(d)", "B3LYP")},
        {"print level", water, [](GJFEditor& e) { e.set_output_mode("n"); }, water_with("#P  ", "#n  ")},
        {"option more", water,
         [](GJFEditor& e) {
             e.ensure_keyword_option("opt", {"maxcyc", "50"});
         },
         water_with("(TS,CalcFC)", "(TS,CalcFC,maxcyc=50)")},
        {"options anew", water,
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("opt", {{"tight", {}}});
         },
         water_with("Opt=(TS,CalcFC)", "Opt=(tight)")},
        {"options none", water, [](GJFEditor& e) { e.upsert_keyword("opt"); }, water_with("Opt=(TS,CalcFC)", "Opt")},
        {"keyword more", water,
         [](GJFEditor& e) {
             e.add_keyword_with_options("scf", {{"xqc", {}}});
         },
         water_with("   Freq !", "   Freq scf=xqc !")},
        {"keyword less", water, [](GJFEditor& e) { e.remove_keyword_by_name("opt"); }, water_with("  Opt=(TS,CalcFC)", "")},
        {"last on its line", replaced(water, " ! route", ""), [](GJFEditor& e) { e.remove_keyword_by_name("freq"); },
         water_with("   Freq ! route\n", "")},
        {"stored nowhere", odd, [](GJFEditor& e) { e.set_method("hf"); }, replaced(odd, "B3LYP/", "hf/")},
        {"word more", water, [](GJFEditor& e) { e.add_route_keyword("SCF=XQC"); }, water_with("Freq !", "Freq SCF=XQC !")},
        {"word less", water, [](GJFEditor& e) { e.remove_route_keyword("Freq"); },
         water_with("   Freq ! route", " ! route")},
        {"all words", water,
         [](GJFEditor& e) {
             e.set_route_section({"#", "hf/sto-3g", "pop=full"});
         },
         water_with("#P  B3LYP/6-31G(d)  Opt=(TS,CalcFC)\n   Freq ! route", "# hf/sto-3g pop=full\n ! route")},
        {"another head", replaced(water, " ! route", ""),
         [](GJFEditor& e) {
             e.set_route_section({"#n", "B3LYP/6-31G(d)", "Opt=(TS,CalcFC)", "Freq"});
         },
         replaced(replaced(water, " ! route", ""), "#P  ", "#n  ")},
        {"last line left with a comment", water,
         [](GJFEditor& e) {
             e.set_method("hf");
             e.remove_keyword_by_name("freq");
             e.add_keyword_with_options("scf", {{"xqc", {}}});
         },
         water_with("B3LYP/6-31G(d)  Opt=(TS,CalcFC)\n   Freq ! route", "hf/6-31G(d)  Opt=(TS,CalcFC) scf=xqc\n ! route")},
        {"option with a value", replaced(water, "(TS,CalcFC)", "(MaxCyc=20,TS)"),
         [](GJFEditor& e) {
             e.ensure_keyword_option("opt", {"calcfc", {}});
         },
         water_with("(TS,CalcFC)", "(MaxCyc=20,TS,calcfc)")},
        {"another value", replaced(water, "(TS,CalcFC)", "(MaxCyc = 20,TS)"),
         [](GJFEditor& e) { e.set_keyword_variable("opt", "maxcyc", "50"); }, water_with("(TS,CalcFC)", "(MaxCyc=50,TS)")},
        {"print level before a method in p", replaced(water, "#P  B3LYP/6-31G(d)", "#Ppbepbe/sto-3g"),
         [](GJFEditor& e) { e.set_output_mode(""); }, water_with("#P  B3LYP/6-31G(d)", "# pbepbe/sto-3g")},
        {"basis before a fitting set", replaced(water, "B3LYP/6-31G(d)", "B3LYP/6-31G(d)/Auto"),
         [](GJFEditor& e) { e.set_basis_set("sto-3g"); }, water_with("B3LYP/6-31G(d)", "B3LYP/sto-3g/Auto")},
        {"basis behind an unknown word", replaced(water, "B3LYP/6-31G(d)", "frob/6-31G(d) B3LYP"),
         [](GJFEditor& e) { e.set_basis_set("sto-3g"); }, water_with("B3LYP/6-31G(d)", "frob/sto-3g B3LYP")},
        {"two methods", replaced(water, "B3LYP/6-31G(d)", "HF ONIOM(B3LYP/6-31G(d):UFF)"),
         [](GJFEditor& e) { e.set_method("mp2"); }, water_with("B3LYP/6-31G(d) ", "mp2")},
        {"basis apart", replaced(water, "B3LYP/6-31G(d)", "B3LYP 6-31G(d)"), [](GJFEditor& e) { e.set_basis_set("sto-3g"); },
         water_with("B3LYP/6-31G(d)", "B3LYP sto-3g")},
        {"method beside a basis", replaced(water, "B3LYP/6-31G(d)", "6-31G(d) B3LYP"),
         [](GJFEditor& e) { e.set_method("hf"); }, water_with("B3LYP/6-31G(d)", "6-31G(d) hf")},
        {"method first", replaced(water, "B3LYP/6-31G(d)", ""), [](GJFEditor& e) { e.set_method("hf"); },
         water_with("#P  B3LYP/6-31G(d)", "#P hf  ")},
        {"glued head", "#hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n", [](GJFEditor& e) { e.set_model_chemistry_basis("6-31g"); },
         "#hf/6-31g\n\nt\n\n0 1\nHe 0 0 0\n\n"},
        {"over two lines", "# hf/sto-3g opt=(ts,\n calcfc) freq\n\nt\n\n0 1\nHe 0 0 0\n\n",
         [](GJFEditor& e) {
             e.ensure_keyword_option("opt", {"tight", {}});
         },
         "# hf/sto-3g opt=(ts,\n calcfc,tight) freq\n\nt\n\n0 1\nHe 0 0 0\n\n"},
    });
}

TEST(Documents, BreakARouteLineAtEightyColumns) {
    const std::string text =
        "#p b3lyp/6-31g(d) opt=(ts,calcfc,noeigentest) freq=hpmodes scf=(xqc,tight)\n\nt\n\n0 1\nHe 0 0 0\n\n";
    EXPECT_EQ(edited(text,
                     [](GJFEditor& e) {
                         e.add_keyword_with_options("pop", {{"nbo", {}}});
                     }),
              replaced(text, "tight)\n", "tight)\n pop=nbo\n"));
}

TEST(Documents, ChangeTitleAndCharge) {
    check_edits({
        {"title", water, [](GJFEditor& e) { e.set_title("ice"); }, water_with("Water  title", "ice")},
        {"longer title", water, [](GJFEditor& e) { e.set_title("Water  title\nmore"); },
         water_with("title\n", "title\nmore\n")},
        {"no title", water, [](GJFEditor& e) { e.set_title(""); }, water_with("Water  title\n", "")},
        {"title at last", water_with("Water  title\n", ""), [](GJFEditor& e) { e.set_title("Water  title"); }, water},
        {"charge", water, [](GJFEditor& e) { e.set_charge_and_spin(-1, 2); }, water_with(" 0  1\n", " -1 2\n")},
        {"pairs", water,
         [](GJFEditor& e) {
             e.set_charge_spin_pairs({{0, 1}, {1, 2}});
         },
         water_with(" 0  1\n", " 0  1 1 2\n")},
    });
}

TEST(Documents, ChangeAtomsWithinTheirColumns) {
    const std::string whole_numbers = water_head + "C 1 2 3\nH -2 0 1\n\n";
    check_edits({
        {"freeze", water, [](GJFEditor& e) { e.set_freeze_by_index({0}, -1); },
         water_with("O    0    0.00", "O   -1    0.00")},
        {"moved", water, [](GJFEditor& e) { e.translate_atoms({1}, 0, 0, 10.5); },
         water_with("0.7572000   -0.4692000", "0.7572000   10.0308000")},
        {"moved far", water, [](GJFEditor& e) { e.translate_atoms({1}, -1000.25, 0, 0); },
         water_with("H    0    0.0000000   0.757", "H    0 -1000.2500000  0.757")},
        {"another layer", replaced(water, "0.1173000 ! oxygen", "0.1173000 H ! oxygen"),
         [](GJFEditor& e) { e.set_oniom_layer_all("M"); },
         replaced(replaced(replaced(water, "0.1173000 ! oxygen", "0.1173000 M ! oxygen"), "-0.4692000\n  H   -1",
                           "-0.4692000 M\n  H   -1"),
                  "-0.4692000\n\n", "-0.4692000 M\n\n")},
        {"a parameter of several", water_with("  H    0    0.00", "  H(Iso=2, Fragment=1,Spin=1) 0    0.00"),
         [](GJFEditor& e) { e.set_fragment_by_index({1}, "2"); },
         water_with("  H    0    0.00", "  H(Iso=2,Fragment=2,Spin=1)  0    0.00")},
        {"no freeze code between commas",
         replaced(water, "O    0    0.0000000   0.0000000    0.1173000 !", "O,0,0.0,0.0,0.1 !"),
         giving([](GJFData& d) { d.geom.atoms[0].freeze.reset(); }),
         replaced(water, "O    0    0.0000000   0.0000000    0.1173000 !", "O,0.0,0.0,0.1 !")},
        {"layer", water, [](GJFEditor& e) { e.set_oniom_layer_all("H"); },
         replaced(replaced(water, "0.1173000 ! oxygen", "0.1173000 H ! oxygen"),
                  "-0.4692000\n  H   -1    0.0000000  -0.7572000   -0.4692000",
                  "-0.4692000 H\n  H   -1    0.0000000  -0.7572000   -0.4692000 H")},
        {"fragment", water, [](GJFEditor& e) { e.set_fragment_by_index({1}, "2"); },
         water_with("  H    0    0.00", "  H(Fragment=2) 0    0.00")},
        {"type", water, [](GJFEditor& e) { e.set_atom_type_and_mm_charge(2, "HW", 0.417); },
         water_with("  H   -1", "  H-HW-0.417 -1")},
        {"few decimals", replaced(water, "0.1173000", "0.1"), [](GJFEditor& e) { e.translate_atoms({0}, 0, 0, 0.25); },
         water_with("   0.1173000 !", "0.350000 !")},
        {"removed", water, [](GJFEditor& e) { e.remove_atom(1); },
         water_with("  H    0    0.0000000   0.7572000   -0.4692000\n", "")},
        {"added", water,
         [](GJFEditor& e) {
             AtomCoord atom;
             atom.info.element = "Cl";
             atom.z = -3.25;
             e.add_atom(atom);
         },
         water_with("-0.7572000   -0.4692000\n",
                    "-0.7572000   -0.4692000\n  Cl        0.0000000   0.0000000   -3.2500000\n")},
        {"layer behind a whole number", whole_numbers, [](GJFEditor& e) { e.set_oniom_layer_all("H"); },
         water_head + "C 1.000000 2 3 H\nH -2.000000 0 1 H\n\n"},
        {"layer and freeze code before a whole number", whole_numbers,
         [](GJFEditor& e) { e.set_freeze_all(0), e.set_oniom_layer_all("H"); },
         water_head + "C 0 1 2 3 H\nH 0 -2 0 1 H\n\n"},
        {"no freeze code before a whole number", water_head + "C 0 1 2 3 H\n\n",
         giving([](GJFData& d) { d.geom.atoms[0].freeze.reset(); }), water_head + "C   1.000000 2 3 H\n\n"},
        {"swapped", water, [](GJFEditor& e) { e.move_atom(0, 1); },
         water_head +
             "  H    0    0.0000000   0.7572000   -0.4692000\nO    0    0.0000000   0.0000000    0.1173000 ! oxygen\n"
             "  H   -1    0.0000000  -0.7572000   -0.4692000\n\n"},
    });
}

TEST(Documents, ChangeSectionsWithTheirBlankLines) {
    const std::string text = "# hf/gen opt=modredundant\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\nB 1 2 F\n\n\nH 0\nsto-3g\n****\n\n";
    check_edits({
        {"other text", text,
         [](GJFEditor& e) {
             e.set_extra_input(0, ExtraInputSectionKind::CoordinateModifications, "B 1 2 F\nB 1 2 S 10 0.1");
         },
         replaced(text, "B 1 2 F\n", "B 1 2 F\nB 1 2 S 10 0.1\n")},
        {"removed", text,
         [](GJFEditor& e) {
             e.remove_extra_input(0);
             e.upsert_keyword("opt");
         },
         "# hf/gen opt\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\nH 0\nsto-3g\n****\n\n"},
        {"removed last", text,
         [](GJFEditor& e) {
             e.remove_extra_input(1);
             e.set_basis_set("sto-3g");
         },
         "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\nB 1 2 F\n\n"},
        {"added", "# hf/sto-3g\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\n",
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("opt", {{"modredundant", {}}});
             e.insert_extra_input_ordered(ExtraInputSectionKind::CoordinateModifications, "B 1 2 F");
         },
         "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\nB 1 2 F\n\n"},
    });
}

TEST(Documents, ChangeTextsThatEndEarly) {
    const std::string cut = "# hf/sto-3g opt\n\nt\n\n0 1\nHe 0 0 0\nHe 0 0 3";
    const std::string rows = replaced(cut, "opt", "geom=connectivity") + "\nHe 0 3 3\n\n1 2 1.0\n! two rows are missing";
    check_edits({
        {"a section more", cut,
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("opt", {{"modredundant", {}}});
             e.insert_extra_input_ordered(ExtraInputSectionKind::CoordinateModifications, "B 1 2 F");
         },
         replaced(cut, "opt", "opt=modredundant") + "\n\nB 1 2 F\n\n"},
        {"a bond of an atom without row", rows, [](GJFEditor& e) { e.set_bond_order(1, 2, 1.5); }, rows + "\n2 3 1.5\n"},
    });
    GJFDocument document(cut);
    document.insert_job(1, GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n"));
    const std::string text = document.to_text();
    EXPECT_EQ(text.rfind(cut + "\n\n--Link1--\n# hf/sto-3g", 0), 0U) << text;
    EXPECT_EQ(GJFDocument(text).job_count(), 2U);
}

TEST(Documents, RefuseWhatTheTextCannotHold) {
    const std::string zmatrix = "# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 r\n\nr=0.96\n\n";
    const std::string chk = "%chk=a\n# hf/sto-3g geom=allcheck\n\n";
    const std::string symbolic = "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 r\n\nr=1.0\n\n";
    const std::tuple<std::string, Edit, std::string> cases[] = {
        {zmatrix, [](GJFEditor& e) { e.add_atom(AtomCoord()); },
         "Atoms with Cartesian coordinates cannot be added to a Z-matrix"},
        {chk, [](GJFEditor& e) { e.set_title("x"); },
         "The title of this job comes from its checkpoint and cannot be changed"},
        {chk, [](GJFEditor& e) { e.set_charge_and_spin(0, 1); },
         "Charge and multiplicity of this job come from its checkpoint and cannot be changed"},
        {chk, [](GJFEditor& e) { e.add_atom(AtomCoord()); },
         "Atoms cannot be added to a job that takes its molecule from a checkpoint"},
        {symbolic, [](GJFEditor& e) { e.translate_atoms({0}, 0, 0, 1); },
         "A coordinate of atom 1 is a variable and cannot be moved"},
        {water, [](GJFEditor& e) { e.set_title("two\n\nsections"); },
         "The changed text cannot be read: Geometry section must have at least 2 lines"},
        {water, [](GJFEditor& e) { e.set_atom_type(1, "C T"); },
         "The changed text would be read otherwise than meant: the label of atom 2"},
        {water, [](GJFEditor& e) { e.set_fragment_by_index({2}, "a,b"); },
         "The changed text would be read otherwise than meant: the label of atom 3"},
        {water, [](GJFEditor& e) { e.set_mem("1GB\n%chk=x"); },
         "The changed text would be read otherwise than meant: the Link 0 lines"},
        {bonded, [](GJFEditor& e) { e.remove_keyword_by_name("geom"); },
         "The changed text would be read otherwise than meant: the section 'Connectivity specifications', which would be "
         "read as the section "
         "'Modifications to coordinates'"},
        {water, [](GJFEditor& e) { e.set_title("a\n\n0 1\nHe 0 0 0\n\n--Link1--\n# hf/sto-3g\n\nb"); },
         "The changed text would be read as 2 jobs, not 1"},
        {water, [](GJFEditor& e) { e.set_title("a\n\n0 1\nHe 0 0 0"); },
         "The changed text would be read otherwise than meant: the title"},
        {"%chk=a\n\nt\n\n0 1\nHe 0 0 0\n\n",
         [](GJFEditor& e) {
             e.set_route_section({"#", "hf/sto-3g"});
         },
         "A route cannot be added to a job without one, in a document"},
        {water, [](GJFEditor& e) { e.clear_atoms(); },
         "The changed text cannot be read: Geometry section must have at least 2 lines"},
    };
    for (const auto& [text, edit, wanted] : cases) {
        EXPECT_EQ(refusal(text, edit), wanted);
    }
}

TEST(Documents, ForceSectionsAlone) {
    const auto forced = [](const std::string& text, const Edit& edit) {
        try {
            return edited(text, edit, {true});
        } catch (const GJFParseException& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(forced(bonded, [](GJFEditor& e) { e.remove_keyword_by_name("geom"); }),
              replaced(bonded, " geom=connectivity", ""));
    EXPECT_EQ(forced(water, [](GJFEditor& e) { e.set_mem("1GB\n%chk=x"); }),
              "GJF Parse Error: The changed text would be read otherwise than meant: the Link 0 lines");
}

}  // namespace
}  // namespace quor::input::gaussian::test
