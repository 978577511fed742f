// The example jobs: each report as stored, and the facts of each file as its author meant them.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "../support/files.hpp"

namespace quor::input::gaussian {
namespace {

namespace fs = std::filesystem;

const fs::path source_folder = QUOR_GJF_SOURCE_DIR;

std::set<std::string> names_in(const fs::path& folder, const std::set<std::string>& extensions, const std::string& suffix) {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (extensions.count(entry.path().extension().string()) > 0) {
            names.insert(entry.path().filename().string() + suffix);
        }
    }
    return names;
}

// The report as the command-line tool prints it for a file without warnings.
std::string report_of(const GJFMultiData& file) {
    std::string text;
    for (std::size_t i = 0; i < file.jobs.size(); ++i) {
        if (file.jobs.size() > 1) {
            text += (i == 0 ? "--- Job " : "\n--- Job ") + std::to_string(i + 1) + " of " +
                    std::to_string(file.jobs.size()) + " ---\n";
        }
        text += GJFParser::format_full_gjf(file.jobs[i]);
    }
    return text;
}

struct JobFacts {
    std::size_t atoms;
    std::size_t pairs;
    std::string method;
    std::string basis;
    std::vector<std::string> keywords;
    std::vector<int> sections;  // kinds
};

struct FileFacts {
    const char* name;
    std::vector<JobFacts> jobs;
};

const std::vector<FileFacts>& all_facts() {
    static const std::vector<FileFacts> facts = {
        {"water_opt_freq.gjf", {{3, 1, "b3lyp", "6-31g(d,p)", {"opt", "freq"}, {}}}},
        {"ethanol_long_route.gjf", {{9, 1, "m062x", "6-311+g(2d,p)", {"opt", "scrf", "int", "scf"}, {}}}},
        {"acetate_oniom.gjf", {{11, 6, "", "", {"oniom", "geom"}, {1, 16}}}},
        {"peroxide_zmatrix.gjf", {{4, 1, "mp2", "6-311g(d,p)", {"opt"}, {}}}},
        {"butane_scan_zmatrix.gjf", {{4, 1, "hf", "3-21g", {"scan"}, {}}}},
        {"benzene_symbolic.gjf", {{12, 1, "hf", "sto-3g", {}, {}}}},
        {"hcn_qst2.gjf", {{3, 1, "b3lyp", "6-31+g(d)", {"opt", "freq"}, {4}}}},
        {"vinyl_qst3.gjf", {{7, 1, "b3lyp", "6-31g(d)", {"opt", "geom"}, {1, 3, 4, 5, 7, 8, 9, 11}}}},
        {"iron_carbonyl_gen.gjf", {{13, 1, "b3lyp", "gen", {"opt", "pseudo"}, {25, 28}}}},
        {"zinc_genecp.gjf", {{3, 1, "pbe1pbe", "genecp", {"scf"}, {25, 28}}}},
        {"formamide_pcm_read.gjf", {{6, 1, "wb97xd", "def2svp", {"scrf", "freq"}, {13, 30}}}},
        {"ammonia_nbo.gjf", {{4, 1, "hf", "6-31g(d)", {"pop"}, {46}}}},
        {"water_dimer_counterpoise.gjf", {{6, 3, "mp2", "aug-cc-pvdz", {"counterpoise"}, {}}}},
        {"glycine_residues.com", {{10, 1, "amber", "", {"geom"}, {1, 12, 16}}}},
        {"ghost_atoms.gjf", {{7, 1, "mp2", "cc-pvtz", {"nosymm"}, {}}}},
        {"methanol_frozen.gjf", {{6, 1, "b3lyp", "6-31g(d)", {"opt"}, {}}}},
        {"chained_restart.gjf",
         {{4, 1, "b3lyp", "6-31g(d)", {"opt"}, {}},
          {0, 0, "b3lyp", "6-31g(d)", {"geom", "guess", "freq"}, {}},
          {0, 1, "b3lyp", "6-311+g(2d,p)", {"geom", "guess"}, {}}}},
        {"formaldehyde_td.gjf",
         {{4, 1, "cam-b3lyp", "6-31+g(d)", {"td", "density"}, {}},
          {0, 1, "cam-b3lyp", "6-31+g(d)", {"td", "geom", "guess"}, {}}}},
        {"comments_crlf.gjf", {{2, 1, "hf", "6-31g(d)", {"scf"}, {}}}},
        {"polymer_periodic.gjf", {{7, 1, "pbepbe", "6-31g(d,p)", {"scf"}, {}}}},
        {"hnc_irc.gjf", {{3, 1, "hf", "6-31g(d)", {"irc"}, {21}}}},
        {"oxygen_alter.gjf", {{2, 1, "uhf", "6-31g(d)", {"guess"}, {35, 35}}}},
        {"ethene_casscf.gjf", {{6, 1, "casscf", "6-31g(d)", {"nosymm"}, {38}}}},
        {"methane_bomd.gjf", {{5, 1, "hf", "3-21g", {"bomd"}, {19, 19}}}},
        {"acetone_readopt.gjf", {{10, 1, "b3lyp", "6-31g(d)", {"opt"}, {2}}}},
        {"benzene_dimer_dispersion.gjf", {{24, 1, "pbe1pbe", "def2tzvp", {"empiricaldispersion", "int"}, {}}}},
        {"boron_permute.gjf", {{1, 1, "rohf", "6-31g(d)", {"guess"}, {36, 36}}}},
        {"chlorofluoromethanol_roa.gjf", {{6, 1, "b3lyp", "6-31+g(d)", {"freq", "cphf"}, {17}}}},
        {"ethane_uff.gjf", {{8, 1, "uff", "", {"geom", "opt"}, {1}}}},
        {"ethanol_checkpoint_dihedral.gjf", {{0, 1, "b3lyp", "6-31g(d)", {"geom", "guess", "opt"}, {3}}}},
        {"ethyne_wavefunction.gjf", {{4, 1, "b3lyp", "6-311+g(d,p)", {"density", "output"}, {54}}}},
        {"ferryl_fragment_guess.gjf", {{2, 3, "ub3lyp", "def2svp", {"guess", "pop"}, {}}}},
        {"fluoroethene_nmr.gjf", {{6, 1, "b3lyp", "6-311+g(2d,p)", {"nmr"}, {42}}}},
        {"hcn_qst2_frozen.gjf", {{3, 1, "hf", "3-21g", {"opt"}, {3, 4, 7}}}},
        {"hydrogen_peroxide_rotor.gjf", {{4, 1, "b3lyp", "6-31g(d)", {"freq"}, {48}}}},
        {"hydronium_charges.gjf", {{4, 1, "mp2", "6-31+g(d)", {"charge", "nosymm"}, {18}}}},
        {"lithium_hydride_iop.gjf", {{2, 1, "hf", "6-31g", {"iop", "nosymm", "scf"}, {}}}},
        {"old_checkpoint_readfc.gjf", {{0, 0, "b3lyp", "6-31g(d)", {"geom", "guess", "freq"}, {13}}}},
        {"water_bohr.gjf", {{3, 1, "ccsd(t)", "cc-pvdz", {"units"}, {}}}},
        {"water_external_program.gjf", {{3, 1, "", "", {"external", "opt"}, {}}}},
        {"water_field_read.gjf", {{3, 1, "hf", "6-31g(d)", {"field"}, {27}}}},
        {"zinc_complex_radii.gjf", {{5, 1, "b3lyp", "def2svp", {"pop"}, {43}}}},
    };
    return facts;
}

void expect_facts(const GJFData& job, const JobFacts& facts) {
    const ParsedKeywords& route = job.control.parsed_keywords.value();
    EXPECT_EQ(job.geom.atom_count(), facts.atoms);
    EXPECT_EQ(job.geom.charge_spin_pairs().size(), facts.pairs);
    EXPECT_EQ(route.method, facts.method);
    EXPECT_EQ(route.basis_set, facts.basis);
    std::vector<std::string> keywords;
    for (const KeywordInfo& keyword : route.keywords) {
        keywords.push_back(keyword.name);
    }
    EXPECT_EQ(keywords, facts.keywords);
    std::vector<int> kinds;
    for (const ExtraInputSection& section : job.extra_inputs) {
        kinds.push_back(static_cast<int>(section.kind));
    }
    EXPECT_EQ(kinds, facts.sections);
    EXPECT_TRUE(route.warnings.empty()) << route.warnings.front().message;
}

TEST(ExampleReports, MatchTheStoredOnes) {
    const std::set<std::string> reports = names_in(source_folder / "tests/report/expected", {".txt"}, "");
    EXPECT_EQ(names_in(source_folder / "examples/jobs", {".gjf", ".com"}, ".txt"), reports);
    ASSERT_GE(reports.size(), 42u);
    for (const std::string& report : reports) {
        const fs::path job = source_folder / "examples/jobs" / report.substr(0, report.size() - 4);
        EXPECT_EQ(report_of(GJFParser::parse_file_multi(job)),
                  quor::test::bytes_of(source_folder / "tests/report/expected" / report))
            << report;
    }
}

TEST(ExampleFacts, AreThoseOfTheirAuthors) {
    std::set<std::string> told;
    for (const FileFacts& file : all_facts()) {
        SCOPED_TRACE(file.name);
        told.insert(file.name);
        const GJFMultiData data = GJFParser::parse_file_multi(source_folder / "examples/jobs" / file.name);
        ASSERT_EQ(data.jobs.size(), file.jobs.size());
        for (std::size_t i = 0; i < file.jobs.size(); ++i) {
            expect_facts(data.jobs[i], file.jobs[i]);
        }
    }
    EXPECT_EQ(told, names_in(source_folder / "examples/jobs", {".gjf", ".com"}, ""));
}

TEST(ExampleFacts, IncludeWhatTheTraitsAreAbout) {
    const auto first = [](const char* name) { return GJFParser::parse_file(source_folder / "examples/jobs" / name); };
    const GJFData oniom = first("acetate_oniom.gjf");
    EXPECT_EQ(oniom.geom.atoms[4].layer, "M");
    EXPECT_EQ(oniom.geom.atoms[7].freeze, -1);
    EXPECT_EQ(oniom.geom.atoms[6].info.mm_type, "OS");
    EXPECT_EQ(oniom.geom.atoms[6].info.mm_charge, -0.45);
    ASSERT_NE(oniom.connectivity(), nullptr);
    EXPECT_EQ(oniom.connectivity()->get_bond_order(4, 5), 2.0);
    EXPECT_EQ(first("glycine_residues.com").geom.atoms[7].info.params.at("PDBName"), "O5'");
    EXPECT_EQ(first("ghost_atoms.gjf").geom.atoms[4].info.mm_type, "Bq");
    EXPECT_EQ(first("benzene_symbolic.gjf").geom.cartesian_variables.size(), 6u);
    EXPECT_EQ(first("peroxide_zmatrix.gjf").geom.constants.front().value, "112.0");
    EXPECT_EQ(first("comments_crlf.gjf").control.chk, "hf.chk");
    EXPECT_EQ(first("polymer_periodic.gjf").control.parsed_keywords->density_fitting_basis, "auto");
    EXPECT_EQ(first("ethanol_long_route.gjf").control.cpu, "0-3");
    EXPECT_EQ(first("ferryl_fragment_guess.gjf").geom.additional_pairs.back().multiplicity, -2);
    EXPECT_EQ(first("ferryl_fragment_guess.gjf").geom.atoms[1].info.params.at("Fragment"), "2");
    EXPECT_EQ(first("water_field_read.gjf").extra_input_text(0).find("0.0 0.0 0.0 0.001"), 0u);
    EXPECT_EQ(first("old_checkpoint_readfc.gjf").control.oldchk, "opt.chk");
    EXPECT_EQ(first("ethyne_wavefunction.gjf").extra_input_text(0), "ethyne.wfn");
    EXPECT_EQ(first("ethane_uff.gjf").geom.atoms[2].info.mm_type, "H_");
    EXPECT_EQ(first("lithium_hydride_iop.gjf").control.parsed_keywords->keywords.front().options.at("6/7"), "3");
    EXPECT_EQ(first("ethene_casscf.gjf").control.parsed_keywords->method_options, "casscf(2,2,nroot=2,stateaverage)");
}

}  // namespace
}  // namespace quor::input::gaussian
