// How sections follow the atoms that they name by number, each kind in its own form, and when they cannot.
#include <string>
#include <utility>
#include <vector>

#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

TEST(Renumbering, ReachesWhatNamesAtoms) {
    check_edits({
        {"removed", bonded, [](GJFEditor& e) { e.remove_atom(2); },
         "# hf/sto-3g geom=connectivity opt=modredundant\n\nt\n\n0 1\nC  0.0 0.0 0.0\nO  0.0 0.0 1.4\nH  0.5 0.9 -0.4\n\n"
         " 1 2 1.0 3 1.0\n 2\n 3\n\nB 1 2 F\n* 2 B\n\n"},
        {"removed with another", bonded,
         [](GJFEditor& e) {
             e.remove_atoms({3, 2});
         },
         "# hf/sto-3g geom=connectivity opt=modredundant\n\nt\n\n0 1\nC  0.0 0.0 0.0\nO  0.0 0.0 1.4\n\n 1 2 1.0\n 2\n\nB 1 "
         "2 "
         "F\n* 2 B\n\n"},
        {"moved", bonded, [](GJFEditor& e) { e.move_atom(0, 1); },
         "# hf/sto-3g geom=connectivity opt=modredundant\n\nt\n\n0 1\nO  0.0 0.0 1.4\nC  0.0 0.0 0.0\nH  0.0 0.9 1.7\nH  "
         "0.5 0.9 -0.4\n\n"
         " 1 3 1.0\n 2 1 1.0 4 1.0\n 3\n 4\n\nB 2 1 F\nD 3 1 2 4 F\n* 1 B\n\n"},
        {"bond more", bonded, [](GJFEditor& e) { e.set_bond_order(2, 3, 1.5); }, replaced(bonded, "\n 3\n", "\n 3 4 1.5\n")},
        {"bond order", bonded, [](GJFEditor& e) { e.set_bond_order(0, 1, 2); }, replaced(bonded, "1 2 1.0", "1 2 2.0")},
        {"bond less", bonded, [](GJFEditor& e) { e.remove_bond(0, 1); }, replaced(bonded, " 1 2 1.0 4", " 1 4")},
    });
}

TEST(Renumbering, ReachesLinkAtomHosts) {
    const std::string text =
        "# oniom(hf/sto-3g:uff)\n\nt\n\n0 1\nF 0 9 0 0 L\nC 0 0 0 0 H\nC 0 1.5 0 0 L H 2 ! link\nH 0 0 1 0 H\n\n";
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.remove_atom(0); }),
              replaced(replaced(text, "F 0 9 0 0 L\n", ""), "L H 2", "L H 1"));
    EXPECT_EQ(refusal(text, [](GJFEditor& e) { e.remove_atom(1); }),
              "The link atom of atom 2 is bonded to an atom that was removed");
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.remove_atom(1); }, {true}), replaced(text, "C 0 0 0 0 H\n", ""));
}

TEST(Renumbering, ReachesSectionsOfManyKinds) {
    const auto job = [](const std::string& route, const std::string& section) {
        return "# hf/sto-3g " + route + "\n\nt\n\n0 1\nC 0 0 0\nH 0 0 1\nH 0 1 0\nH 1 0 0\n\n" + section + "\n\n";
    };
    struct Row {
        std::string route, section, wanted;
    };
    const Row rows[] = {
        {"opt=readopt", "atoms=2-4", "atoms=1-3"},
        {"opt=readopt", "atoms=1,3-4 notatoms=H", "atoms=2-3 notatoms=H"},
        {"nmr=(spinspin,readatoms)", "1-2 4", "1   3"},
        {"pop=(mk,readradii)", "C 1.7\n3 1.2", "C 1.7\n2 1.2"},
        {"freq=readisotopes", "298.15 1.0\n12\n1\n2\n1", "298.15 1.0\n1\n2\n1"},
        {"scrf=(read,solvent=water)", "eps=4.0", "eps=4.0"},
        {"opt=modredundant", "! of the methyl group\nB 2 3 F", "! of the methyl group\nB 1 2 F"},
        {"opt=modredundant", "X 1 F\nX 4 F", "X 3 F"},
        {"nmr=(spinspin,readatoms)", "1 3 4", "2 3"},
        {"opt=readopt", "atoms=2,1 notatoms=H", "atoms=1 notatoms=H"},
        {"opt=readopt", "atoms=1,2", "atoms=1"},
        {"pop=(mk,readradii)", "1 1.7\nH 1.2", "H 1.2"},
        {"pseudo=read", "H 0\nh-ecp 0 0\nd-ul\n1\n2 1.0 0.0", "H 0\nh-ecp 0 0\nd-ul\n1\n2 1.0 0.0"},
        {"pseudo=read", "2 0\nh-ecp 0 0\nd-ul\n1\n2 1.0 0.0", "1 0\nh-ecp 0 0\nd-ul\n1\n2 1.0 0.0"},
        {"pop=nboread", "$NBO NRT $END", "$NBO NRT $END"},
    };
    for (const Row& row : rows) {
        const std::string wanted = replaced(job(row.route, row.wanted), "C 0 0 0\n", "");
        EXPECT_EQ(edited(job(row.route, row.section), [](GJFEditor& e) { e.remove_atom(0); }), wanted) << row.route;
    }
    const Row refused[] = {
        {"opt=modredundant", "R1=R(1,2)",
         "The section 'Modifications to coordinates' cannot follow the change of atoms: it holds expressions"},
        {"nmr=(spinspin,readatoms)", "2-9",
         "The section 'Atoms list for spin-spin coupling constants' cannot follow the change of atoms: '2-9' is no atom of "
         "the molecule"},
        {"nmr=(spinspin,readatoms)", "0-2",
         "The section 'Atoms list for spin-spin coupling constants' cannot follow the change of atoms: '0-2' is no atom of "
         "the molecule"},
        {"pop=(mk,readradii)", "-3 1.2",
         "The section 'Alternate atomic radii' cannot follow the change of atoms: '-3' is no atom of the molecule"},
        {"opt=modredundant", "Q 2 3 F",
         "The section 'Modifications to coordinates' cannot follow the change of atoms: 'Q' is no type of coordinate"},
        {"opt=modredundant", "BA 2 3 F",
         "The section 'Modifications to coordinates' cannot follow the change of atoms: 'BA' is no type of coordinate"},
        {"opt=modredundant", "B 0 2 F",
         "The section 'Modifications to coordinates' cannot follow the change of atoms: '0' is no atom of the molecule"},
        {"pseudo=read", "2 0\nh-ecp 0 0\nd-ul\n1\nexponents",
         "The section 'ECP specification' cannot follow the change of atoms: it names atoms by number"},
        {"freq=readisotopes", "298.15 1.0\n12\n1\n2",
         "The section 'Atomic masses' cannot follow the change of atoms: it does not have one line for each atom"},
        {"scrf=read", "2 1.2 1.0",
         "The section 'PCM solvation model input' cannot follow the change of atoms: it changes the spheres of single "
         "atoms"},
        {"opt=modredundant", "B 1 9 F",
         "The section 'Modifications to coordinates' cannot follow the change of atoms: '9' is no atom of the molecule"},
        {"pop=nboread", "$NBO PRINT=2 $END",
         "The section 'NBO input' cannot follow the change of atoms: it may name atoms by number"},
        {"scrf=read", "modifysph",
         "The section 'PCM solvation model input' cannot follow the change of atoms: it changes the spheres of single "
         "atoms"},
    };
    for (const Row& row : refused) {
        const std::string text = job(row.route, row.section);
        EXPECT_EQ(refusal(text, [](GJFEditor& e) { e.remove_atom(0); }), row.wanted);
        GJFDocument document(text);
        document.job(0).remove_atom(0);
        EXPECT_EQ(document.to_text({true}), replaced(text, "C 0 0 0\n", "")) << row.route;
    }
}

TEST(Renumbering, ReachesFurtherStructures) {
    const std::string text =
        "# hf/sto-3g opt=qst2 geom=connectivity\n\nreactant\n\n0 1\nH 0 0 0\nC 0 0 1 ! first\nN 0 0 2.2\n\n1\n2 3 3.0\n3\n\n"
        "product\n\n0 1\nH 0 0 3.3\nC 0 0 1 ! second\nN 0 0 2.2\n\n1\n2 3 3.0\n3\n\n";
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.remove_atom(0); }),
              "# hf/sto-3g opt=qst2 geom=connectivity\n\nreactant\n\n0 1\nC 0 0 1 ! first\nN 0 0 2.2\n\n1 2 3.0\n2\n\n"
              "product\n\n0 1\nC 0 0 1 ! second\nN 0 0 2.2\n\n1 2 3.0\n2\n\n");
    EXPECT_EQ(
        edited(text, [](GJFEditor& e) { e.move_atom(0, 1); }),
        "# hf/sto-3g opt=qst2 geom=connectivity\n\nreactant\n\n0 1\nC 0 0 1 ! first\nH 0 0 0\nN 0 0 2.2\n\n1 3 3.0\n2\n3\n\n"
        "product\n\n0 1\nC 0 0 1 ! second\nH 0 0 3.3\nN 0 0 2.2\n\n2\n1 3 3.0\n3\n\n");
    EXPECT_EQ(refusal(text, [](GJFEditor& e) { e.add_atom(e.get_data().geom.atoms[0]); }),
              "The section '2nd title and molecule specification' cannot follow the change of atoms: where "
              "a new atom is in it "
              "is not known");
    const std::string symbolic = replaced(text, "H 0 0 3.3\nC 0 0 1 ! second\nN 0 0 2.2\n", "H\nC 1 1.1\nN 2 1.2 1 180.0\n");
    EXPECT_EQ(refusal(symbolic, [](GJFEditor& e) { e.remove_atom(0); }),
              "The section '2nd title and molecule specification' cannot follow the change of atoms: its "
              "atoms cannot be told");
}

// Atoms C, O, H, H with a section that names them.
std::string with_coordinates(const std::string& section) {
    return "# hf/3-21g opt=modredundant\n\nt\n\n0 1\nC 0 0 0\nO 0 0 1\nH 0 1 0\nH 1 0 0\n\n" + section + "\n\n";
}

TEST(Renumbering, ReachesTextsThatWereGivenBeforeTheAtomsChanged) {
    constexpr auto kind = ExtraInputSectionKind::CoordinateModifications;
    const std::string text = with_coordinates("B 2 3 F\nB 1 2 F");
    const auto without_carbon = [](const std::string& section) {
        return replaced(with_coordinates(section), "C 0 0 0\n", "");
    };
    check_edits({
        {"added to, then removed", text,
         [](GJFEditor& e) {
             e.upsert_extra_input_section(kind, "A 2 3 4 F", true);
             e.remove_atom(0);
         },
         without_carbon("B 1 2 F\nA 1 2 3 F")},
        {"set, then removed", text,
         [](GJFEditor& e) {
             e.set_extra_input(0, kind, "B 2 4 F");
             e.remove_atom(0);
         },
         without_carbon("B 1 3 F")},
        {"removed, then set", text,
         [](GJFEditor& e) {
             e.remove_atom(0);
             e.set_extra_input(0, kind, "B 1 3 F");
         },
         without_carbon("B 1 3 F")},
        {"removed, then set to the old text", text,
         [](GJFEditor& e) {
             e.remove_atom(0);
             e.set_extra_input(0, kind, "B 2 3 F\nB 1 2 F");
         },
         without_carbon("B 2 3 F\nB 1 2 F")},
        {"removed, then set, then moved", text,
         [](GJFEditor& e) {
             e.remove_atom(0);
             e.set_extra_input(0, kind, "B 1 3 F");
             e.move_atom(0, 1);
         },
         replaced(without_carbon("B 2 3 F"), "O 0 0 1\nH 0 1 0\n", "H 0 1 0\nO 0 0 1\n")},
        {"put in, then removed", replaced(with_coordinates("X"), "X\n\n", ""),
         [](GJFEditor& e) {
             e.insert_extra_input_ordered(kind, "B 2 3 F");
             e.remove_atom(0);
         },
         without_carbon("B 1 2 F")},
        {"another job with the same atoms", text,
         [](GJFEditor& e) {
             e.remove_atom(0);
             GJFData data = e.get_data();
             data.title = "u";
             e.set_data(data);
         },
         replaced(without_carbon("B 1 2 F"), "\nt\n", "\nu\n")},
        {"kinds removed", text,
         [](GJFEditor& e) {
             e.insert_extra_input_ordered(ExtraInputSectionKind::IRCCoordinates, "B 1 2");
             e.remove_extra_inputs_by_kind({ExtraInputSectionKind::IRCCoordinates});
             e.remove_atom(0);
         },
         without_carbon("B 1 2 F")},
    });
    const char* const prefix = "The section 'Modifications to coordinates' cannot follow the change of atoms: ";
    const std::pair<std::string, Edit> refused[] = {
        {"it was added to after the atoms had changed",
         [](GJFEditor& e) {
             e.remove_atom(0);
             e.upsert_extra_input_section(kind, "A 1 2 3 F", true);
         }},
        {"where they went is not known", giving([](GJFData& d) { d.geom.atoms.push_back(d.geom.atoms[0]); })},
        {"where they went is not known", giving([](GJFData& d) { d.geom.atoms.erase(d.geom.atoms.begin()); })},
        {"where they went is not known",
         [](GJFEditor& e) {
             const std::vector<AtomCoord> atoms = e.get_data().geom.atoms;
             e.clear_atoms();
             for (const AtomCoord& atom : atoms) {
                 e.add_atom(atom);
             }
         }},
        {"it may name an atom that was added before",
         [](GJFEditor& e) {
             e.add_atom(e.get_data().geom.atoms[0]);
             e.set_extra_input(0, kind, "B 1 5 F");
             e.remove_atom(0);
         }},
    };
    for (const auto& [reason, edit] : refused) {
        EXPECT_EQ(refusal(text, edit), prefix + reason);
        EXPECT_EQ(refusal(text, edit, {true}).rfind("no refusal", 0), 0U) << "unless it is forced";
    }
}

TEST(Renumbering, TakesASectionThatIsLeftEmpty) {
    const std::string text = "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nC 0 0 0\nH 0 0 1\n\nX 1 F\n\n";
    const std::string before = replaced(replaced(text, "sto-3g", "gen"), "X 1 F\n\n", "X 1 F\n\nH 0\nsto-3g\n****\n\n");
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.remove_atom(0); }), "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nH 0 0 1\n\n");
    EXPECT_EQ(refusal(before, [](GJFEditor& e) { e.remove_atom(0); }),
              "All that the section 'Modifications to coordinates' names is removed; remove it and its keyword first");
}

TEST(Renumbering, LeavesNotesAmongBonds) {
    const std::string text =
        "# hf/sto-3g geom=connectivity opt=qst2\n\nt\n\n0 1\nC 0 0 0\nH 0 0 1\nH 0 1 0\n\n1\n! hydrogens\n2 3 0.5\n3\n\n"
        "u\n\n0 1\nC 0 0 0\nH 0 0 1\nH 0 1 0\n\n1\n! hydrogens\n2 3 0.5\n3\n\n";
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.remove_atom(0); }),
              "# hf/sto-3g geom=connectivity opt=qst2\n\nt\n\n0 1\nH 0 0 1\nH 0 1 0\n\n! hydrogens\n1 2 0.5\n2\n\n"
              "u\n\n0 1\nH 0 0 1\nH 0 1 0\n\n! hydrogens\n1 2 0.5\n2\n\n");
}

TEST(Renumbering, FillsLinesInTheNewOrder) {
    const std::string text = "# hf/sto-3g\n\nt\n\n0 1\nC 0 0 0\nH 0 0 1\nF 0 1 0\n\n";
    const auto with_atoms = [&](const std::string& atoms) { return replaced(text, "C 0 0 0\nH 0 0 1\nF 0 1 0\n", atoms); };
    check_edits({
        {"one more", text,
         [](GJFEditor& e) {
             e.move_atom(0, 2);
             e.add_atom(e.get_data().geom.atoms[0]);
         },
         with_atoms("H 0 0 1\nF 0 1 0\nC 0 0 0\nH 0 0 1\n")},
        {"one less", text,
         [](GJFEditor& e) {
             e.move_atom(0, 2);
             e.remove_atom(0);
         },
         with_atoms("F 0 1 0\nC 0 0 0\n")},
        {"others instead", text,
         [](GJFEditor& e) {
             AtomCoord helium;
             helium.info.element = "He";
             helium.z = 1.5;
             e.clear_atoms();
             e.add_atom(helium);
         },
         with_atoms("He 0 0 1.500000\n")},
    });
}

TEST(Renumbering, ReachesTheCentersOfABasisSet) {
    const std::string text =
        "# hf/gen\n\nt\n\n0 1\nH 0 0 0\nC 0 0 1\nN 0 0 2.2\n\n1-2 0\n6-31G\n****\nN 0\nS 1 1.0\n 1.5 1.0\n****\n3 "
        "0\nsto-3g\n****\n\n";
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.remove_atom(0); }),
              replaced(replaced(replaced(text, "H 0 0 0\n", ""), "1-2 0", "1   0"), "3 0\nsto", "2 0\nsto"));
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.move_atom(0, 2); }),
              replaced(replaced(replaced(text, "H 0 0 0\nC 0 0 1\nN 0 0 2.2\n", "C 0 0 1\nN 0 0 2.2\nH 0 0 0\n"), "1-2 0",
                                "1,3 0"),
                       "3 0\nsto", "2 0\nsto"));
    const std::string twice = replaced(text, "sto-3g\n****\n", "sto-3g\n****\n****\n");
    EXPECT_EQ(edited(twice, [](GJFEditor& e) { e.remove_atom(0); }),
              replaced(replaced(replaced(twice, "H 0 0 0\n", ""), "1-2 0", "1   0"), "3 0\nsto", "2 0\nsto"));
    const std::string noted = replaced(text, "****\nN 0", "! a note\n****\n! another\nN 0");
    EXPECT_EQ(edited(noted, [](GJFEditor& e) { e.remove_atom(0); }),
              replaced(replaced(replaced(noted, "H 0 0 0\n", ""), "1-2 0", "1   0"), "3 0\nsto", "2 0\nsto"));
    const std::string noted_first = replaced(text, "1-2 0", "! a note\n1-2 0");
    EXPECT_EQ(edited(noted_first, [](GJFEditor& e) { e.remove_atom(0); }),
              replaced(replaced(replaced(noted_first, "H 0 0 0\n", ""), "1-2 0", "1   0"), "3 0\nsto", "2 0\nsto"));
    EXPECT_EQ(refusal(text, [](GJFEditor& e) { e.remove_atom(2); }),
              "The section 'Basis set specification' cannot follow the change of atoms: no atom of a block is left");
}

}  // namespace
}  // namespace quor::input::gaussian::test
