// Rows of sections before and after an atom is removed: what they then say, or why they cannot follow.
#include <string>
#include <vector>

#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

// A change of sections of one kind: what is wanted of each, or why it is refused.
struct SectionRow {
    const char* section;
    std::size_t removed;  // atom, from 0
    const char* wanted;
};

// The job's atoms are C, H, F and O.
std::string job_with(const std::string& route, const std::string& section) {
    return "# hf/sto-3g " + route + "\n\nt\n\n0 1\nC 0 0 0\nH 0 0 1\nF 0 1 0\nO 1 0 0\n\n" + section + "\n\n";
}

const char* const atom_lines[] = {"C 0 0 0\n", "H 0 0 1\n", "F 0 1 0\n", "O 1 0 0\n"};

void check_followed(const std::string& route, const std::vector<SectionRow>& rows) {
    for (const SectionRow& row : rows) {
        try {
            EXPECT_EQ(edited(job_with(route, row.section), [&](GJFEditor& e) { e.remove_atom(row.removed); }),
                      replaced(job_with(route, row.wanted), atom_lines[row.removed], ""))
                << row.section;
        } catch (const GJFParseException& error) {
            ADD_FAILURE() << row.section << ": " << error.what();
        }
    }
}

void check_refused(const std::string& route, const std::string& name, const std::vector<SectionRow>& rows) {
    const std::string prefix = "The section '" + name + "' cannot follow the change of atoms: ";
    for (const SectionRow& row : rows) {
        const std::string text = job_with(route, row.section);
        const Edit edit = [&](GJFEditor& e) { e.remove_atom(row.removed); };
        EXPECT_EQ(refusal(text, edit), prefix + row.wanted) << row.section;
        EXPECT_EQ(edited(text, edit, {true}), replaced(text, atom_lines[row.removed], "")) << row.section;
    }
}

TEST(Renumbering, ReachesTheCentersOfPotentials) {
    check_followed("pseudo=read",
                   {
                       {"C 0\nlanl2dz\n3 0\nlanl2dz", 1, "C 0\nlanl2dz\n2 0\nlanl2dz"},
                       {"C 0\nlanl2dz\n3 0\nlanl2dz", 3, "C 0\nlanl2dz\n3 0\nlanl2dz"},
                       {"1-3 0\nsdd\n4 0\nsdd", 1, "1-2 0\nsdd\n3 0\nsdd"},
                       {"F 2 4 0 ! heavy\nsdd", 0, "F 1 3 0 ! heavy\nsdd"},
                       {"2 3 0\nsdd", 1, "2 0\nsdd"},
                       {"-Fe 2 0\nsdd", 1, "-Fe 0\nsdd"},
                       {"2 0\nh-ecp 1 2\nd-ul\n1\n3 4 0\ns-ul\n2\n2 1.0D0 -0.5d-01\n2 4 0\n4 0\nsdd", 0,
                        "1 0\nh-ecp 1 2\nd-ul\n1\n3 4 0\ns-ul\n2\n2 1.0D0 -0.5d-01\n2 4 0\n3 0\nsdd"},
                       {"! ours\n2 0\n! from a library\nsdd\n! more\n4 0\nsdd", 0,
                        "! ours\n1 0\n! from a library\nsdd\n! more\n3 0\nsdd"},
                       {"2 0\nx 0 10\n3 0\n0\n4 0\nsdd", 0, "1 0\nx 0 10\n3 0\n0\n3 0\nsdd"},
                       {"2 0\nx 0 10\nd\n1\n2 1.0 2.0 0.5\n4 0\nsdd", 0, "1 0\nx 0 10\nd\n1\n2 1.0 2.0 0.5\n3 0\nsdd"},
                       // Elements alone, in whole blocks and in others.
                       {"H F 0\nsdd", 0, "H F 0\nsdd"},
                       {"F 0\nF 0 0\nd\n1\n2 3 0", 0, "F 0\nF 0 0\nd\n1\n2 3 0"},
                       {"F 0\nF 2 0\nd\nmany", 0, "F 0\nF 2 0\nd\nmany"},
                       {"F 0\nsdd\n****", 0, "F 0\nsdd\n****"},
                       {"F 0\nsdd of the library\nO 0\n2", 0, "F 0\nsdd of the library\nO 0\n2"},
                       {"F", 0, "F"},
                   });
    const char* const by_number = "it names atoms by number";
    check_refused("pseudo=read", "ECP specification",
                  {
                      {"3 0\nlanl2dz", 2, "no atom of a block is left"},
                      {"C 0\nlanl2dz\n2-3 0\nsdd\n4 0\nsdd", 3, "no atom of a block is left"},
                      {"5 0\nlanl2dz", 0, "'5' is no atom of the molecule"},
                      {"2-9 0\nlanl2dz", 0, "'2-9' is no atom of the molecule"},
                      {"F 3-2 0\nlanl2dz", 0, "'3-2' is no atom of the molecule"},
                      {"-2 0\nlanl2dz", 0, "'-2' is no atom of the molecule"},
                      {"2 0", 0, by_number},
                      {"2 0\n3 0", 0, by_number},
                      {"2 0\n****\nsdd", 0, by_number},
                      {"2 0\nsdd of the library", 0, by_number},
                      {"F 0\nsdd\n2 0\nx 1 0\nd\n1\n2 1.0 0.0", 0, by_number},
                      {"F 0\nx 0 0\nd\n2\n2 1.0 0.0\n2 0\nsdd", 0, by_number},
                      {"F 0\nx 0 0\nd\n1\n2 1.0 0.0\n2 3.0 0.0\n2 0\nsdd", 0, by_number},
                      {"F 0\nx -1 0\n2 0\nsdd", 0, by_number},
                      {"F 0\nx 0 0\nd\n-1\n2 0\nsdd", 0, by_number},
                      {"F 0\nx 0 0\nd\n1\n2 one 0.0\n2 0\nsdd", 0, by_number},
                      {"F 0\nx 0 0\nd\n1\n2.5 1.0 0.0\n2 0\nsdd", 0, by_number},
                      {"F 0\nx 99999999999999999999 0\nd\n2 0\nsdd", 0, by_number},
                      {"F 0\nsdd\nF 2 0\nsdd\n****", 0, by_number},
                  });
}

TEST(Renumbering, ReachesSelectionsOfAtoms) {
    check_followed("opt=readopt",
                   {
                       {"noatoms atoms=1 block=3 notatoms=2-3 notblock=2", 0, "noatoms block=3 notatoms=1-2 notblock=2"},
                       {"notatoms=2,3 atoms=2 3", 1, "notatoms=2 atoms=2"},
                       {"ATOMS=2,3 NotAtoms=3 Block=2 3,4", 1, "ATOMS=2 NotAtoms=2 Block=2 3,4"},
                       {"atoms = 1, 2 ,4 layer=2", 0, "atoms = 1 ,3 layer=2"},
                       {"atoms=3, 1 notatoms=C", 0, "atoms=2 notatoms=C"},
                       {"atoms=2-4 notatoms=1", 0, "atoms=1-3"},
                       {"notatoms=1 atoms=2-4 ! all, 2-4 but 1", 0, "atoms=1-3 ! all, 2-4 but 1"},
                       {"  notatoms=1, atoms=1 ,  atoms=3", 0, "  atoms=2"},
                       {"atoms=1 atoms=3", 0, "atoms=2"},
                       {"atoms=3 atoms=1  ! two", 0, "atoms=2  ! two"},
                       {"atoms=1 NoAtoms", 0, "NoAtoms"},
                       {"atoms=1,H", 0, "atoms=H"},
                       {"atoms=(1,3) notatoms=(1)", 0, "atoms=(2)"},
                       {"atoms=(3,1) block=1", 0, "atoms=(2) block=1"},
                       {"1 3-4", 0, "2-3"},
                       {"2,3 block=2", 0, "1,2 block=2"},
                       {"block=2 noatoms 3", 0, "block=2 noatoms 2"},
                       {"block=1", 0, "block=1"},
                       {"atoms= block=1", 0, "atoms= block=1"},
                       {"atoms=2-4\nnotatoms=1 ! the first", 0, "atoms=1-3"},
                       {"! 1 and 2\natoms=2", 0, "! 1 and 2\natoms=1"},
                   });
    const char* const none_left = "no atom of 'atoms=...' is left";
    check_refused("opt=readopt", "Alterations to frozen atoms",
                  {
                      {"atoms=1", 0, none_left},
                      {"Atoms=1 block=3", 0, none_left},
                      {"atoms=1 notatoms=2", 0, none_left},
                      {"atoms=2 atoms=2,2", 1, none_left},
                      {"atoms= atoms=2", 1, none_left},
                      {"notatoms=2 atoms=2", 1, none_left},
                      {"2", 1, none_left},
                      {"2 block=1", 1, none_left},
                      {"atoms=2-9", 0, "'2-9' is no atom of the molecule"},
                      {"notatoms=0", 0, "'0' is no atom of the molecule"},
                      {"atoms=2 - 3", 0, "'-' is no atom of the molecule"},
                      {"atoms=-3", 0, "'-3' is no atom of the molecule"},
                      {"atoms=3-2", 0, "'3-2' is no atom of the molecule"},
                      {"atoms=2:3", 0, "'2:3' is no atom of the molecule"},
                  });
    // A section of which nothing is left goes when it is the last.
    const Edit edit = [](GJFEditor& e) { e.remove_atom(0); };
    EXPECT_EQ(edited(job_with("opt=readopt", "notatoms=1"), edit),
              replaced(replaced(job_with("opt=readopt", ""), "C 0 0 0\n", ""), "\n\n\n\n", "\n\n"));
    const std::string before = replaced(job_with("opt=readopt", "notatoms=1\n\nH 0\nsto-3g\n****"), "sto-3g", "gen");
    EXPECT_EQ(refusal(before, edit),
              "All that the section 'Alterations to frozen atoms' names is removed; remove it and its keyword first");
}

TEST(Renumbering, ReachesAlterationsOfTheBasisSet) {
    check_followed("massage", {
                                  {"2 SP 0.5\n4 D 0.8 ! of oxygen", 1, "3 D 0.8 ! of oxygen"},
                                  {"H 0.5", 1, "H 0.5"},
                              });
    check_refused("massage", "Basis set alterations",
                  {
                      {"5 SP 0.5", 0, "'5' is no atom of the molecule"},
                      {"0 SP 0.5", 0, "'0' is no atom of the molecule"},
                  });
}

TEST(Renumbering, FollowsBlocksThatAreNotClosed) {
    check_followed("gen",
                   {
                       {"2 0\nsto-3g\n4 0\nsto-3g\n****", 0, "1 0\nsto-3g\n3 0\nsto-3g\n****"},
                       {"2 0\nS 1 1.0\n3 0\n++++\n4 0\nsto-3g\n****", 0, "1 0\nS 1 1.0\n3 0\n++++\n3 0\nsto-3g\n****"},
                       {"@ours.gbs\n4 0\nsto-3g\n****", 0, "@ours.gbs\n3 0\nsto-3g\n****"},
                   });
}

TEST(Renumbering, TakesTheBlanksAroundNumbersThatGrow) {
    std::string atoms;
    for (int i = 1; i <= 11; ++i) {
        atoms += "H 0 0 " + std::to_string(i) + "\n";
    }
    const auto job = [&](const std::string& route, const std::string& section) {
        return "# hf/sto-3g " + route + "\n\nt\n\n0 1\n" + atoms + "\n" + section + "\n\n";
    };
    struct Row {
        const char* route;
        const char* section;
        const char* wanted;  // when atom 1 goes to the end
    };
    const Row rows[] = {
        {"opt=modredundant", "B  1  2 F", "B 11  1 F"},  {"opt=modredundant", "B 1 2 F", "B 11 1 F"},
        {"opt=modredundant", "B 2 1 F", "B 1 11 F"},     {"opt=modredundant", "B 2 1  F", "B 1 11 F"},
        {"opt=modredundant", "B 10 11 F", "B  9 10 F"},  {"opt=modredundant", "1  11  B", "11 10  B"},
        {"opt=modredundant", "11 1", "10 11"},           {"nmr=(spinspin,readatoms)", "1  11  3", "11 10  2"},
        {"nmr=(spinspin,readatoms)", "11 1", "10 11"},   {"nmr=(spinspin,readatoms)", "3-4,1,10", "2-3,11,9"},
        {"nmr=(spinspin,readatoms)", "1-2 3", "1,11 2"}, {"nmr=(spinspin,readatoms)", "1-2   3", "1,11  2"},
        {"opt=readopt", "atoms=1  2", "atoms=11  1"},    {"opt=readopt", "atoms=11  block=1", "atoms=10  block=1"},
    };
    for (const Row& row : rows) {
        const std::string moved = replaced(job(row.route, row.wanted), "H 0 0 1\n", "");
        EXPECT_EQ(edited(job(row.route, row.section), [](GJFEditor& e) { e.move_atom(0, 10); }),
                  replaced(moved, "H 0 0 11\n", "H 0 0 11\nH 0 0 1\n"))
            << row.section;
    }
}

TEST(Renumbering, RefusesLeftOverTextThatMayNameAtoms) {
    check_followed("", {
                           {"D 0 5 1.0 2.5 x4 6-31G(d)", 0, "D 0 5 1.0 2.5 x4 6-31G(d)"},
                           {"! 1 and 2", 0, "! 1 and 2"},
                           {"1e2 99999999999999999999 -1 4294967297", 0, "1e2 99999999999999999999 -1 4294967297"},
                           {"@file", 0, "@file"},
                       });
    const char* const reason = "it may name atoms by number";
    check_refused("", "Unknown",
                  {
                      {"4", 0, reason},
                      {"B 1 2 F", 3, reason},
                      {"R(1,9)", 0, reason},
                      {"atoms=3-9", 0, reason},
                      {"text\n$nbo 2 $end", 0, reason},
                      {"1 2 1.0\n2", 0, reason},
                  });
    // The other numbers stay what they were when an atom is only added behind them.
    const std::string text = job_with("", "B 1 2 F");
    EXPECT_EQ(edited(text, [](GJFEditor& e) { e.add_atom(e.get_data().geom.atoms[0]); }),
              replaced(text, "O 1 0 0\n", "O 1 0 0\nC 0 0 0\n"));
}

TEST(Renumbering, RefusesWhatIncludesAFileThatMayNameAtoms) {
    const char* const reason = "it includes a file";
    check_refused("opt=modredundant", "Modifications to coordinates", {{"B 1 2 F\n@more", 3, reason}});
    check_refused("opt=readopt", "Alterations to frozen atoms", {{"@list", 0, reason}});
    check_refused("pop=nboread", "NBO input", {{"@nbo", 0, reason}});
    check_followed("gen", {{"@basis.gbs", 0, "@basis.gbs"}});
    check_followed("charge", {{"@charges", 0, "@charges"}});
}

}  // namespace
}  // namespace quor::input::gaussian::test
