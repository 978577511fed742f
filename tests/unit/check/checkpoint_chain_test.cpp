// Molecules that come from the checkpoint of an earlier job of the text: charge, parity and elements are checked all the
// same.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <string>

using namespace quor::input::gaussian;

namespace {

const std::string first = "%chk=a.chk\n# hf/3-21g\n\nt\n\n0 1\nI 0.0 0.0 0.0\nH 0.0 0.0 1.61\n\n--Link1--\n";

// The findings about later jobs that are no notes, as "code:line", blanks between.
std::string told(const std::string& text) {
    std::string list;
    for (const Finding& finding : check_text(text)) {
        if (finding.severity != Severity::Note && finding.job > 1) {
            list += (list.empty() ? "" : " ") + finding.code.substr(4) + ":" + std::to_string(finding.line);
        }
    }
    return list;
}

TEST(CheckpointChain, CarriesTheMolecule) {
    const struct {
        const char* rest;
        const char* told;
    } rows[] = {
        {"%chk=a.chk\n# hf/3-21g geom=check\n\nt\n\n0 2\n\n", "M002:16"},
        {"%chk=a.chk\n# hf/3-21g geom=check\n\nt\n\n1 1\n\n", "M002:16"},
        {"%chk=a\n# hf/3-21g geom=check\n\nt\n\n0 2\n\n", "M002:16"},
        {"%oldchk=a.chk\n%chk=b.chk\n# hf/3-21g geom=check guess=read\n\nt\n\n0 0\n\n", "M002:17"},
        {"%chk=a.chk\n# hf/6-31g(d) geom=allcheck\n\n", "R013:12"},
        {"%chk=a.chk\n# hf/6-31g(d) geom=check\n\nt\n\n0 1\n\n", "R013:12"},
        {"%chk=a.chk\n# hf/gen geom=allcheck\n\nI 0\n3-21g\n****\n\n", "S007:14"},
        {"%chk=a.chk\n# hf/gen geom=allcheck\n\nI H 0\nlanl2dz\n****\n\n", "B001:14"},
        // The molecule goes on through a third job, and through another name.
        {"%chk=a.chk\n# hf/3-21g geom=allcheck\n\n--Link1--\n%oldchk=a.chk\n%chk=b\n# hf/3-21g geom=check\n\nt\n\n0 1\n\n"
         "--Link1--\n%chk=b\n# hf/3-21g geom=check\n\nt\n\n0 2\n\n",
         "M002:29"},
        // Silent: right, or the molecule is another one, or not known.
        {"%chk=a.chk\n# hf/3-21g geom=check\n\nt\n\n0 3\n\n", ""},
        {"%chk=a.chk\n# hf/3-21g geom=check\n\nt\n\n1 2\n\n", ""},
        {"%chk=a.chk\n# hf/def2svp geom=allcheck\n\n", ""},
        {"%chk=a.chk\n# hf/6-31g(d) geom=allcheck extrabasis\n\nI 0\n3-21g\n****\n\n", ""},
        {"%chk=a.chk\n# hf/gen geom=allcheck\n\nI H 0\n3-21g\n****\n\n", ""},
        {"%chk=a.chk\n# hf/3-21g massage geom=check\n\nt\n\n0 2\n\n2 nuc 2.0\n\n", ""},
        {"%oldchk=a.chk\n# uff geom=check\n\nt\n\n0 2\n\n", ""},
        {"%chk=a.chk\n# hf/3-21g guess=read\n\nt\n\n0 2\nH 0.0 0.0 0.0\n\n", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(told(first + row.rest), row.told) << row.rest;
    }
    // Layers and their elements.
    const std::string layers =
        "%chk=a.chk\n# oniom(hf/3-21g:pm6)\n\nt\n\n0 1 0 1 0 1\nI 0.0 0.0 0.0 H\nH 0.0 0.0 1.61 H\n"
        "He 0.0 5.0 0.0 L\n\n--Link1--\n%chk=a.chk\n";
    for (const auto& [rest, expected] : {
             std::pair("# oniom(hf/6-31g(d):pm6) geom=allcheck\n\n", "R013:13"),
             std::pair("# oniom(hf/3-21g:hf/6-31g(d)) geom=allcheck\n\n", "R013:13"),
             std::pair("# oniom(hf/3-21g:pm6:uff) geom=allcheck\n\n", "M012:13"),
             std::pair("# oniom(hf/3-21g:pm6) geom=check\n\nt\n\n1 1 0 1 0 1\n\n", "M002:17"),
             std::pair("# oniom(hf/3-21g:pm6) geom=check\n\nt\n\n0 1 1 1 0 1\n\n", "M002:17"),
             std::pair("# oniom(hf/3-21g:pm6) geom=check\n\nt\n\n0 1 0 1 0 1\n\n", ""),
             std::pair("# oniom(hf/3-21g:pm6) geom=allcheck\n\n", ""),
             std::pair("# oniom(hf/def2svp:hf/3-21g) geom=check\n\nt\n\n0 1\n\n", ""),
             std::pair("# oniom(hf/gen:pm6) geom=allcheck\n\nI H 0\n3-21g\n****\n\n", ""),
             std::pair("# oniom(hf/6-31g(d):pm6) extrabasis geom=allcheck\n\nI 0\n3-21g\n****\n\n", ""),
             std::pair("# oniom(uff:hf/3-21g) geom=check\n\nt\n\n0 3\n\n", ""),
         }) {
        EXPECT_EQ(told(layers + rest), expected) << rest;
    }
    EXPECT_EQ(told(first + "%chk=a.chk\n# oniom(hf/3-21g:pm6) geom=allcheck\n\n"), "M012:12");
    // A checkpoint that another job writes, or none of the text.
    EXPECT_EQ(told(first + "%oldchk=c.chk\n# hf/3-21g geom=check\n\nt\n\n0 2\n\n"), "L009:11");
    EXPECT_EQ(told(first + "%chk=a.chk\n# hf/3-21g\n\nt\n\n0 2\nH 0.0 0.0 0.0\n\n--Link1--\n%chk=a.chk\n# hf/3-21g "
                           "geom=check\n\nt\n\n0 2\n\n"),
              "L007:11");
}

// A first job with this route, and a second one that begins with its Link 0 lines and route.
std::string two_jobs(const std::string& route, const std::string& second) {
    return "%chk=a.chk\n# " + route + "\n\nt\n\n0 1\nH\nH 1 r\n\nr=0.74\n\n--Link1--\n" + second + "\n\n";
}

// Charges and multiplicities of the models: link atoms stand in the lines of the first job.
TEST(CheckpointChain, CarriesLinkAtoms) {
    const auto ethane = [](const std::string& route, const std::string& pairs, const std::string& link) {
        return "%chk=a.chk\n# " + route + "\n\nt\n\n" + pairs +
               "\nC 0.0 0.0 0.0 H\nH -0.39 1.02 0.0 H\nH -0.39 -0.51 -0.89 H\nH -0.39 -0.51 0.89 H\nC 1.53 0.0 0.0 L" +
               link + "\nH 1.92 -1.02 0.0 L\nH 1.92 0.51 0.89 L\nH 1.92 0.51 -0.89 L\n\n--Link1--\n%chk=a.chk\n# ";
    };
    const std::string linked = ethane("oniom(hf/3-21g:pm6)", "0 1 0 1 0 1", " H 1");
    const std::string by_force_field = ethane("oniom(hf/3-21g:uff)", "0 2 0 1 0 1", " H 1");
    const std::string all_check = "oniom(hf/3-21g:pm6) geom=allcheck\n\n";
    const auto check = [](const std::string& pairs) { return "oniom(hf/3-21g:pm6) geom=check\n\nt\n\n" + pairs + "\n\n"; };
    const struct {
        std::string text;
        const char* told;
    } rows[] = {
        {linked + check("0 1 0 2 0 1"), "M002:22"},
        {linked + check("0 1 0 1 0 2"), "M002:22"},
        {linked + check("0 1 1 1 0 1"), "M002:22"},
        {linked + check("0 1 1 1 1 1"), "M002:22 M002:22"},
        {linked + check("0 2 0 1 0 1"), "M002:22"},
        {linked + check("0 1 0 1 0 1 0 2"), "M002:22"},
        {linked + "oniom(hf/3-21g:uff) geom=(check,connectivity)\n\nt\n\n0 1 0 2 0 1\n\n1 5 1.0\n2\n3\n4\n5\n6\n7\n8\n\n",
         "M002:22"},
        // Through a third job, and through one that has no layers.
        {linked + all_check + "--Link1--\n%chk=a.chk\n# " + check("0 1 0 2 0 1"), "M002:26"},
        {linked + "hf/3-21g geom=check\n\nt\n\n0 1\n\n--Link1--\n%chk=a.chk\n# " + check("0 1 0 2 0 1"), "M002:30"},
        {ethane("hf/3-21g", "0 1", " H 1") + check("0 1 0 2 0 1"), "M002:22"},
        // What a force field did not look at is told where a method does, once.
        {by_force_field + all_check, "M002:18"},
        {by_force_field + all_check + "--Link1--\n%chk=a.chk\n# " + all_check, "M002:18"},
        {ethane("uff", "0 2", "") + "hf/3-21g geom=allcheck\n\n", "M002:18"},
        // Silent: right, told before, not known what closes the bond, of other models, or of another molecule.
        {linked + check("0 1 0 1 0 1"), ""},
        {linked + check("0 1 1 2 1 2"), ""},
        {linked + all_check, ""},
        {linked + "oniom(hf/3-21g:uff) geom=check\n\nt\n\n0 1 0 1 0 2\n\n", ""},
        {linked + "uff geom=check\n\nt\n\n0 2\n\n", ""},
        {ethane("hf/3-21g", "0 2", "") + "hf/3-21g geom=allcheck\n\n", ""},
        {ethane("oniom(hf/3-21g:pm6)", "0 1 0 2 0 1", " H 1") + all_check, ""},
        {ethane("oniom(hf/3-21g:pm6)", "0 1", "") + check("0 1 0 2 0 2"), ""},
        {ethane("oniom(hf/3-21g:pm6)", "0 1", " H") + check("0 1 0 2 0 2"), ""},
        {ethane("hf/3-21g", "0 1", "") + check("0 1 0 2 0 2"), ""},
        {by_force_field + "hf/3-21g geom=allcheck\n\n", ""},
        {by_force_field + "oniom(hf/3-21g:uff) geom=allcheck\n\n", ""},
        {linked + "oniom(hf/3-21g:pm6) massage geom=check\n\nt\n\n0 1 0 2 0 1\n\n2 nuc 2.0\n\n", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(told(row.text), row.told) << row.text;
    }
}

TEST(CheckpointChain, KnowsWhatIsInIt) {
    const std::string go_on = "%chk=a.chk\n# hf/sto-3g geom=allcheck ";
    const struct {
        const char* first;
        std::string second;
        const char* told;
    } rows[] = {
        {"hf/sto-3g", go_on + "opt=readfc", "L011:14"},
        {"hf/sto-3g", go_on + "opt=rcfc", "L011:14"},
        {"hf/sto-3g td", go_on + "irc=(rcfc,maxpoints=9)", "L011:14"},
        {"hf/sto-3g opt", go_on + "irc=rcfc", "L011:14"},
        {"hf/sto-3g opt", go_on + "freq=readfc", "L011:14"},
        {"uff", go_on + "guess=read", "L011:14"},
        {"uff opt", "%chk=a.chk\n# hf chkbasis geom=allcheck", "L011:14"},
        {"hf/sto-3g opt", "%oldchk=a.chk\n%chk=b.chk\n# hf/sto-3g geom=allcheck freq=readfc", "L011:15"},
        // What is there, or may be: in a checkpoint that went through other jobs, or came from one that is not in the file.
        {"hf/sto-3g opt", go_on + "opt=readfc", ""},
        {"hf/sto-3g freq", go_on + "opt=readfc", ""},
        {"hf/sto-3g freq", go_on + "irc=rcfc", ""},
        {"hf/sto-3g opt=calcall", go_on + "freq=readfc", ""},
        {"hf/sto-3g freq", go_on + "guess=read\n\n--Link1--\n" + go_on + "irc=rcfc", ""},
        {"hf/sto-3g guess=read", go_on + "irc=rcfc", ""},
        {"cbs-qb3", go_on + "freq=readfc", ""},
        {"pm6", go_on + "guess=read", ""},
        {"oniom(hf/sto-3g:uff)", go_on + "guess=read", ""},
        {"uff", go_on, ""},
        // Levels.
        {"hf/sto-3g opt", "%chk=a.chk\n# hf/3-21g geom=allcheck freq", "L012:14"},
        {"pm6 opt", go_on + "freq", "L012:14"},
        {"b3lyp/sto-3g opt", go_on + "freq=noraman", "L012:14"},
        {"hf/sto-3g opt", go_on + "\n\n--Link1--\n%chk=a.chk\n# mp2/sto-3g geom=allcheck freq", "L012:18"},
        {"hf/sto-3g opt", go_on + "freq", ""},
        {"rhf/sto-3g opt", "%chk=a.chk\n# uhf/sto-3g geom=allcheck freq", ""},
        {"hf/sto-3g opt", "%chk=a.chk\n# hf chkbasis geom=allcheck freq", ""},
        {"hf/gen opt", go_on + "freq", ""},
        {"hf/sto-3g opt", "%chk=a.chk\n# mp2/sto-3g geom=allcheck opt freq", ""},
        {"hf/sto-3g", "%chk=a.chk\n# mp2/sto-3g geom=allcheck freq", ""},
        {"hf/sto-3g opt", "%chk=a.chk\n# mp2/sto-3g geom=allcheck", ""},
        {"hf/sto-3g opt freq", "%chk=a.chk\n# mp2/sto-3g geom=allcheck freq=readfc", ""},
        {"hf/sto-3g opt", "%chk=a.chk\n# mp2/sto-3g guess=read freq\n\nt\n\n0 1\nHe 0.0 0.0 0.0", ""},
        // Names of the Z-matrix.
        {"hf/sto-3g", "%chk=a.chk\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nx=0.8", "M020:20"},
        {"hf/sto-3g", "%chk=a.chk\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nr 0.8\nr2 0.8 F", "M020:21"},
        {"hf/sto-3g", "%chk=a.chk\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nr 0.8 A", ""},
        {"hf/sto-3g", "%chk=a.chk\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nR=0.8", ""},
        {"hf/sto-3g", "%chk=a.chk\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nB 1 2 0.8", ""},
        {"hf/sto-3g", "%oldchk=c.chk\n# hf/sto-3g geom=modify\n\nt\n\n0 1\n\nx=0.8", "L009:13"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(told(two_jobs(row.first, row.second)), row.told) << row.first << "\n" << row.second;
    }
}

}  // namespace
