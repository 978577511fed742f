// What a site and a user ask of the checker: codes to silence, and limits.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "found_places.hpp"

using namespace quor::input::gaussian;
using namespace quor::test;

namespace {

TEST(Checker, IsSilencedByOptionsAndComments) {
    const std::string route = "# hf/sto-3g opt=calfc scf=vtightlnieq";
    EXPECT_EQ(places_of(route + helium, {{"gjf-r001"}}), "");
    EXPECT_EQ(places_of(route + helium, {{"GJF-R002", ""}}), "R001 1:17+5 error\nR001 1:27+11 error\n");
    EXPECT_EQ(places_of("! quor-gjf: ignore GJF-R001\n" + route + helium), "");
    EXPECT_EQ(places_of("! Quor-GJF: ignore gjf-m001, gjf-r001\n" + route + helium), "X005 1:20+8 note\n");
    EXPECT_EQ(places_of(route + " ! quor-gjf: ignore GJF-R001" + helium), "");
    EXPECT_NE(places_of("! quor-gjf: GJF-R001\n" + route + helium), "");
    EXPECT_NE(places_of("! quor-gjf: ignore\n" + route + helium), "");
    // A comment speaks for its own job.
    const std::string two = route + " ! quor-gjf: ignore GJF-R001" + helium + "--Link1--\n" + route + helium;
    EXPECT_EQ(places_of(two), "R001 9:17+5 error\nR001 9:27+11 error\n");
}

TEST(Checker, TellsOfCommentsThatSilenceNothing) {
    const std::string route = "# hf/sto-3g opt=calfc ! quor-gjf: ignore ";
    EXPECT_EQ(places_of(route + "GJF-R001" + helium), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002" + helium), "X005 1:51+8 note\n");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-R00" + helium), "X005 1:51+7 note\n");
    EXPECT_EQ(places_of(route + "GJF-R001 all" + helium), "X005 1:51+3 note\n");
    // What was not looked for cannot be missed: other codes, other files, what stands behind the end of reading.
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002" + helium, {{"GJF-M002"}}), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002" + helium, {{"GJF-X005"}}), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002 GJF-X005" + helium), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-L010 GJF-I001" + helium), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-P001 GJF-M002 GJF-T006\n\nt\n\n0 1\nHe 0.0 0.0 0x\n\n"), "");
    CheckOptions options;
    options.reports = [](const std::string& code) { return code != "GJF-R001"; };
    EXPECT_EQ(places_of("# hf/sto-3g ! quor-gjf: ignore GJF-R001 GJF-M002" + helium, options), "X005 1:41+8 note\n");
}

TEST(Checker, HoldsJobsToTheLimitsOfASite) {
    struct Case {
        const char* head;
        const char* wanted;
    };
    const std::vector<Case> cases = {
        {"%chk=a\n%mem=64GB\n# hf/sto-3g", ""},
        {"%chk=a\n%mem=65GB\n# hf/sto-3g", "X001 2:6+4 warning\n"},
        {"%chk=a\n%mem=8GW\n# hf/sto-3g", ""},
        {"%chk=a\n%mem=9GW\n# hf/sto-3g", "X001 2:6+3 warning\n"},
        {"%chk=a\n%mem=1GB\n%mem=65536MB\n# hf/sto-3g", ""},
        {"%chk=a\n%nprocshared=32\n# hf/sto-3g", ""},
        {"%chk=a\n%nproc=33\n# hf/sto-3g", "X002 2:8+2 warning\n"},
        {"%chk=a\n%cpu=0-31\n# hf/sto-3g", ""},
        {"%chk=a\n%cpu=0-30,40,41\n# hf/sto-3g", "X002 2:6+10 warning\n"},
        {"%chk=a\n# hf/sto-3g scf=xqc", ""},
        {"%chk=a\n# hf/sto-3g scf=qc", "X003 2:17+2 warning\n"},
        {"%chk=a\n# hf/sto-3g scf=(conver=8,qc)", "X003 2:27+2 warning\n"},
        {"%chk=a\n# hf/sto-3g SCF=QC", "X003 2:17+2 warning\n"},
        {"%chk=a\n%RWF=b\n# hf/sto-3g", "X003 2 warning\n"},
        {"# hf/sto-3g", "X004 1 warning\n"},
        {"%oldchk=a\n# hf/sto-3g", "X004 2 warning\n"},
        {"%CHK=a\n# hf/sto-3g", ""},
    };
    CheckOptions options;
    options.limits = {std::int64_t{64} << 30, 32, {"scf=qc", "%rwf"}, {"%chk"}};
    for (const Case& each : cases) {
        std::string found;
        for (const Finding& finding : check_text(each.head + helium, options)) {
            const std::string place =
                std::to_string(finding.line) +
                (finding.column == 0 ? "" : ':' + std::to_string(finding.column) + '+' + std::to_string(finding.length));
            found += finding.code.substr(0, 5) != "GJF-X"
                         ? ""
                         : finding.code.substr(4) + ' ' + place + ' ' + severity_name(finding.severity) + '\n';
        }
        EXPECT_EQ(found, each.wanted) << each.head;
        for (const Finding& finding : check_text(each.head + helium)) {
            EXPECT_NE(finding.code.substr(0, 5), "GJF-X") << each.head;
        }
    }
}

}  // namespace
