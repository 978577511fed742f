// Atom numbers beyond 32 bits are not renumbered as others: a section that names one cannot follow a change of the atoms.
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

constexpr const char* three_atoms = "\n\nt\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\nHe 0.0 0.0 3.0\n\n";

struct Refused {
    const char* route;
    const char* section;
    const char* name;
    const char* number;
};

TEST(LargeAtomNumbers, AreNoAtomsOfTheMolecule) {
    const std::vector<Refused> rows = {
        {"# hf/sto-3g opt=modredundant", "B 1 4294967298 F\n\n", "Modifications to coordinates", "4294967298"},
        {"# hf/gen", "1 4294967298 0\nSTO-3G\n****\n\n", "Basis set specification", "4294967298"},
        {"# hf/gen", "1-4294967298 0\nSTO-3G\n****\n\n", "Basis set specification", "1-4294967298"},
        {"# hf/sto-3g nmr=(spinspin,readatoms)", "1,4294967298\n\n", "Atoms list for spin-spin coupling constants",
         "4294967298"},
    };
    for (const Refused& row : rows) {
        const std::string text = std::string(row.route) + three_atoms + row.section;
        GJFDocument document(text);
        document.job(0).remove_atom(0);
        try {
            document.to_text();
            ADD_FAILURE() << text;
        } catch (const GJFParseException& error) {
            EXPECT_EQ(std::string(error.what()), "GJF Parse Error: The section '" + std::string(row.name) +
                                                     "' cannot follow the change of atoms: '" + row.number +
                                                     "' is no atom of the molecule");
        }
        EXPECT_EQ(document.original_text(), text);
    }
}

TEST(LargeAtomNumbers, OfRowsAreRefused) {
    const std::string rows = std::string("# hf/sto-3g geom=connectivity") + three_atoms;
    try {
        GJFDocument document(rows + "1\n2 3 1.0\n3\n4294967298\n\n");
        ADD_FAILURE() << "a row for an atom that is not there was read";
    } catch (const GJFParseException& error) {
        EXPECT_STREQ(
            error.what(),
            "GJF Parse Error: Job 1: GJF Parse Error: 4294967298 references atom index outside the geometry atom count");
    }
}

TEST(LargeAtomNumbers, OfLinkAtomsStay) {
    GJFDocument layered(
        "# oniom(hf/sto-3g:uff)\n\nt\n\n0 1 0 1 0 1\nO 0.0 0.0 9.0 H\nC 0.0 0.0 0.0 H\nC 0.0 0.0 1.5 L H 4294967298\n\n");
    layered.job(0).remove_atom(0);
    EXPECT_EQ(layered.to_text(),
              "# oniom(hf/sto-3g:uff)\n\nt\n\n0 1 0 1 0 1\nC 0.0 0.0 0.0 H\nC 0.0 0.0 1.5 L H 4294967298\n\n");
}

}  // namespace
}  // namespace quor::input::gaussian
