// The options that Gaussian's public lists pair with a keyword, and those that its own jobs use: each is known, so that no
// job is told of a word that is right.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "../../support/files.hpp"

using namespace quor::input::gaussian;

namespace {

struct Pair {
    std::string keyword;
    std::string option;
};

// Each line of the list is a keyword and its options.
std::vector<Pair> documented() {
    std::vector<Pair> pairs;
    std::istringstream lines(quor::test::bytes_of(QUOR_GJF_SOURCE_DIR "/tests/unit/check/documented_options.txt"));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string keyword;
        words >> keyword;
        for (std::string option; words >> option;) {
            pairs.push_back({keyword, option});
        }
    }
    return pairs;
}

// Pairs of the list that are no words of routes, and why.
const std::map<std::string, std::string>& misprints() {
    static const std::map<std::string, std::string> reasons = {
        {"cbs=noopt", "cbs is the family; its methods have the options"},
        {"cbs=sp", "cbs is the family; its methods have the options"},
        {"cbs=startfreq", "cbs is the family; its methods have the options"},
    };
    return reasons;
}

// The pairs that something is said of, of one text of jobs.
std::map<std::string, std::string> told_of(const std::vector<Pair>& pairs) {
    std::string text;
    for (const Pair& pair : pairs) {
        text += (text.empty() ? "# " : "--Link1--\n# ") + pair.keyword + '=' + pair.option +
                " hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";
    }
    std::map<std::string, std::string> told;
    for (const Finding& finding : check_text(text)) {
        const bool is_of_words = finding.code.starts_with("GJF-W") || finding.code == "GJF-R001";
        if (is_of_words && finding.severity != Severity::Note) {
            const Pair& pair = pairs.at(finding.job - 1);
            told.emplace(pair.keyword + '=' + pair.option, finding.message);
        }
    }
    return told;
}

TEST(DocumentedOptions, AreKnownOrListedAsMisprints) {
    const std::vector<Pair> pairs = documented();
    EXPECT_GE(pairs.size(), 1500U);
    std::map<std::string, std::string> told = told_of(pairs);
    for (const auto& [misprint, reason] : misprints()) {
        EXPECT_EQ(told.erase(misprint), 1U) << misprint << " is known: " << reason;
    }
    for (const auto& [pair, message] : told) {
        ADD_FAILURE() << pair << ": " << message;
    }
}

TEST(DocumentedOptions, AreNotKnownWhenTheyAreMisspelt) {
    const std::vector<Pair> wrong = {
        {"opt", "calcfx"},    {"scf", "maxcyclez"}, {"freq", "ramann"},     {"geom", "alcheck"},   {"guess", "mixx"},
        {"pop", "nboread9"},  {"int", "ultrafyne"}, {"td", "nstatez"},      {"irc", "maxpointes"}, {"polar", "optrott"},
        {"nmr", "spinspinn"}, {"scrf", "sovent"},   {"stable", "optimise"}, {"density", "currenr"}};
    const std::map<std::string, std::string> told = told_of(wrong);
    for (const Pair& pair : wrong) {
        EXPECT_EQ(told.count(pair.keyword + '=' + pair.option), 1U) << pair.keyword << '=' << pair.option;
    }
}

}  // namespace
