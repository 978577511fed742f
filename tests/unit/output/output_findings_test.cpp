// What is worth saying of outputs beside how they ended: each case, near ones in which nothing is said, and the page of
// codes.
#include <gjf/core/output/diagnosis.hpp>

#include <gjf/core/knowledge/failures.hpp>

#include "made_outputs.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace findings_of_outputs {

using namespace quor::input::gaussian;

static std::string modes(const std::string& frequencies) { return " Frequencies --   " + frequencies + "\n"; }

static std::string job(const std::string& route, const std::string& lines, const std::string& end = made::normal_end(),
                       const std::string& charge = " Charge =  0 Multiplicity = 1\n") {
    return made::head() + made::framed(route) + made::molecule("water", charge) + lines + end;
}

// What is printed behind an optimization of two steps.
static std::string optimized(const std::string& second_energy = "-75.6", const std::string& second_force = "0.000010") {
    return made::optimization_step(1, "-75.5", "0.010000", "0.000000") +
           made::optimization_step(2, second_energy, second_force, "0.010000") + " Optimization completed.\n";
}

static std::string frequencies_at(const std::string& values, const char* converged = "YES") {
    return made::geometry("Input", "0.010000") + made::scf("-75.6") + modes(values) +
           made::convergence("0.000010", converged);
}

static std::string codes(const std::string& text) {
    std::string all;
    for (const OutputFinding& finding : diagnose_output(*text_source(text)).findings) {
        all += (all.empty() ? "" : " ") + finding.code.substr(4);
    }
    return all;
}

TEST(OutputFindings, SayWhatIsNotAsItSeems) {
    const std::string doublet = " Charge =  0 Multiplicity = 2\n";
    const std::string in_line =
        " Input orientation:\n ----------\n Center\n Number\n ----------\n 1 8 0 0.0 0.0 0.0\n 2 6 0 0.0 0.0 1.2\n"
        " 3 8 0 0.0 0.001 2.4\n ----------\n";
    const std::string scan_end = " on scan point     2 out of     2";
    const std::string scan_point = " on scan point     1 out of     2";
    const struct {
        std::string text;
        const char* codes;
    } cases[] = {
        {job("# opt freq", optimized() + frequencies_at("1000.0 2000.0 3000.0")), ""},
        {job("# opt freq", optimized() + frequencies_at("1000.0 2000.0 3000.0", "NO ")), "O003"},
        {job("# opt freq", optimized() + frequencies_at("-500.0 2000.0 3000.0")), "O004"},
        {job("# opt freq", optimized() + frequencies_at("-29.9 2000.0 3000.0")), "O005"},
        {job("# opt=ts freq", optimized() + frequencies_at("1000.0 2000.0 3000.0")), "O006"},
        {job("# opt=(calcfc,ts) freq", optimized() + frequencies_at("-1000.0 2000.0 3000.0")), ""},
        {job("# opt=qst3 freq", optimized() + frequencies_at("-1000.0 -200.0 3000.0")), "O007"},
        {job("# opt=(saddle=2) freq", optimized() + frequencies_at("-1000.0 -200.0 3000.0")), ""},
        {job("# freq", frequencies_at("-1000.0 2000.0 3000.0")), "O008"},
        {job("# freq", frequencies_at("1000.0 2000.0 3000.0")), ""},
        {job("# opt", optimized("-75.4")), "O009"},
        {job("# opt", optimized("-75.6")), ""},
        {job("# uhf", made::scf("-75.5") + " S**2 before annihilation     0.8300,   after     0.7510\n", made::normal_end(),
             doublet),
         "O010"},
        {job("# uhf", made::scf("-75.5") + " S**2 before annihilation     0.8200,   after     0.7510\n", made::normal_end(),
             doublet),
         ""},
        {job("# uhf", made::scf("-75.5") + " S**2 before annihilation     1.0200,   after     0.2796\n"), ""},
        {job("# stable", " The wavefunction has an RHF -> UHF instability.\n"), "O011"},
        {job("# stable=opt",
             " The wavefunction has an internal instability.\n The wavefunction is stable under the "
             "perturbations considered.\n"),
         ""},
        {job("# irc", " Maximum number of steps reached.\n"), "O012"},
        {job("# opt=modredundant",
             made::optimization_step(1, "-75.5", "0.1", "0.000000", 1, scan_point) + " Optimization stopped.\n" +
                 made::optimization_step(1, "-75.6", "0.1", "0.010000", 1, scan_end) + " Optimization completed.\n"),
         "O013"},
        {job("# opt=modredundant",
             made::optimization_step(1, "-75.5", "0.1", "0.000000", 1, scan_point) + " Optimization completed.\n" +
                 made::optimization_step(1, "-75.6", "0.1", "0.010000", 1, scan_end) + " Optimization completed.\n"),
         ""},
        {job("# freq", in_line + made::scf("-188.5") + modes("563.0 1282.0 2282.0")), "O014"},
        {job("# freq", in_line + made::scf("-188.5") + modes("563.0 563.0 1282.0 2282.0")), ""},
        {job("# hf", "", made::error_end(301)), "O001"},
        {job("# hf", made::scf("-75.5"), ""), "O002"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(codes(each.text), each.codes) << each.text;
    }
}

TEST(OutputFindings, NameTheCauseOfAFailure) {
    const Diagnosis diagnosis =
        diagnose_output(*text_source(job("# hf opt", " Convergence failure -- run terminated.\n", made::error_end(502))));
    ASSERT_EQ(diagnosis.findings.size(), 1U);
    EXPECT_EQ(diagnosis.findings[0].cause, "scf_502");
    EXPECT_EQ(diagnosis.findings[0].message, diagnosis.says);
    EXPECT_EQ(diagnosis.findings[0].line, diagnosis.cause_line);
    EXPECT_EQ(diagnosis.findings[0].hint, diagnosis.remedy);
    EXPECT_EQ(diagnosis.findings[0].severity, "error");
}

TEST(OutputFindings, HaveARowOfTheirPageEach) {
    std::ifstream file(QUOR_GJF_SOURCE_DIR "/docs/outputs.md");
    std::stringstream page;
    page << file.rdbuf();
    std::set<std::string> codes;
    for (const OutputCodeDescription& each : output_code_descriptions()) {
        const std::string row = "| " + each.code + " | " + each.severity + " | " + each.title + " | " + each.explanation +
                                " | " + each.remedy + " |\n";
        EXPECT_NE(page.str().find(row), std::string::npos) << row;
        EXPECT_TRUE(each.severity == "error" || each.severity == "warning" || each.severity == "note") << each.code;
        EXPECT_TRUE(codes.insert(each.code).second) << each.code;
    }
    EXPECT_EQ(codes.size(), 16U);
}

}  // namespace findings_of_outputs
