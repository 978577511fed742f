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
    // A checkpoint that another job writes, or none of the text.
    EXPECT_EQ(told(first + "%oldchk=c.chk\n# hf/3-21g geom=check\n\nt\n\n0 2\n\n"), "L009:11");
    EXPECT_EQ(told(first + "%chk=a.chk\n# hf/3-21g\n\nt\n\n0 2\nH 0.0 0.0 0.0\n\n--Link1--\n%chk=a.chk\n# hf/3-21g "
                           "geom=check\n\nt\n\n0 2\n\n"),
              "L007:11");
}

}  // namespace
