// Findings that speak of two places name both: the other atom, the first of two words, the job that wrote what is read.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

const std::string lone_helium = "\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";
const std::string three_atoms = "\n\nt\n\n0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n";
const std::string layers_of_two_places =
    "\n\nt\n\n0 1\nC 0.0 0.0 0.0 L H 5\nH -0.39 1.02 0.0 L\nH -0.39 -0.51 -0.89 L\nH -0.39 -0.51 0.89 L\n"
    "C 1.53 0.0 0.0 L H 1\nH 1.92 -1.02 0.0 H\nH 1.92 0.51 0.89 H\nH 1.92 0.51 -0.89 H\n\n";
const std::string read_on = "--Link1--\n%chk=a\n# hf/3-21g geom=allcheck ";

// Returns the line of the first related place of the first finding of a code; 0 for none.
std::size_t related_line(const std::string& text, const std::string& code) {
    const std::vector<Finding> findings = check_text(text);
    const auto found = std::find_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.code == code; });
    EXPECT_NE(found, findings.end()) << code << " in\n" << text;
    return found == findings.end() || found->related.empty() ? 0 : found->related.front().line;
}

TEST(RelatedPlaces, AreNamedByFindingsOfTwoPlaces) {
    const struct {
        const char* code;
        std::string text;
        std::size_t line;
    } rows[] = {
        {"GJF-L005", "%nprocshared=4\n%cpu=0-2\n# hf/sto-3g" + lone_helium, 1},
        {"GJF-L007", "%chk=a\n# hf/sto-3g" + lone_helium + "--Link1--\n%chk=a\n# hf/sto-3g" + lone_helium, 2},
        {"GJF-L011", "%chk=a\n# hf/sto-3g" + lone_helium + read_on + "opt=readfc\n\n", 2},
        {"GJF-L012", "%chk=a\n# hf/sto-3g opt" + three_atoms + read_on + "freq\n\n", 2},
        {"GJF-R002", "# hf/sto-3g opt=ts\nfreq opt=calcfc" + lone_helium, 1},
        {"GJF-R003", "# hf/sto-3g\nmp2" + lone_helium, 1},
        {"GJF-R004", "# hf/sto-3g\n3-21g" + lone_helium, 1},
        {"GJF-R008", "# hf/sto-3g opt=(ts,\nqst2)" + lone_helium, 1},
        {"GJF-R010", "# hf/sto-3g freq\nforce" + lone_helium, 1},
        {"GJF-R021", "# hf/sto-3g scf=(maxcycle=3,\nmaxcycle=4)" + lone_helium, 1},
        {"GJF-M005", "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 0.1\n\n", 6},
        {"GJF-M014", "# oniom(hf/sto-3g:uff)" + layers_of_two_places, 10},
        {"GJF-S004", "# hf/sto-3g geom=connectivity" + three_atoms + "1 2 1.0\n2 1 2.0\n3\n\n", 10},
        {"GJF-S005", "# hf/sto-3g geom=connectivity" + three_atoms + "1 2 1.0\n2\n1 3 1.0\n3\n\n", 10},
        {"GJF-S008", "# hf/gen" + three_atoms + "O H 0\n3-21g\n****\nH 0\nsto-3g\n****\n\n", 10},
        {"GJF-S010", "# hf/gen" + three_atoms + "O 0\n3-21g\nH 0\nsto-3g\n****\n\n", 10},
        {"GJF-S019", "# hf/sto-3g opt=qst2" + three_atoms + "u\n\n0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\n\n", 6},
        {"GJF-S020",
         "# hf/sto-3g opt=qst2" + three_atoms + "u\n\n0 1\nO 0.0 0.0 0.0\nHe 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n", 7},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(related_line(row.text, row.code), row.line) << row.code;
    }
}

}  // namespace
