// What a change brings: which findings are new, and which words nobody knows.
#include <gjf/core/check/change_checks.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

std::string changed_job(const std::string& route, const std::string& atoms = "0 1\nHe 0 0 0\n") {
    return route + "\n\nt\n\n" + atoms + "\n";
}

std::string listed(const std::vector<Finding>& findings) {
    std::string codes;
    for (const Finding& finding : findings) {
        codes += (codes.empty() ? "" : " ") + finding.code;
    }
    return codes;
}

Finding made_finding(const std::string& code, const std::string& message, std::size_t in_job = 1, std::size_t line = 1) {
    Finding made;
    made.code = code;
    made.message = message;
    made.job = in_job;
    made.line = line;
    return made;
}

}  // namespace

TEST(ChangeChecks, FindsWhatIsNew) {
    const std::string water = "0 1\nO 0 0 0\nH 0 0.76 0.59\nH 0 -0.76 0.59\n";
    const struct {
        std::string before;
        std::string after;
        std::string codes;
    } rows[] = {
        {changed_job("# hf/sto-3g"), changed_job("# hf/sto-3g"), ""},
        {changed_job("# hf/sto-3g"), changed_job("# hf/sto-3g opt=clacfc"), "GJF-R001"},
        {changed_job("# hf/sto-3g opt=clacfc"), changed_job("# hf/sto-3g opt=clacfc freq"), ""},
        {changed_job("# hf/sto-3g opt=clacfc"), changed_job("# hf/sto-3g opt=clalfc"), "GJF-R001"},
        {changed_job("# hf/sto-3g opt=clacfc"), changed_job("# hf/sto-3g opt=(clacfc,tihgt)"), "GJF-R001"},
        {changed_job("# hf/sto-3g opt=clacfc"), changed_job("# hf/sto-3g"), ""},
        {changed_job("# hf/sto-3g", water), changed_job("# hf/sto-3g", water + "H 0 3 0\n"), "GJF-M002"},
        // The same remark on another line is none that is new.
        {changed_job("# hf/sto-3g opt=clacfc"), "%mem=1GB\n" + changed_job("# hf/sto-3g opt=clacfc"), ""},
        // A second job with the fault of the first is.
        {changed_job("# hf/sto-3g opt=clacfc") + "--Link1--\n" + changed_job("# hf/sto-3g"),
         changed_job("# hf/sto-3g opt=clacfc") + "--Link1--\n" + changed_job("# hf/sto-3g opt=clacfc"), "GJF-R001"},
        // What stands behind a place where reading ended was not looked at before.
        {changed_job("# hf/sto-3g", "0 1\nHe 0 0 0x\nHe 0 0 0\n"), changed_job("# hf/sto-3g", "0 1\nHe 0 0 0\nHe 0 0 0\n"),
         ""},
        {"", changed_job("# hf/sto-3g opt=clacfc"), ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(listed(findings_of_change(row.before, row.after)), row.codes) << row.after;
    }
}

TEST(ChangeChecks, CountsEachFindingAsOftenAsItIsThere) {
    const Finding a = made_finding("A", "x");
    EXPECT_EQ(listed(new_findings({}, {a, a})), "A A");
    EXPECT_EQ(listed(new_findings({a}, {a, a})), "A");
    EXPECT_EQ(listed(new_findings({a, a, a}, {a, a})), "");
    EXPECT_EQ(listed(new_findings({a}, {})), "");
    EXPECT_EQ(listed(new_findings({a}, {made_finding("A", "y"), made_finding("B", "x"), made_finding("A", "x", 2), a})),
              "A B A");
    // What a job that could not be read hid is not new; what stands before the place is.
    const Finding unreadable = made_finding("GJF-P001", "p", 1, 5);
    EXPECT_EQ(listed(new_findings(
                  {unreadable}, {made_finding("B", "x", 1, 4), made_finding("C", "x", 1, 5), made_finding("D", "x", 2, 9)})),
              "B D");
}

TEST(ChangeChecks, PassesOverNumbersThatCount) {
    const struct {
        const char* message;
        const char* without;
    } rows[] = {
        {"", ""},
        {"the same as in line 12", "the same as in line "},
        {"atoms 3 and 14 are 0.10 apart", "atoms  and  are 0.10 apart"},
        {"row 7 refers to atom 9 twice", "row  refers to atom  twice"},
        {"line12 and lines 3", "line12 and lines 3"},
        {"charge 0 and multiplicity 2 are impossible for 10 electrons",
         "charge 0 and multiplicity 2 are impossible for 10 electrons"},
        {"12", "12"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(message_without_numbers(row.message), row.without);
    }
}

TEST(ChangeChecks, FindsWordsThatNobodyKnows) {
    const struct {
        const char* route;
        const char* codes;
        const char* hint;
    } rows[] = {
        {"# b3lpy/6-31g*", "GJF-W005", "did you mean b3lyp?"},
        {"# hf/def2-tzvp", "GJF-W005", "did you mean def2tzvp?"},
        {"# hf/sto-3g opt=clacfc", "GJF-R001", "did you mean calcfc?"},
        {"# hf/sto-3g scrf=(smd,solvent=watr)", "GJF-R012", "did you mean water?"},
        {"# pbe0/sto-3g", "GJF-R011", "Gaussian calls it pbe1pbe"},
        {"# hf/sto-3g frq", "GJF-W005", "did you mean freq?"},
        {"# hf/sto-3g nosuch", "GJF-W005", ""},
        {"# hf/sto-3g frq opt=clacfc", "GJF-W005 GJF-R001", "did you mean freq?"},
        {"# hf/sto-3g opt=(ts,calcfc) freq", "", ""},
        {"# oniom(hf/sto-3g:uff)", "", ""},
        // What else is odd about a route is no matter of its words.
        {"# hf/sto-3g b3lyp", "", ""},
        {"# hf", "", ""},
        {"# hf/sto-3g scf=maxcycle", "", ""},
        {"#", "", ""},
        {"", "", ""},
    };
    for (const auto& row : rows) {
        const std::vector<Finding> found = unknown_route_words(row.route);
        EXPECT_EQ(listed(found), row.codes) << row.route;
        EXPECT_EQ(found.empty() ? "" : found.front().hint, row.hint) << row.route;
    }
}
