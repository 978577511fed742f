// Names near a misspelt one: which they are, how hints name them, and when a slip is certain.
#include <gjf/core/check/near_names.hpp>

#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "found_places.hpp"

using namespace quor::input::gaussian;
using namespace quor::test;

namespace {

TEST(Checker, HintsAtNearNames) {
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"# hf/sto-3g opt=calfc", "GJF-R001", "did you mean calcfc?"},
        {"# m06-2x/sto-3g", "GJF-W005", "did you mean m062x?"},
        {"# hf/def2-tzvp", "GJF-W005", "did you mean def2tzvp?"},
        {"# bl3yp/sto-3g", "GJF-W005", "did you mean b3lyp?"},
        {"# hf/sto-3g frq", "GJF-W005", "did you mean freq?"},
        {"%nprocshard=2\n# hf/sto-3g", "GJF-L001", "did you mean nprocshared?"},
        {"# hf/sto-3g scrf=(solvent=acetonitril3)", "GJF-R012", "did you mean acetonitrile?"},
        {"# hf/sto-3g qwertzuiop", "GJF-W005", ""},
    };
    for (const auto& [head, code, hint] : cases) {
        const std::vector<Finding> findings = check_text(head + helium);
        ASSERT_NE(finding_of(findings, code), nullptr) << head;
        EXPECT_EQ(finding_of(findings, code)->hint, hint) << head;
    }
}

// A name with a letter more in front or behind may be one that only the vocabulary lacks.
TEST(Checker, IsSureOfWordsThatAreNoneButForALetterMore) {
    const std::tuple<const char*, const char*, Severity> cases[] = {
        {"# hf/sto-3g opt(maxcyle=9)", "GJF-R001", Severity::Error},     // missing
        {"# hf/sto-3g opt(maxcycls=9)", "GJF-R001", Severity::Error},    // missing
        {"# hf/sto-3g opt(MaxCycless=9)", "GJF-R001", Severity::Error},  // doubled
        {"# hf/sto-3g opt(maxcylces=9)", "GJF-R001", Severity::Error},   // swapped
        {"# hf/sto-3g opt(maxcicles=9)", "GJF-R001", Severity::Error},   // wrong
        {"# hf/sto-3g opt(calfc)", "GJF-R001", Severity::Error},         // missing, in a name of six
        {"# hf/sto-3g opt(noeigntest)", "GJF-R001", Severity::Error},
        {"# hf/sto-3g geom=conectivity", "GJF-R001", Severity::Error},
        {"# m06-2x/sto-3g", "GJF-W005", Severity::Error},  // a dash
        {"# wB97X-D/sto-3g", "GJF-W005", Severity::Error},
        {"# hf/def2-tzvp", "GJF-W005", Severity::Error},
        {"%nprocshard=2\n# hf/sto-3g", "GJF-L001", Severity::Error},
        {"# hf/sto-3g scrf=(solvent=acetonitrille)", "GJF-R012", Severity::Error},
        {"# hf/sto-3g frq", "GJF-W005", Severity::Error},
        {"# hf/sto-3g optt", "GJF-W005", Severity::Error},  // doubled
        {"# hf/sto-3g opts", "GJF-W005", Severity::Warning},
        {"# hf/sto-3g (opts)", "GJF-W005", Severity::Warning},
        {"# b3lpy/sto-3g", "GJF-W005", Severity::Error},  // must be a method
        {"# bl3yp/sto-3g", "GJF-W005", Severity::Error},
        {"# b3yp/sto-3g", "GJF-W005", Severity::Error},
        {"# oniom(b3lpy/sto-3g:uff)", "GJF-W005", Severity::Error},
        {"# sto-3g b3lpy", "GJF-W005", Severity::Error},
        {"# b3lyq/sto-3g", "GJF-W005", Severity::Error},   // another last letter
        {"# b3lyp*/sto-3g", "GJF-W005", Severity::Error},  // no letter
        {"# ab3lyp/sto-3g", "GJF-W005", Severity::Warning},
        {"# b9lyp/sto-3g", "GJF-W005", Severity::Error},                   // another digit
        {"# hf/sto-3g opt(xmaxcycles=9)", "GJF-R001", Severity::Warning},  // added in front
        {"# hf/sto-3g opt(maxcyclesx=9)", "GJF-R001", Severity::Warning},  // added behind
        {"# hf/sto-3g opt(naxcycles=9)", "GJF-R001", Severity::Error},     // another first letter
        {"# hf/sto-3g opt(mxcyclse=9)", "GJF-R001", Severity::Error},      // two slips
        {"# hf/sto-3g opt(maxcyxles=9)", "GJF-R001", Severity::Error},
        {"# hf/sto-3g opt(maxcycxles=9)", "GJF-R001", Severity::Error},  // put in
        {"# hf/def2tzvq", "GJF-W005", Severity::Warning},                // another last letter
        {"# hf/6-331g", "GJF-W005", Severity::Error},                    // a digit doubled
        {"# hf/6-13g", "GJF-W005", Severity::Error},                     // swapped
        {"# hf/6-41g", "GJF-W005", Severity::Error},                     // another digit
        {"# hf/6-311+g(dp)", "GJF-W005", Severity::Error},               // no comma
        {"# hf/6-31g d", "GJF-W001", Severity::Error},                   // begins many words
        {"# td=(n=5)/sto-3g hf", "GJF-W004", Severity::Error},
        {"# hf/6-31", "GJF-W003", Severity::Warning},
        {"# hf/sto-3g scrf=(solvent=watr)", "GJF-R012", Severity::Error},
        {"# hf/sto-3g scrf=(solvent=wax)", "GJF-R012", Severity::Warning},
        {"# hf/sto-3g opt=(maxcycles100)", "GJF-R001", Severity::Error},  // a value without its sign
        {"# hf/sto-3g opt=(foo100)", "GJF-R001", Severity::Error},
        {"# hf/sto-3g qwertzuiop", "GJF-W005", Severity::Error},
        {"# hf/sto-3g opt=qwertzuiop", "GJF-R001", Severity::Error},
        {"# hf/sto-3g td=(50/50)", "GJF-R001", Severity::Error},
        {"# hf/sto-3g tight", "GJF-W005", Severity::Error},
        {"# oniom(hf/sto-3g:uff)=embedchrg", "GJF-R001", Severity::Error},
        {"%chkx=a\n# hf/sto-3g", "GJF-L001", Severity::Warning},
        {"%%chk=a\n# hf/sto-3g", "GJF-L001", Severity::Error},
        {"%scratch=a\n# hf/sto-3g", "GJF-L001", Severity::Error},
    };
    for (const auto& [head, code, severity] : cases) {
        const std::vector<Finding> findings = check_text(head + helium);
        ASSERT_NE(finding_of(findings, code), nullptr) << head;
        EXPECT_EQ(finding_of(findings, code)->severity, severity) << head;
    }
}

TEST(NearNames, AreAFewLettersAway) {
    const std::vector<std::string> names = {"calcfc", "calcall", "readfc", "ts", "def2tzvp", "b3lyp", "rb3lyp", "blyp"};
    const std::pair<std::string, std::string> cases[] = {
        {"calfc", "did you mean calcfc?"},
        {"clacfc", "did you mean calcfc?"},
        {"calcfcx", "did you mean calcfc?"},
        {"bl3yp", "did you mean b3lyp?"},  // letters that changed places before one too many
        {"b3lp", "did you mean b3lyp?"},
        {"lbyp", "did you mean blyp?"},
        {"def2-tzvp", "did you mean def2tzvp?"},
        {"xyz", ""},
        {"t", ""},
        {"zzzzzzzz", ""},
        {std::string(100, 'a'), ""},
    };
    for (const auto& [word, hint] : cases) {
        EXPECT_EQ(did_you_mean(near_names(word, names)), hint) << word;
    }
}

TEST(NearNames, AreMisspeltByOneSlip) {
    const std::tuple<std::string, std::string, bool> cases[] = {
        {"calfc", "calcfc", true},
        {"bl3yp", "b3lyp", false},
        {"def2-tzvp", "def2tzvp", true},
        {"utlrafine", "ultrafine", true},
        {"iterative", "iterate", false},
        {"addredundant", "modredundant", false},
        {"efield", "field", false},
        {"maxcyle", "maxcyc", false},
        {"maxcyle", "maxcycles", true},
        {"maxxcy", "maxcyc", false},
        {"modreedund", "modredundant", true},
        {"calcffc", "calcfc", true},
        {"calcf", "calcfc", false},
        {"", "opt", false},
        {"optt", "opt", false},
        {"qpt", "opt", false},
    };
    for (const auto& [word, name, misspelt] : cases) {
        EXPECT_EQ(is_misspelt(word, {name}), misspelt) << word;
    }
    EXPECT_FALSE(is_misspelt("opt", {}));
}

TEST(NearNames, MayBeMadeOfAnotherByALetter) {
    const std::tuple<std::string, std::string, bool> cases[] = {
        {"rzindo", "zindo", true}, {"nprocs", "nproc", true}, {"PM66", "pm6", true},      {"nbo8", "nbo", true},
        {"optt", "opt", false},    {"zzindo", "zindo", true}, {"b3lyp*", "b3lyp", false}, {"%chk", "chk", false},
        {"zindo", "zindo", false}, {"zind", "zindo", false},  {"", "opt", false},         {"o", "", false},
        {"xxopt", "opt", false},   {"oxpt", "opt", false},
    };
    for (const auto& [word, name, is_added] : cases) {
        EXPECT_EQ(has_added_letter(word, {name}), is_added) << word;
    }
    EXPECT_FALSE(has_added_letter("opt", {}));
    EXPECT_TRUE(has_added_letter("opts", {"pots", "opt"}));
}

TEST(NearNames, AreJoinedToAQuestion) {
    EXPECT_EQ(did_you_mean({}), "");
    EXPECT_EQ(did_you_mean({"a"}), "did you mean a?");
    EXPECT_EQ(did_you_mean({"a", "b"}), "did you mean a or b?");
    EXPECT_EQ(did_you_mean({"a", "b", "c"}), "did you mean a, b or c?");
}

}  // namespace
