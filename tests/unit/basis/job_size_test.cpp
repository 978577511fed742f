// Basis functions and electrons of a job: by set, suffix, five or six d functions, blocks, ghosts and core potentials.
#include <gjf/core/basis/job_size.hpp>

#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>

using namespace quor::input::gaussian;

namespace {

using Count = std::optional<std::int64_t>;
constexpr std::nullopt_t unknown = std::nullopt;

JobSize size_of(const std::string& route, const std::string& molecule, const std::string& sections = {}) {
    return job_size(GJFParser::parse_string(route + "\n\nt\n\n" + molecule + "\n" + sections + "\n"));
}

const std::string water = "0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n";
const std::string methane = "0 1\nC 0 0 0\nH 0 0 1\nH 0 1 0\nH 1 0 0\nH 1 1 1\n";

TEST(JobSize, CountsTheFunctionsOfNamedSets) {
    const struct {
        const char* route;
        std::string molecule;
        Count functions;
    } rows[] = {
        {"# hf/sto-3g", water, 7},
        {"# hf opt", water, 7},  // no set: STO-3G
        {"# b3lyp/6-31g*", water, 19},
        {"# b3lyp/6-31g(d)", water, 19},
        {"# b3lyp/6-31g(d')", water, 19},
        {"# b3lyp/6-31G**", water, 25},
        {"# b3lyp/6-31+g(d,p)", water, 29},
        {"# b3lyp/6-311++g(3df,3pd)", water, 75},
        {"# b3lyp/6-311g(2d,d,p)", methane, 42},
        {"# cbs-qb3", methane, 42},
        {"# b3lyp/cbsb7+", methane, 46},
        {"# mp2/aug-cc-pvtz", water, 92},
        {"# hf/aug-cc-pvqz", "0 1\nF 0 0 0\nH 0 0 1\n", 126},
        {"# b3lyp/def2tzvp", water, 43},
        {"# b3lyp/lanl2dz", "0 1\nRu 0 0 0\n", 22},
        {"# b3lyp/sdd", "0 3\nGd 0 0 0\n", 109},
        {"# b3lyp/6-31g(d) 5d", methane, 22},
        {"# b3lyp/6-31g(d)", methane, 23},
        {"# b3lyp/cc-pvdz 6d", water, 25},
        {"# b3lyp/cc-pvtz 6d 10f", water, 65},
        {"# b3lyp/6-31g(2df,p)", "0 1\nFe 0 0 0\n", 29 + 14 + 9},
        {"# b3lyp/3-21g*", "0 1\nS 0 0 0\nH 0 0 1\nH 0 1 1\n", 19 + 4},
        {"# b3lyp/sto-3g counterpoise=2", "0 1\nO(Fragment=1) 0 0 0\nH-Bq(Fragment=2) 0 0 1\nBq(Fragment=2) 0 1 0\n", 6},
        {"# b3lyp/6-31g", "0 1\nX 0 0 0\nH 0 0 1\nH 0 0 2\nTv 0 0 9\n", 4},
        {"# b3lyp/6-31g", "0 1\nI 0 0 0\nH 0 0 1\n", unknown},
        {"# b3lyp/6-31g(4d)", water, unknown},
        {"# b3lyp/cep-121g", water, unknown},
        {"# b3lyp/chkbasis", water, unknown},
        {"# b3lyp/cc-pv(t+d)z", water, unknown},
        {"# b3lyp/6-31g massage", water, unknown},
        {"# b3lyp/6-31g iop(3/8=2)", water, unknown},
        {"# w1u", water, unknown},
        {"# pm6", water, unknown},
        {"# uff", water, unknown},
        {"# oniom(b3lyp/6-31g:uff)", "0 1\nC 0 0 0 0 H\nC 0 0 2 0 L\n", unknown},
        {"# hf/6-31g", "0 1\nQ7 0 0 0\n", unknown},
    };
    for (const auto& row : rows) {
        const JobSize size = size_of(row.route, row.molecule);
        EXPECT_EQ(size.functions, row.functions) << row.route << ": " << size.no_functions;
        EXPECT_EQ(size.no_functions.empty(), size.functions.has_value()) << row.route;
    }
}

TEST(JobSize, CountsTheFunctionsOfBlocks) {
    const struct {
        const char* route;
        const char* sections;
        Count functions;
    } rows[] = {
        {"# b3lyp/gen", "O 0\n6-31g(d)\n****\nH 0\nsto-3g\n****\n", 14 + 2},  // five d functions
        {"# b3lyp/gen 6d", "O 0\n6-31g(d)\n****\nH 0\nsto-3g\n****\n", 15 + 2},
        {"# b3lyp/gen", "O H 0\n6-31g*\n****\n", 18},
        {"# b3lyp/gen", "1 0\n6-31g*\n****\n2-3 0\ncc-pVDZ\n****\n", 14 + 10},
        {"# b3lyp/gen", "O 0\ncc-pvdz\n****\n-C H 0\ncc-pvdz\n****\n", 24},
        {"# b3lyp/gen", "O H 0\nsto-3g\n****\nO 0\nD 1 1.0\n0.8 1.0\n****\n", 7 + 5},
        {"# b3lyp/gen", "O H 0\nS 2 1.00\n5.0 0.1\n1.0 0.9\nSP 1 1.00\n0.5 1.0 1.0\nF 1 1.0\n1.0D+00 1.0\n****\n",
         3 * (1 + 4 + 7)},
        {"# b3lyp/gen 10f", "O H 0\nF 1 1.0\n1.0 1.0\n****\n", 30},
        {"# b3lyp/gen", "O H 0\nSTO 1S 3 7.66\n****\n", 3},
        {"# b3lyp/sto-3g extrabasis", "O 0\nP 1 1.0\n0.1 1.0\n****\n", 7 + 3},
        {"# b3lyp/gen", "O 0\n6-31g*\n****\n", unknown},    // hydrogen has none
        {"# b3lyp/gen", "O H 0\n6-32g*\n****\n", unknown},  // no such set
        {"# b3lyp/gen", "O H 0\nMWB28\n****\n", unknown},
        {"# b3lyp/gen", "@sets.gbs\n", unknown},
        {"# b3lyp/gen", "O He! 0\n6-31g*\n****\n", unknown},
        {"# b3lyp/gen", "O H 0\nL=5 1 1.0\n1.0 1.0\n****\n", unknown},
        {"# b3lyp/gen", "", unknown},
        {"# b3lyp/sto-3g extrabasis", "", unknown},
    };
    for (const auto& row : rows) {
        const JobSize size = size_of(row.route, water, row.sections);
        EXPECT_EQ(size.functions, row.functions) << row.route << "\n" << row.sections << size.no_functions;
        EXPECT_EQ(size.no_functions.empty(), size.functions.has_value()) << row.sections;
    }
}

TEST(JobSize, CountsElectronsWithoutCores) {
    const char* iron = "0 1\nFe 0 0 0\nO 0 0 1\n";
    const struct {
        const char* route;
        std::string molecule;
        const char* sections;
        Count electrons;
        std::int64_t cores;
    } rows[] = {
        {"# hf/sto-3g", water, "", 10, 0},
        {"# hf/sto-3g", "-1 2\nO 0 0 0\nH-Bq 0 0 1\n", "", 9, 0},
        {"# cbs-qb3", water, "", 10, 0},
        {"# w1u", water, "", 10, 0},
        {"# b3lyp/lanl2dz", iron, "", 24, 10},
        {"# b3lyp/def2svp", "0 1\nI 0 0 0\nH 0 0 1\n", "", 26, 28},
        {"# b3lyp/def2svp", iron, "", 34, 0},
        {"# b3lyp/gen", iron, "Fe 0\nlanl2dz\n****\nO 0\n6-31g\n****\n", 34, 0},  // no potential is read
        {"# b3lyp/genecp", iron, "Fe 0\nlanl2dz\n****\nO 0\n6-31g\n****\n\nFe 0\nlanl2dz\n", 24, 10},
        {"# b3lyp/gen pseudo=read", iron, "Fe 0\nlanl2dz\n****\nO 0\n6-31g\n****\n\nFe 0\nMDF10\n", 24, 10},
        {"# b3lyp/genecp", iron, "Fe O 0\nsdd\n****\n\n1 0\nFE-ECP 1 12\nd\n1\n2 1.0 0.0\ns\n1\n2 1.0 1.0\n", 22, 12},
        {"# b3lyp/genecp", iron, "Fe O 0\nsdd\n****\n\n-I Fe 0\nmine\n", unknown, 0},
        {"# b3lyp/genecp", iron, "Fe O 0\nsdd\n****\n\n@potentials\n", unknown, 0},
        {"# b3lyp/genecp", iron, "Fe O 0\nsdd\n****\n", unknown, 0},
        {"# b3lyp/lanl2dz pseudo=read", iron, "Fe 0\nMDF10\n", unknown, 0},
        {"# b3lyp/sdd pseudo=cep", iron, "", unknown, 0},
        {"# b3lyp/lanl1dz", iron, "", unknown, 0},
        {"# b3lyp/6-31g iop(3/17=5)", iron, "", unknown, 0},
        {"# hf/sto-3g", "11 1\nO 0 0 0\nH 0 0 1\nH 0 0 2\n", "", unknown, 0},
        {"# pm6", water, "", unknown, 0},
        {"# amber", "0 1\nH-HW 0 0 0\n", "", unknown, 0},
    };
    for (const auto& row : rows) {
        const JobSize size = size_of(row.route, row.molecule, row.sections);
        EXPECT_EQ(size.electrons, row.electrons) << row.route << "\n" << row.sections << size.no_electrons;
        EXPECT_EQ(size.core_electrons, row.cores) << row.route;
        EXPECT_EQ(size.no_electrons.empty(), size.electrons.has_value()) << row.route;
    }
}

TEST(JobSize, TellsWhatItCannotKnow) {
    EXPECT_EQ(size_of("# b3lyp/6-31g", "0 1\nI 0 0 0\n").no_functions, "the functions of I in 6-31g are not known");
    EXPECT_EQ(job_size(GJFParser::parse_string("# hf/sto-3g geom=allcheck\n\n")).no_electrons,
              "the job has no atoms of its own");
    EXPECT_EQ(job_size(GJFData{}).no_functions, "the route is not interpreted");
    EXPECT_TRUE(size_of("# b3lyp/sdd", "0 1\nZn 0 0 0\n").doubtful);
    EXPECT_FALSE(size_of("# b3lyp/lanl2dz", "0 1\nZn 0 0 0\n").doubtful);
    EXPECT_TRUE(size_of("# b3lyp/6-31g(3d)", "0 1\nZn 0 0 0\n").doubtful);
    EXPECT_FALSE(size_of("# b3lyp/6-31g(3d)", "0 1\nC 0 0 0\n").doubtful);
}

}  // namespace
