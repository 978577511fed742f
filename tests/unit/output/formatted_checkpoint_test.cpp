// Formatted checkpoints: what is read of them, what is passed over, and how those that are broken are refused.
#include <gjf/core/output/diagnosis.hpp>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace fchk {

using namespace quor::input::gaussian;

static std::string heading(const std::string& label, char type, const std::string& value) {
    char line[96];
    std::snprintf(line, sizeof line, "%-40s   %c     %12s\n", label.c_str(), type, value.c_str());
    return line;
}

static std::string array_heading(const std::string& label, char type, std::size_t count) {
    char line[96];
    std::snprintf(line, sizeof line, "%-40s   %c   N=%12zu\n", label.c_str(), type, count);
    return line;
}

static std::string numbers(const std::string& label, const std::vector<std::string>& values) {
    std::string text = array_heading(label, 'R', values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        text += std::string(16 - values[i].size(), ' ') + values[i] + (i % 5 == 4 || i + 1 == values.size() ? "\n" : "");
    }
    return text;
}

static std::string head(const std::string& kind = "FOpt") {
    std::string line = kind;
    line.resize(10, ' ');
    line += "RB3LYP";
    line.resize(40, ' ');
    return "water\n" + line + "6-31G(d)\n" + heading("Number of atoms", 'I', "3");
}

static std::string route() {
    return array_heading("Full Title", 'C', 1) + "water again \n" + array_heading("Route", 'C', 6) +
           "#p opt=(calcfc,maxcycles=30) b3lyp/6-31g(d) scf=(maxcycle=20\n0)\n";
}

static std::string molecule() {
    return heading("Charge", 'I', "-1") + heading("Multiplicity", 'I', "2") +
           heading("Number of alpha electrons", 'I', "6") + heading("Number of beta electrons", 'I', "5") +
           heading("Number of basis functions", 'I', "19") + array_heading("Atomic numbers", 'I', 3) +
           "           8           1           1\n";
}

static std::string places() {
    return numbers("Nuclear charges", {"8.00000000E+00", "1.00000000E+00", "0.00000000E+00"}) +
           numbers("Current cartesian coordinates",
                   {"0.00000000E+00", "1.00000000-100", "2.00000000E-01", "0.00000000E+00", "1.88972612E+00",
                    "-9.00000000E-01", "0.00000000E+00", "-1.88972612E+00", "-9.00000000E-01"});
}

static std::string energies() {
    return heading("SCF Energy", 'R', "-7.600000000000000E+01") + heading("MP2 Energy", 'R', "-7.620000000000000E+01") +
           heading("Total Energy", 'R', "-7.620000000000000E+01");
}

static std::string whole(const std::string& kind = "FOpt", const std::string& status = "1") {
    return head(kind) + route() + molecule() + places() + energies() + heading("Job Status", 'I', status) +
           numbers("Cartesian Force Constants", {"1.00000000E+00", "0.00000000E+00", "1.00000000E+00"});
}

static Diagnosis diagnosed(const std::string& text) { return diagnose_output(*text_source(text)); }

TEST(FormattedCheckpoint, GivesWhatAnOutputWouldGive) {
    const OutputSummary summary = diagnosed(whole()).summary;
    ASSERT_TRUE(summary.checkpoint);
    EXPECT_EQ(summary.checkpoint->kind, "FOpt");
    EXPECT_EQ(summary.checkpoint->method, "RB3LYP");
    EXPECT_EQ(summary.checkpoint->basis, "6-31G(d)");
    EXPECT_TRUE(summary.checkpoint->has_force_constants);
    EXPECT_TRUE(summary.checkpoint->is_whole);
    EXPECT_EQ(summary.title, "water again");
    EXPECT_EQ(summary.route, "#p opt=(calcfc,maxcycles=30) b3lyp/6-31g(d) scf=(maxcycle=200)");
    ASSERT_NE(summary.total_charge(), nullptr);
    EXPECT_EQ(summary.total_charge()->charge, -1);
    EXPECT_EQ(summary.total_charge()->multiplicity, 2);
    EXPECT_EQ(summary.functions, 19);
    EXPECT_EQ(summary.electrons, 11);
    ASSERT_TRUE(summary.energy);
    EXPECT_EQ(summary.energy->value, -76.2);
    EXPECT_EQ(summary.energy->kind, EnergyKind::MP2);
    EXPECT_EQ(summary.termination(), StepTermination::Normal);
}

TEST(FormattedCheckpoint, TurnsBohrIntoAngstromAndFindsGhosts) {
    const OutputSummary summary = diagnosed(whole()).summary;
    ASSERT_TRUE(summary.last);
    const OutputGeometry& geometry = summary.last->geometry;
    EXPECT_EQ(geometry.frame, OutputFrame::Standard);
    ASSERT_EQ(geometry.atoms.size(), 3U);
    EXPECT_EQ(geometry.atoms[0].number, 8);
    EXPECT_EQ(geometry.atoms[1].number, 1);
    EXPECT_EQ(geometry.atoms[2].number, 0);
    EXPECT_NEAR(geometry.atoms[1].position[1], 1.0, 1e-8);
    EXPECT_NEAR(geometry.atoms[0].position[1], 0.0, 1e-90);
    EXPECT_GT(geometry.atoms[0].position[1], 0.0);  // the exponent of three digits without an E
}

TEST(FormattedCheckpoint, SaysHowTheJobEnded) {
    const struct {
        const char* status;
        StepTermination termination;
        const char* cause;
    } cases[] = {
        {"1", StepTermination::Normal, ""}, {"3", StepTermination::Error, "opt_steps"}, {"-1", StepTermination::Error, ""}};
    for (const auto& each : cases) {
        const Diagnosis diagnosis = diagnosed(whole("FOpt", each.status));
        EXPECT_EQ(diagnosis.summary.termination(), each.termination) << each.status;
        EXPECT_EQ(diagnosis.cause, each.cause) << each.status;
    }
    const Diagnosis silent = diagnosed(head() + molecule() + places());
    EXPECT_EQ(silent.summary.termination(), StepTermination::Normal);
    EXPECT_FALSE(silent.summary.checkpoint->status);
    EXPECT_EQ(silent.summary.title, "water");
    EXPECT_TRUE(silent.summary.route.empty());
    EXPECT_FALSE(silent.summary.energy);
}

// Geometries of steps, and vibrations, may be left over from an older job.
TEST(FormattedCheckpoint, PassesOverWhatMayBeStale) {
    const std::string old = numbers("Opt point       1 Geometries", std::vector<std::string>(45, "7.00000000E+00")) +
                            heading("Number of Normal Modes", 'I', "1") + numbers("Vib-E2", {"-5.00000000E+02"}) +
                            numbers("Vib-Modes", std::vector<std::string>(9, "1.00000000E-01"));
    const OutputSummary single = diagnosed(whole("SP") + old).summary;
    EXPECT_FALSE(single.frequencies);
    EXPECT_NEAR(single.last->geometry.atoms[1].position[1], 1.0, 1e-8);
    const OutputSummary own = diagnosed(whole("Freq") + old).summary;
    ASSERT_TRUE(own.frequencies);
    EXPECT_EQ(own.frequencies->count, 1U);
    EXPECT_EQ(own.frequencies->imaginary, 1U);
    EXPECT_EQ(own.frequencies->lowest, -500);
}

TEST(FormattedCheckpoint, TellsModesByAtom) {
    class Modes final : public OutputVisitor {
       public:
        void on_modes(const OutputModes& modes) override { all = modes; }
        OutputModes all;
    } visitor;
    std::vector<std::string> rows;
    for (int i = 0; i < 18; ++i) {
        rows.push_back(std::to_string(i) + ".0E+00");
    }
    const std::string text = whole("Freq") + heading("Number of Normal Modes", 'I', "2") +
                             numbers("Vib-E2", {"1.50000000E+03", "3.60000000E+03", "1.00000000E+00"}) +
                             numbers("Vib-Modes", rows);
    read_output(*text_source(text), visitor);
    EXPECT_EQ(visitor.all.frequencies, (std::vector<double>{1500, 3600}));
    EXPECT_EQ(visitor.all.atoms, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(visitor.all.displacements[0][1], (std::array<double, 3>{3, 4, 5}));
    EXPECT_EQ(visitor.all.displacements[1][0], (std::array<double, 3>{9, 10, 11}));
}

TEST(FormattedCheckpoint, NoticesThatItWasCutOff) {
    const std::string text = whole();
    const std::size_t coordinates = text.find("SCF Energy");
    std::size_t refused = 0;
    for (std::size_t size = head().size(); size < text.size(); size += 3) {
        const std::string cut = text.substr(0, size);
        try {
            const Diagnosis diagnosis = diagnosed(cut);
            EXPECT_GE(size, coordinates) << size;
            EXPECT_EQ(diagnosis.summary.last->geometry.atoms.size(), 3U);
        } catch (const OutputError& error) {
            ++refused;
            EXPECT_EQ(std::string(error.what()).rfind("formatted checkpoint: ", 0), 0U) << error.what();
        }
    }
    EXPECT_EQ(refused, (coordinates - head().size() + 2) / 3);
    EXPECT_FALSE(diagnosed(text.substr(0, text.size() - 30)).summary.checkpoint->is_whole);
    EXPECT_FALSE(diagnosed(whole() + array_heading("Alpha MO coefficients", 'R', 100) + "  1.00000000E+00\n")
                     .summary.checkpoint->is_whole);
}

TEST(FormattedCheckpoint, RefusesWhatCannotBeRead) {
    const struct {
        std::string text;
        const char* says;
    } cases[] = {
        {head() + molecule(), "formatted checkpoint: it ends before the coordinates of the atoms"},
        {head() + places(), "formatted checkpoint: it ends before the coordinates of the atoms"},
        {head() + heading("Charge", 'I', "one"), "formatted checkpoint: 'Charge' (line 4) is no integer"},
        {head() + heading("Charge", 'I', "99999999999"), "formatted checkpoint: 'Charge' (line 4) is no integer"},
        {head() + "Atomic numbers                             I   N=        many\n",
         "formatted checkpoint: 'Atomic numbers' (line 4) does not say how many values it has"},
        {head() + "Atomic numbers                             I   N=          -3\n",
         "formatted checkpoint: 'Atomic numbers' (line 4) does not say how many values it has"},
        {head() + array_heading("Atomic numbers", 'I', 999999999999) + "           8\n" + heading("Charge", 'I', "0"),
         "formatted checkpoint: 'Atomic numbers' (line 4) has 1 of 999999999999 values"},
        {head() + array_heading("Atomic numbers", 'I', 2) + "           8    eight\n",
         "formatted checkpoint: 'Atomic numbers' (line 4) holds what is no number: line 5"},
        {head() + array_heading("Atomic numbers", 'I', 1) + "         219\n" +
             numbers("Current cartesian coordinates", {"0.0", "0.0", "0.0"}),
         "formatted checkpoint: 'Atomic numbers' (line 4) holds what is no atomic number"},
        {head() + array_heading("Atomic numbers", 'I', 1) + "         1.5\n" +
             numbers("Current cartesian coordinates", {"0.0", "0.0", "0.0"}),
         "formatted checkpoint: 'Atomic numbers' (line 4) holds what is no atomic number"},
        {head() + molecule() + numbers("Current cartesian coordinates", {"0.0", "0.0", "0.0"}),
         "formatted checkpoint: 'Current cartesian coordinates' (line 11) does not have three values for each atom"},
        {head() + molecule() + numbers("Current cartesian coordinates", {"0.0", "nan", "0.0"}),
         "formatted checkpoint: 'Current cartesian coordinates' (line 11) holds what is no number: line 12"},
        {head() + molecule() + numbers("Current cartesian coordinates", {"0.0", "****", "0.0"}),
         "formatted checkpoint: 'Current cartesian coordinates' (line 11) holds what is no number: line 12"},
    };
    for (const auto& each : cases) {
        try {
            diagnosed(each.text);
            ADD_FAILURE() << each.says;
        } catch (const OutputError& error) {
            EXPECT_STREQ(error.what(), each.says);
        }
    }
}

TEST(FormattedCheckpoint, IsToldFromOtherTexts) {
    const std::string texts[] = {"",
                                 "water\n",
                                 "water\nFOpt\n",
                                 "water\nFOpt\nCharge 0\n",
                                 "\n\n\n",
                                 "water\n FOpt     RHF\n" + heading("Charge", 'I', "0"),
                                 "water\nF0pt      RHF\n" + heading("Charge", 'I', "0"),
                                 "water\nFOpt      RHF\n" + heading("Charge", 'X', "0")};
    for (const std::string& text : texts) {
        EXPECT_THROW(diagnosed(text), NoOutput) << text;
    }
}

}  // namespace fchk
