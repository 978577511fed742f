// Atom numbers beyond 32 bits stay what they are: 4294967297 is never taken for atom 1.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

struct LargeNumber {
    const char* text;
    std::size_t line;
    const char* code;
    const char* message;
};

const std::vector<LargeNumber>& large_numbers() {
    static const std::vector<LargeNumber> rows = {
        {"# hf/sto-3g geom=connectivity\n\nt\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\n\n1 2 1.0\n2\n4294967297\n\n", 11,
         "GJF-P001", "4294967297 references atom index outside the geometry atom count"},
        {"# hf/sto-3g geom=connectivity\n\nt\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\n\n1 4294967298 1.0\n2\n\n", 9, "GJF-P001",
         "4294967298 references atom index outside the geometry atom count"},
        {"# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\n\nB 2 4294967297 F\n\n", 9, "GJF-S015",
         "atom 4294967297 is not in the molecule of 2"},
        {"# hf/gen\n\nt\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\n\n2 4294967297 0\nSTO-3G\n****\n1 0\nSTO-3G\n****\n\n", 9,
         "GJF-S011", "atom 4294967297 is not in the molecule"},
        {"# hf/gen\n\nt\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\n\n1-4294967297 0\nSTO-3G\n****\n\n", 9, "GJF-S011",
         "atom 4294967297 is not in the molecule"},
        {"# oniom(hf/sto-3g:uff)\n\nt\n\n0 1 0 1 0 1\nC 0.0 0.0 0.0 H\nC 0.0 0.0 1.5 L H 4294967297\n\n", 7, "GJF-M014",
         "the link atom of atom 2 is bonded to '4294967297', which is no other atom"},
        {"# hf/sto-3g counterpoise=2\n\nt\n\n0 1\nHe(Fragment=2) 0.0 0.0 0.0\nHe(Fragment=4294967297) 0.0 0.0 3.0\n\n", 7,
         "GJF-M004", "fragment 4294967297 is none of the 2 that counterpoise asks for"},
        {"# hf/sto-3g counterpoise=4294967298\n\nt\n\n0 1 0 1 0 1\nHe(Fragment=1) 0.0 0.0 0.0\nHe(Fragment=2) 0.0 0.0 "
         "3.0\n\n",
         5, "GJF-M003", "3 pairs of charge and multiplicity stand beside 4294967298 fragments"},
        {"# hf/sto-3g\n\nt\n\n4294967296 1\nHe 0.0 0.0 0.0\n\n", 5, "GJF-P001", "charge or multiplicity beyond 32 bits"},
        {"# hf/sto-3g\n\nt\n\n0 1\n4294967297 0.0 0.0 0.0\n\n", 6, "GJF-M001", "'4294967297' is no element"},
    };
    return rows;
}

TEST(AtomNumbers, BeyondThirtyTwoBitsAreReported) {
    for (const LargeNumber& row : large_numbers()) {
        std::string all;
        bool found = false;
        for (const Finding& finding : check_text(row.text)) {
            found = found || (finding.line == row.line && finding.code == row.code && finding.message == row.message);
            all += std::to_string(finding.line) + ": " + finding.message + " [" + finding.code + "]\n";
        }
        EXPECT_TRUE(found) << row.text << all;
    }
}

}  // namespace
