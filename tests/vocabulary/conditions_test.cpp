// The words by which a job is found to need further input: each spelling that Gaussian takes must be found, and no other
// word.
#include "vocabulary_tables.hpp"

namespace quor::input::gaussian {
namespace {

TEST(Conditions, HoldForEverySpellingOfAnOption) {
    const std::vector<TableRow> expected = {
        {"geom", "connect", "connectivity"},
        {"geom", "rdopt", "readoptimize"},
        {"geom", "readopt", "rdoptimize"},
        {"geom", "rharmonic", "readharmonic"},
        {"geom", "chk", "check"},
        {"geom", "checkpoint", "check"},
        {"geom", "allchk", "allcheck"},
        {"opt", "modred", "modredundant"},
        {"opt", "modredun", "modredundant"},
        {"opt", "modr", "modredun"},
        {"opt", "rdopt", "readopt"},
        {"opt", "rdoptimize", "readoptimize"},
        {"freq", "readiso", "readisotopes"},
        {"irc", "readiso", "readisotopes"},
        {"g4", "readiso", "readisotopes"},
        {"freq", "selfreq", "selectnormalmodes"},
        {"freq", "readhinderedrotor", "readhindered"},
        {"freq", "selanharmonicmodes", "selectanharmonicmodes"},
        {"freq", "readanharm", "readanharmonic"},
        {"cphf", "readfreq", "rdfreq"},
        {"scrf", "selfconsistent", "externaliteration"},
        {"scrf", "ss", "externaliteration"},
        {"pseudo", "read", "cards"},
        {"casscf", "spin", "spinorbit"},
        {"cas", "stateav", "stateaverage"},
        {"mp2", "rw", "readwindow"},
        {"nmr", "csgt", "cgst"},
        {"output", "psi", "wfn"},
        {"output", "matrix", "matrixelement"},
        {"output", "rawmatrix", "raw"},
        {"output", "rawmatrixelement", "raw"},
        {"pop", "esp", "mk"},
        {"pop", "merzkollman", "mk"},
        {"guess", "lowsym", "lowsymm"},
        {"pm6", "cards", "input"},
    };
    for (const TableRow& row : expected) {
        EXPECT_TRUE(vocabulary().options_equivalent(row[0], row[1], row[2])) << row[0] << ": " << row[1] << ' ' << row[2];
    }
}

TEST(Conditions, HoldForNoOtherOption) {
    const std::vector<TableRow> others = {
        {"geom", "modconnect", "connect"},
        {"geom", "genconnect", "connect"},
        {"geom", "modify", "modredundant"},
        {"opt", "gic", "addgic"},
        {"opt", "readallgic", "addgic"},
        {"opt", "qst2", "qst3"},
        {"opt", "readfc", "readopt"},
        {"freq", "readfc", "readfcht"},
        {"freq", "fcht", "readfcht"},
        {"freq", "anharmonic", "readanharm"},
        {"freq", "raman", "roa"},
        {"field", "oldread", "read"},
        {"scrf", "restart", "read"},
        {"irc", "readisotopes", "read"},
        {"irc", "rcfc", "read"},
        {"irc", "restart", "report"},
        {"guess", "always", "alter"},
        {"guess", "read", "cards"},
        {"guess", "indo", "input"},
        {"pop", "mkuff", "mk"},
        {"pop", "nbo", "nboread"},
        {"pop", "nbo6", "nbo6read"},
        {"pop", "nbo6del", "nbo6read"},
        {"output", "wfx", "wfn"},
        {"output", "matrix", "raw"},
        {"prop", "potential", "opt"},
        {"nmr", "readfc", "readatoms"},
        {"ept", "readwindow", "readorbitals"},
        {"external", "iounf", "readinput"},
        {"casscf", "stateguess", "stateaverage"},
        {"scrf", "TRUE", "read"},
        {"geom", "TRUE", "connectivity"},
        {"guess", "TRUE", "alter"},
    };
    for (const TableRow& row : others) {
        EXPECT_FALSE(vocabulary().options_equivalent(row[0], row[1], row[2])) << row[0] << ": " << row[1] << ' ' << row[2];
    }
}

// Each rule must ask for one spelling at least that is the preferred one; others stand beside it where no vocabulary is.
TEST(Conditions, AskForPreferredSpellings) {
    const std::vector<TableRow> asked = {
        {"geom", "connectivity"},
        {"geom", "modconnectivity"},
        {"geom", "check"},
        {"geom", "allcheck"},
        {"geom", "modify"},
        {"geom", "modela"},
        {"geom", "modelb"},
        {"geom", "readopt"},
        {"geom", "readharmonic"},
        {"opt", "readopt"},
        {"opt", "modredundant"},
        {"opt", "addgic"},
        {"opt", "qst2"},
        {"opt", "qst3"},
        {"scrf", "read"},
        {"scrf", "externaliteration"},
        {"scrf", "oniompcm"},
        {"irc", "report"},
        {"irc", "read"},
        {"pseudo", "read"},
        {"casscf", "stateaverage"},
        {"casscf", "spin"},
        {"external", "readinput"},
        {"cphf", "rdfreq"},
        {"freq", "roa"},
        {"freq", "readisotopes"},
        {"freq", "selectnormalmodes"},
        {"freq", "readhinderedrotor"},
        {"freq", "selectanharmonicmodes"},
        {"freq", "readanharm"},
        {"freq", "readfcht"},
        {"field", "read"},
        {"guess", "input"},
        {"guess", "lowsymm"},
        {"guess", "cards"},
        {"guess", "alter"},
        {"guess", "permute"},
        {"ept", "readorbitals"},
        {"ept", "rw"},
        {"mp2", "rw"},
        {"td", "rw"},
        {"nmr", "readatoms"},
        {"nmr", "csgt"},
        {"pop", "readradii"},
        {"pop", "readatradii"},
        {"pop", "mk"},
        {"pop", "nboread"},
        {"pop", "nbo6read"},
        {"prop", "read"},
        {"prop", "opt"},
        {"output", "pickett"},
        {"output", "wfn"},
        {"output", "wfx"},
        {"output", "matrixelement"},
        {"output", "raw"},
    };
    for (const TableRow& row : asked) {
        EXPECT_EQ(vocabulary().normalize_option(row[0], row[1]), row[1]) << row[0];
    }
}

TEST(Conditions, NameKeywordsOfTheVocabulary) {
    for (const char* const word :
         {"geom", "opt",   "external", "extralinks", "cphf",    "freq",  "charge", "bomd",
          "admp", "scrf",  "irc",      "extrabasis", "massage", "field", "pseudo", "extradensitybasis",
          "dftb", "guess", "gvb",      "casscf",     "cas",     "ept",   "nmr",    "pop",
          "iop",  "prop",  "output"}) {
        EXPECT_TRUE(vocabulary().knows_keyword_exact(word)) << word;
    }
}

TEST(Conditions, NameWordsThatAbbreviateNoKeyword) {
    for (const char* const word :
         {"modconnect", "readisotopes", "hardfirst", "softfirst", "softonly", "modify", "readvelocity", "readmwvelocity",
          "input", "both", "mopacexternal", "basis", "gen", "genecp", "readwindow", "readatradii"}) {
        EXPECT_TRUE(vocabulary().keyword_completions(word).empty()) << word;
        EXPECT_TRUE(vocabulary().keywords_equivalent(word, word)) << word;
    }
}

TEST(Conditions, FindTheOptionsOfEveryForceField) {
    for (const char* const keyword : {"amber", "dreiding", "uff"}) {
        for (const char* const option : {"hardfirst", "softfirst", "softonly", "modify"}) {
            EXPECT_TRUE(vocabulary().knows_option_exact(keyword, option)) << keyword << '=' << option;
        }
    }
}

}  // namespace
}  // namespace quor::input::gaussian
