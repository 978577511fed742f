// What jobs need at the least: memory by basis functions, disk by orbitals, how one energy grows; and what is not known.
#include <gjf/core/basis/job_estimate.hpp>

#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>

using namespace quor::input::gaussian;

namespace {

using Bytes = std::optional<std::int64_t>;
constexpr std::nullopt_t no_bytes = std::nullopt;
constexpr std::int64_t word = 8;
constexpr std::int64_t matrices_of_7 = word * (4194304 + 2 * 7 * 7);

const std::string water_atoms = "O 0 0 0\nH 0 0 1\nH 0 1 0\n";

JobEstimate estimate_of(const std::string& route, const std::string& molecule = "0 1\n" + water_atoms) {
    const GJFData job = GJFParser::parse_string(route + "\n\nt\n\n" + molecule + "\n");
    return estimate_job(job, job_size(job));
}

TEST(JobEstimate, CountsMemoryByFunctions) {
    const struct {
        const char* route;
        Bytes bytes;
    } rows[] = {
        {"# hf/sto-3g", matrices_of_7},
        {"# opt", matrices_of_7},  // Hartree-Fock of STO-3G
        {"# ub3lyp/sto-3g", matrices_of_7},
        {"# rodsdpbep86/sto-3g", matrices_of_7},
        {"# blyp/sto-3g", matrices_of_7},
        {"# lsda/sto-3g", matrices_of_7},
        {"# ccsd(t)/sto-3g", matrices_of_7},
        {"# hf/sto-3g scf=incore", word * 7 * 7 * 7 * 7 / 8},
        {"# ucisd(full)/sto-3g scf(tight,incore)", word * 7 * 7 * 7 * 7 / 8},
        {"# blyp/sto-3g scf=incore", matrices_of_7},  // needs no exchange integrals
        {"# hf/sto-3g scf=noincore", matrices_of_7},
        {"# hf/sto-3g mp2=incore", matrices_of_7},
        {"# hf/gen", no_bytes},
        {"# hf/6-31g massage", no_bytes},
        {"# pm6", no_bytes},
        {"# uff", no_bytes},
        {"# casscf(2,2)/sto-3g", no_bytes},
        {"# cbs-qb3", no_bytes},
        {"# oniom(hf/sto-3g:uff)", no_bytes},
        {"# b3lyb/sto-3g", no_bytes},
    };
    for (const auto& row : rows) {
        const LeastBytes memory = estimate_of(row.route).memory;
        EXPECT_EQ(memory.bytes, row.bytes) << row.route << ": " << memory.unknown;
        EXPECT_EQ(memory.unknown.empty(), memory.bytes.has_value()) << row.route;
        EXPECT_TRUE(!memory.bytes || !memory.formula.empty()) << row.route;
    }
}

TEST(JobEstimate, CountsDiskByAmplitudes) {
    const struct {
        const char* route;
        std::string molecule;
        Bytes bytes;
    } rows[] = {
        {"# ccsd/sto-3g", "0 1\n" + water_atoms, word * 4 * 4 * 2 * 2},  // five occupied, one of them a core; two empty
        {"# qcisd(t)/sto-3g", "0 1\n" + water_atoms, word * 4 * 4 * 2 * 2},
        {"# ccsd/sto-3g", "0 3\n" + water_atoms, word * 3 * 3 * 1 * 1},
        {"# ccsd/lanl2dz", "0 1\nZn 0 0 0\n", word * 6 * 6 * 12 * 12},  // no core beside the potential's is left
        {"# ccsd/sto-3g", "0 1\nHe 0 0 0\n", 0},                        // no empty orbital
        {"# hf/sto-3g", "0 1\n" + water_atoms, no_bytes},
        {"# mp2/sto-3g", "0 1\n" + water_atoms, no_bytes},
        {"# ccsd/gen", "0 1\n" + water_atoms, no_bytes},
        {"# ccsd/sto-3g", "11 1\n" + water_atoms, no_bytes},  // fewer electrons than none
    };
    for (const auto& row : rows) {
        const LeastBytes disk = estimate_of(row.route, row.molecule).disk;
        EXPECT_EQ(disk.bytes, row.bytes) << row.route << ": " << disk.unknown;
        EXPECT_EQ(disk.unknown.empty(), disk.bytes.has_value()) << row.route;
    }
}

TEST(JobEstimate, TellsHowTheCostGrows) {
    const struct {
        const char* route;
        const char* cost;
    } rows[] = {
        {"# hf/sto-3g", "N^4"},
        {"# uwb97xd/sto-3g", "N^4"},
        {"# pw91pw91/sto-3g", "N^4"},
        {"# b2plypd3/sto-3g", "O N^4"},
        {"# romp2/sto-3g", "O N^4"},
        {"# mp4/sto-3g", "O^3 V^4"},
        {"# mp4=sdq/sto-3g", "O^2 V^4"},
        {"# mp4sdq/sto-3g", "O^2 V^4"},
        {"# ump4(sdtq,full)/sto-3g", "O^3 V^4"},
        {"# ccsd/gen", "O^2 V^4"},
        {"# ccsd=(maxcyc=50,t)/sto-3g", "O^3 V^4"},
        {"# ccsd(t)/sto-3g", "O^3 V^4"},
        {"# bd(tq)/sto-3g", "O^3 V^5"},
        {"# casscf(2,2)/sto-3g", ""},
        {"# g4", ""},
        {"# am1", ""},
        {"# amber", ""},
        {"# oniom(hf/sto-3g:uff)", ""},
        {"# hfx/sto-3g", ""},
    };
    for (const auto& row : rows) {
        const JobEstimate estimate = estimate_of(row.route);
        EXPECT_EQ(estimate.cost, row.cost) << row.route;
        EXPECT_EQ(estimate.unknown_cost.empty(), !estimate.cost.empty()) << row.route;
    }
}

TEST(JobEstimate, TellsWhatItCannotKnow) {
    EXPECT_EQ(estimate_of("# hf/sto-3g").disk.unknown, "no formula is known for hf");
    EXPECT_EQ(estimate_of("# upm6").memory.unknown, "no formula is known for upm6");
    EXPECT_EQ(estimate_of("# hf/6-31g massage").memory.unknown, "massage may change them");
    EXPECT_EQ(estimate_of("# oniom(hf/sto-3g:uff)").unknown_cost, "the layers have needs of their own");
    EXPECT_EQ(estimate_job(GJFData{}, JobSize{}).memory.unknown, "the route is not interpreted");
}

TEST(JobEstimate, StaysWithinTheNumbersOfAHugeJob) {
    JobSize size;
    size.functions = std::int64_t{1} << 62;
    const GJFData job = GJFParser::parse_string("# hf/sto-3g scf=incore\n\nt\n\n0 1\nHe 0 0 0\n\n");
    EXPECT_EQ(estimate_job(job, size).memory.bytes, 9'000'000'000'000'000'000);
}

}  // namespace
