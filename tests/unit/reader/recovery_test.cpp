// How reading goes on behind what it cannot read: what is told, and what is read all the same.
#include <gjf/core/reader/job_layout.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using FaultTexts = std::vector<std::string>;

struct RecoveryCase {
    std::string text;
    FaultTexts faults;  // place and message
    std::string read;
};

// What a job holds, shortly: Link 0 and route, title, pairs, atoms with their coordinates, rows, variables, bonds, sections.
std::string job_shown(const GJFData& job) {
    std::string text = job.control.chk.value_or("");
    for (const std::string& word : job.control.route_keywords) {
        text += ' ' + word;
    }
    text += "|" + job.title + "|";
    for (const ChargeSpinPair& pair : job.geom.charge_spin_pairs()) {
        text += std::to_string(pair.charge) + ' ' + std::to_string(pair.multiplicity) + ';';
    }
    text += "|";
    for (const AtomCoord& atom : job.geom.atoms) {
        text += atom.info.element + ' ' + atom.x_ref.text + ' ' + atom.y_ref.text + ' ' + atom.z_ref.text + ';';
    }
    for (const ZMatrixEntry& row : job.geom.zmatrix_entries) {
        text += row.info.element + (row.bond ? ' ' + row.bond->value : "") + (row.angle ? ' ' + row.angle->value : "") + ';';
    }
    for (const auto* list : {&job.geom.variables, &job.geom.constants, &job.geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            text += variable.name + '=' + variable.value + ';';
        }
    }
    for (const ExtraInputSection& section : job.extra_inputs) {
        text += '|' + section.text();
    }
    return text;
}

void expect_recovery(const std::vector<RecoveryCase>& cases) {
    for (const RecoveryCase& c : cases) {
        const std::vector<JobReading> readings = read_jobs_with_layout(c.text);
        ASSERT_EQ(readings.size(), 1u) << c.text;
        FaultTexts faults;
        for (const ReadingFault& fault : readings[0].faults) {
            faults.push_back("<" + std::string(fault.place.in(c.text)) + "> " + fault.message);
        }
        EXPECT_EQ(faults, c.faults) << c.text;
        EXPECT_EQ(job_shown(readings[0].job), c.read) << c.text;
        EXPECT_EQ(readings[0].error.empty(), c.faults.empty()) << c.text;
    }
}

const std::string recovery_head = "# hf\n\nt\n\n";

TEST(Recovery, PassesOverControlLines) {
    const std::string rest = "\n\nt\n\n0 1\nH 0 0 0\n";
    expect_recovery({
        {"chk=a\n%chk=b\n# hf" + rest, {"<chk=a> Invalid control line: chk=a"}, "b # hf|t|0 1;|H 0 0 0;"},
        {"$Run\n#hf" + rest, {"<$Run> Invalid control line: $Run"}, " #hf|t|0 1;|H 0 0 0;"},
        {"notes\n\nmore\nof them\n\n# hf" + rest,
         {"<notes> Invalid control line: notes", "<more> Invalid control line: more",
          "<of them> Invalid control line: of them"},
         " # hf|t|0 1;|H 0 0 0;"},
        {"%chk=a\nopt\n# hf\nfreq" + rest, {"<opt> Invalid control line: opt"}, "a # hf freq|t|0 1;|H 0 0 0;"},
        {"Hello\n", {"<Hello> Invalid control line: Hello", "<Hello> Missing title section"}, "|||"},
        {"hf" + rest, {"<hf> Invalid control line: hf"}, "|t|0 1;|H 0 0 0;"},
    });
}

TEST(Recovery, EndsWhereNothingFollows) {
    expect_recovery({
        {"! c\n", {"<> Empty file or invalid format"}, "|||"},
        {"# hf\n", {"<# hf> Missing title section"}, " # hf|||"},
        {"# hf\n\none\ntwo\n", {"<one> Missing geometry section"}, " # hf|one\ntwo||"},
        {"# hf geom=check\n\nt\n", {"<t> Missing charge/spin line for geom=check"}, " # hf geom=check|t||"},
        {recovery_head + "0 1\n\nleft\n", {"<0 1> Geometry section must have at least 2 lines"}, " # hf|t|0 1;||left"},
        {recovery_head + "H 0 0 0\n", {"<H 0 0 0> Geometry section must have at least 2 lines"}, " # hf|t||"},
        {"# hf opt=qst2\n\nt\n\n0 1\nH 0 0 0\n\nsecond\n",
         {"<second> Incomplete QST2/QST3 second title and molecule section: missing molecule specification block"},
         " # hf opt=qst2|t|0 1;|H 0 0 0;|second"},
    });
}

TEST(Recovery, ReadsAtomsBehindAChargeLineThatGivesNoPairs) {
    expect_recovery({
        {recovery_head + "0 1 0\nH 0 0 0\n", {"<0 1 0> Invalid charge/spin line: 0 1 0"}, " # hf|t||H 0 0 0;"},
        {recovery_head + "0 one ! c\nH 0 0 0\n", {"<one> Invalid charge/spin line: 0 one ! c"}, " # hf|t||H 0 0 0;"},
        {recovery_head + "0 99999999999\nO\nH 1 r\n",
         {"<99999999999> charge or multiplicity beyond 32 bits"},
         " # hf|t||O;H r;"},
        {recovery_head + "0.5 1\nH 0 0 0\nH 0 0\n",
         {"<0.5> Invalid charge/spin line: 0.5 1", "<H 0 0> Invalid coordinate line: H 0 0"},
         " # hf|t||H 0 0 0;"},
        {"# hf geom=check\n\nt\n\n0 x\n\nleft\n", {"<x> Invalid charge/spin line: 0 x"}, " # hf geom=check|t|||left"},
    });
}

TEST(Recovery, KeepsAtomsOfWhichOnlyThePositionCannotBeRead) {
    expect_recovery({
        {recovery_head + "0 1\nH 0 0 0\nC 0 0 1e999\nN 0 0 1\n",
         {"<1e999> Invalid coordinate values: C 0 0 1e999"},
         " # hf|t|0 1;|H 0 0 0;C   ;N 0 0 1;"},
        {recovery_head + "0 1\nC 0 O.5 0\nH 0 nan 0\n",
         {"<O.5> Invalid coordinate value: O.5", "<nan> Invalid coordinate values: H 0 nan 0"},
         " # hf|t|0 1;|C   ;H   ;"},
        {recovery_head + "0 1\nC 1 2.0.0 3 ! c\n", {"<2.0.0> Invalid coordinate value: 2.0.0"}, " # hf|t|0 1;|C   ;"},
        {recovery_head + "0 1\nC 99999999999 1 2 3\n",
         {"<99999999999> Invalid coordinate values: C 99999999999 1 2 3"},
         " # hf|t|0 1;|C   ;"},
        {recovery_head + "0 1\nC 0 0 0\nH 0 0\nr\nH 0 0 1\n",
         {"<H 0 0> Invalid coordinate line: H 0 0", "<r> Invalid coordinate line: r"},
         " # hf|t|0 1;|C 0 0 0;H 0 0 1;"},
        {recovery_head + "0 1\nH 0 0 r\nr=,\ns=1\n",
         {"<r=,> Invalid Cartesian coordinate variable line: r=,"},
         " # hf|t|0 1;|H 0 0 r;s=1;"},
    });
}

TEST(Recovery, LeavesOutLinesOfAZMatrix) {
    expect_recovery({
        {recovery_head + "0 1\nO\nH 1 r\nr=1\nx\ny=2\n",
         {"<x> Invalid Z-matrix variable line: x"},
         " # hf|t|0 1;|O;H r;r=1;y=2;"},
        {recovery_head + "0 1\nO\nH 1 r 99999999999 a\nH 1 r\n",
         {"<99999999999> Invalid Z-matrix geometry section"},
         " # hf|t|0 1;|O;H r;H r;"},
        {recovery_head + "0 1\nVariables:\nr=1\n", {"<r=1> Invalid Z-matrix geometry section"}, " # hf|t|0 1;|r=1;"},
    });
}

TEST(Recovery, LeavesOutLinesOfConnectivity) {
    const std::string job = "# hf geom=connectivity\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\n";
    const std::string read = " # hf geom=connectivity|t|0 1;|H 0 0 0;H 0 0 1;|";
    expect_recovery({
        {job + "1 2 x\n2 1 1.0\n", {"<1 2 x> Invalid connectivity bond order 'x' in line: 1 2 x"}, read + "1 2 1.0\n2"},
        {job + "1 3 1.0\n1 2 2.0\n2 y 1.0\n",
         {"<2 y 1.0> Invalid connectivity atom index 'y' in line: 2 y 1.0",
          "<1 3 1.0> 3 references atom index outside the geometry atom count"},
         read + "1 2 2.0\n2"},
        {job + "left\n\nover\n", {"<left> Invalid connectivity atom index 'left' in line: left"}, read + "|over"},
    });
}

TEST(Recovery, TellsWhatIsInDoubt) {
    struct Doubt {
        std::string text;
        bool atoms;
        bool structure;
    };
    const Doubt doubts[] = {
        {recovery_head + "0 1\nH 0 0 0\n", false, false},
        {"x\n" + recovery_head + "0 1\nH 0 0 0\n", false, false},
        {recovery_head + "0 1\nH 0 0 1e999\n", false, false},
        {recovery_head + "0 1\nH 0 0 0\nH 0 0\n", true, false},
        {recovery_head + "0 1\nO\nH 1 r\nr=1\nx\n", true, false},
        {recovery_head + "0 1 2\nH 0 0 0\n", false, true},
        {recovery_head + "0 1\n", false, true},
        {"# hf\n", false, true},
    };
    for (const Doubt& c : doubts) {
        const JobReading reading = read_jobs_with_layout(c.text).at(0);
        EXPECT_EQ(reading.atoms_uncertain, c.atoms) << c.text;
        EXPECT_EQ(reading.structure_uncertain, c.structure) << c.text;
    }
}

TEST(Recovery, DoesNotBoundAtomNumbersWhereAtomsAreInDoubt) {
    const std::string text = "# hf geom=connectivity\n\nt\n\n0 1\nH 0 0 0\nH 0 0\n\n1 2 1.0\n2\n";
    const JobReading reading = read_jobs_with_layout(text).at(0);
    ASSERT_EQ(reading.faults.size(), 1u);
    EXPECT_EQ(reading.error_line, 7u);
    EXPECT_EQ(reading.job.connectivity()->bonds.size(), 1u);
}

TEST(Recovery, ListsNothingAsMissingWhereTheStructureIsInDoubt) {
    EXPECT_TRUE(read_jobs_with_layout("# hf/gen\n\nt\n\n0\nH 0 0 0\n").at(0).layout.missing.empty());
    EXPECT_EQ(read_jobs_with_layout("# hf/gen\n\nt\n\n0 1\nH 0 0 0\nH 0 0\n").at(0).layout.missing.size(), 1u);
}

}  // namespace
}  // namespace quor::input::gaussian
