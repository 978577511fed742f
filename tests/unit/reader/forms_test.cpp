// Forms that Gaussian reads and the class interface refuses: the reading takes them, and notes a harmless fault.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/job_places.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

struct Form {
    std::string text;
    std::string refusal;  // of the class interface; empty when it takes the text too
    std::size_t atoms;
    std::size_t variables;
    std::size_t sections;
};

std::string refusal_by_class(const std::string& text) {
    try {
        GJFParser::parse_string(text);
    } catch (const GJFParseException& error) {
        return std::string(error.what()).substr(std::string("GJF Parse Error: ").size());
    }
    return {};
}

void expect_forms(const std::vector<Form>& forms) {
    for (const Form& form : forms) {
        EXPECT_EQ(refusal_by_class(form.text), form.refusal) << form.text;
        const JobReading reading = read_jobs_with_layout(form.text).at(0);
        EXPECT_EQ(reading.error, "") << form.text;
        EXPECT_EQ(reading.error_line, 0u) << form.text;
        EXPECT_FALSE(reading.structure_uncertain) << form.text;
        EXPECT_EQ(reading.faults.empty(), form.refusal.empty()) << form.text;
        const GeomSection& geom = reading.job.geom;
        EXPECT_EQ(geom.atom_count(), form.atoms) << form.text;
        const std::size_t variables = geom.variables.size() + geom.constants.size() + geom.cartesian_variables.size();
        EXPECT_EQ(variables, form.variables) << form.text;
        EXPECT_EQ(reading.job.extra_inputs.size(), form.sections) << form.text;
    }
}

TEST(Forms, OfJobsThatGoOnFromACheckpoint) {
    const std::string no_title = "Missing title section";
    const std::string no_molecule = "Missing geometry section";
    const std::string no_atoms = "Geometry section must have at least 2 lines";
    expect_forms({
        {"#p opt=restart\n\n", no_title, 0, 0, 0},
        {"#p irc=(restart,maxpoints=60)", no_title, 0, 0, 0},
        {"# freq=restart\n", no_title, 0, 0, 0},
        {"# td=(restart,nstates=5) b3lyp/6-31g(d)\n", no_title, 0, 0, 0},
        {"# polar=restart\n", no_title, 0, 0, 0},
        {"# scan=restart\n", no_title, 0, 0, 0},
        {"# admp=restart\n", no_title, 0, 0, 0},
        {"#P Restart\n", no_title, 0, 0, 0},
        {"# rearchive\n", no_title, 0, 0, 0},
        {"# scrf=(oniompcm=A,restart)\n\nt\n\n0 1\n\n", no_atoms, 0, 0, 0},
        {"# opt=restart\n\nt\n\n0 1\n! as before\n\nleft\n", no_atoms, 0, 0, 1},
        {"# opt=restart\n\nt\n\n0 1\nH 0 0 0\n", "", 1, 0, 0},
        {"# g2=restart\n\nonly a title\n\n", no_molecule, 0, 0, 0},
        {"# hf geom=modify\n\nt\n\n0 1\n\nr1 0.96\n\n", no_atoms, 0, 0, 1},
        {"$RunGauss\n# hf\n\nt\n\n0 1\nH 0 0 0\n", "Invalid control line: $RunGauss", 1, 0, 0},
        {"# hf\n\n\n0 1\nH 0.0 0.0 1.5D-01\n", "Invalid coordinate value: 1.5D-01", 1, 0, 0},
        {"$RunGauss\n%mem=1GB\n\n# hf\n\nt\n\n0 1\nH 0 0 0\n", "Invalid control line: $RunGauss", 1, 0, 0},
    });
}

TEST(Forms, OfJobsThatGoOnMissNothing) {
    for (const char* route : {"# admp=restart", "# bomd=restart", "# freq=(restart,readisotopes)", "# hf/gen opt=restart"}) {
        EXPECT_TRUE(read_jobs_with_layout(std::string(route) + "\n\n").at(0).layout.missing.empty()) << route;
        EXPECT_TRUE(read_jobs_with_layout(std::string(route) + "\n\nt\n\n").at(0).layout.missing.empty()) << route;
    }
    for (const char* route : {"# hf/gen", "# bomd", "# hf/gen geom=check opt=restart"}) {
        const std::string behind = "\n\nt\n\n0 1\nH 0. 0. 0.\n\n";
        EXPECT_EQ(read_jobs_with_layout(route + behind).at(0).layout.missing.size(), 1u) << route;
    }
}

TEST(Forms, OfChargeLines) {
    const std::string head = "# hf\n\nt\n\n";
    for (const std::string& line :
         {std::string("0/1"), std::string("0 / 1 "), std::string("0/ 1 ! c"), std::string("0,1/0,1")}) {
        const std::string text = head + line + "\nH 0 0 0\n";
        expect_forms({{text, "Invalid charge/spin line: " + line, 1, 0, 0}});
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(reading.job.geom.charge_spin_pairs().at(0).charge, 0) << line;
        EXPECT_EQ(reading.job.geom.charge_spin_pairs().at(0).multiplicity, 1) << line;
        EXPECT_EQ(charge_places(text, reading.places.charge_line).at(1).in(text), "1") << line;
    }
    for (const char* line : {"0/", "/", "//", "0/1/2", "0/x", "0\\1", "0.5/1", "99999999999/x"}) {
        const JobReading reading = read_jobs_with_layout(head + line + "\nH 0 0 0\n").at(0);
        EXPECT_EQ(reading.error, std::string("Invalid charge/spin line: ") + line);
    }
}

TEST(Forms, OfVariables) {
    const std::string head = "# hf\n\nt\n\n0 1\n";
    const std::string water = head + "O\nH 1 r\nH 1 r 2 a\n";
    expect_forms({
        {head + "H 0 0 v1\nH 0 0 -v1\nv1 4.8\n", "Invalid coordinate line: v1 4.8", 2, 1, 0},
        {head + "H 0 0 v1\n\nv1 4.8\n", "", 1, 1, 0},
        {head + "H 0 0 v1\n\nv2 4.8\n", "", 1, 0, 1},
        {head + "H 0 0 v1\n\nv1 4.8 2.0\n", "", 1, 0, 1},
        {water + "\nr 0.96 D\na 104.5 F\n", "", 3, 2, 0},
        {water + "\nr 0.96 H 0.55\na 104.5 10 1.0\n", "", 3, 2, 0},
        {water + "\nr 0.96 xx\na 104.5\n", "", 3, 0, 1},
        {water + "\nVariable:\nr 0.96\nConstant:\na 104.5\n", "", 3, 2, 0},
        {water + "r 0.96\nConstant:\na 104.5\n", "Invalid Z-matrix variable line: Constant:", 3, 2, 0},
    });
}

TEST(Forms, OfIncludedFiles) {
    const std::string head = "# hf\n\nt\n\n0 1\n";
    for (const std::string& text :
         {head + "@molecule.txt\n", head + "H 0 0 0\n@more.txt/N\nH 0 0 1\n", head + "O\n@rows\nH 1 0.9\n"}) {
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(reading.error, "") << text;
        EXPECT_TRUE(reading.atoms_uncertain) << text;
        for (const AtomCoord& atom : reading.job.geom.atoms) {
            EXPECT_EQ(atom.info.element, "H");
        }
    }
}

TEST(Forms, OfNoKindAreFaults) {
    const std::string head = "# hf\n\nt\n\n0 1\n";
    for (const std::string& text : std::vector<std::string>{
             "# opt\n", "# hf geom=modredundant\n\nt\n\n0 1\n\n", "# hf scf=qc\n\nt\n", "$Run\n# hf\n\nt\n\n0 1\nH 0 0 0\n",
             head + "H 0 0 v1\nv2 4.8\n", head + "H 0 0 v1\nv1 x\n", head + "H 0 0 v1\nv1 4.8 2\n", head + "H 0 0 0\n@\n",
             head + "H 0 0 0\nVariable:\n"}) {
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_NE(reading.error, "") << text;
        EXPECT_EQ(reading.error, refusal_by_class(text)) << text;
    }
}

}  // namespace
}  // namespace quor::input::gaussian
