// Blocks that no condition of the first table names, files that stand for parts of a job, and molecules of a checkpoint.
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/section_name.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Kinds = std::vector<int>;

Kinds kinds_in(const GJFData& job) {
    Kinds kinds;
    for (const ExtraInputSection& section : job.extra_inputs) {
        kinds.push_back(static_cast<int>(section.kind));
    }
    return kinds;
}

std::string job_of(const std::string& route, const std::string& behind) {
    return "# " + route + "\n\nt\n\n0 1\nO 0. 0. 0. H\nH 0. 0. 1. L\nH 0. 1. 0. L\n" + behind + "\n";
}

TEST(LeftOverBlocks, AreGivenToWhatGaussianReadsThere) {
    struct Case {
        std::string route;
        std::string behind;
        Kinds kinds;
    };
    const std::string basis = "\nO H 0\n6-31g\n****\n";
    const Case cases[] = {
        {"oniom(b3lyp/gen:uff)", basis, {25}},
        {"oniom(b3lyp/6-31g(d):hf/genecp:uff)", basis + "\nO 0\nsdd\n", {25, 28}},
        {"oniom(b3lyp/gen:hf/gen)", basis + basis, {25, 25}},
        {"mp2(readwindow)/6-31g", "\n2,0\n", {40}},
        {"ccsd(t,rw)/6-31g", "\n2,0\n", {40}},
        {"b2plyp=rw/6-31g", "\n2,0\n", {40}},
        {"uff geom=modconnect", "\n1 2 1.0\n", {1}},
        {"hf/sto-3g geom=modredundant", "\nB 1 2 F\n", {3}},
        {"hf/sto-3g popt=(modredundant,ts)", "\nB 1 2 F\n", {3}},
        {"hf/sto-3g pop=nbo7read", "\n$nbo\n\nbndidx\n $end\n", {46}},
        {"hf/sto-3g pop=nbo7read", "\n$nbo file=a $end\n$core 1 1 1 $end\n", {46, 46}},
        {"hf/sto-3g pop=nboread", "\n$nbo bndidx $end\n\n$choose\n lone 1 2 end\n$end\n", {46, 46}},
        {"am1=(input)", "\nMethod=1\n****\n", {23}},
        {"pm3=both", "\nMethod=1\n****\n\nO 1\n", {23, 24}},
        {"hf/sto-3g scrf=(smd,solvent=generic)", "\neps=10.\nepsinf=2.\n", {30}},
        {"hf/sto-3g output=wfx", "\na.wfx\n", {54}},
        // Where nothing of this is asked for, or is there already, a block stays left over.
        {"oniom(b3lyp/6-31g(d):uff)", basis, {0}},
        {"mp2/6-31g", "\n2,0\n", {0}},
        {"hf/sto-3g pop=nboread", "\n$nbo bndidx $end\n\nno keys\n", {46, 0}},
        {"hf/sto-3g geom=modredundant opt=modredundant", "\nB 1 2 F\n\nB 1 3 F\n", {3, 0}},
        {"hf/sto-3g output=wfx", "", {}},
    };
    for (const Case& block : cases) {
        const std::string text = job_of(block.route, block.behind);
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(kinds_in(reading.job), block.kinds) << text;
        EXPECT_TRUE(reading.layout.missing.empty()) << text;
        EXPECT_EQ(reading.error, "") << text;
        // An edit of something else leaves every byte.
        GJFDocument document(text);
        document.job(0).set_title("other");
        EXPECT_EQ(document.to_text(),
                  text.substr(0, text.find("\nt\n")) + "\nother\n" + text.substr(text.find("\nt\n") + 3));
    }
}

TEST(FilesByName, StandForPartsOfAJob) {
    const std::string atoms = "O 0. 0. 0.\nH 0. 0. 1.\nH 0. 1. 0.\n";
    struct Case {
        std::string text;
        std::size_t atoms;
        bool uncertain;
    };
    const Case cases[] = {
        {"# hf\n\nt\n\n0 1\n@mol.xyz\n", 0, true},
        {"# hf\n\nt\n\n0 1\nO 0. 0. 0.\n@mol.xyz/N\nH 0. 0. 1.\n", 2, true},
        {"# hf\n\nt\n\n@charge_and_molecule\n", 0, true},
        {"# hf\n\nt\n\n0 1\nO\nH 1 r\n\n@values\n", 2, true},
        {"# hf\n\nt\n\n0 1\nO 0. 0. x\n\n@values\n", 1, true},
        {"@link0\n# hf\n\nt\n\n0 1\n" + atoms, 3, false},
        {"@route\n\nt\n\n0 1\n" + atoms, 3, false},
        {"# hf geom=connectivity\n\nt\n\n0 1\n" + atoms + "\n@bonds\n", 3, false},
        {"# hf/gen\n\nt\n\n0 1\n" + atoms + "\n@basis.gbs/N\n", 3, false},
        {"# hf opt=qst2\n\nt\n\n0 1\n" + atoms + "\n@second\n", 3, false},
    };
    for (const Case& job : cases) {
        const std::string text = job.text + "\n";
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(reading.error, "") << text;
        EXPECT_EQ(reading.job.geom.atom_count(), job.atoms) << text;
        EXPECT_EQ(reading.atoms_uncertain, job.uncertain) << text;
        EXPECT_EQ(GJFDocument(text).to_text(), text);
    }
    EXPECT_EQ(read_jobs_with_layout("@job\n").at(0).error, "");
    EXPECT_NE(read_jobs_with_layout("job\n").at(0).error, "");
    // What stands in the file would have to be renumbered.
    GJFDocument document("# hf\n\nt\n\n0 1\nO 0. 0. 0.\n@mol.xyz\nH 0. 0. 1.\n\n");
    document.job(0).remove_atoms({0});
    EXPECT_THROW(document.to_text(), GJFParseException);
}

TEST(MoleculesOfACheckpoint, MayBeChangedOrBuilt) {
    for (const char* lines : {"r1 0.96\na1 104.5 A\n", "B 1 2 F\n", "\nr1 0.96\n", "\nB 1 2 F\n"}) {
        const std::string text = std::string("# hf/sto-3g geom=modify guess=read\n\nt\n\n0 1\n") + lines + "\n";
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(reading.error, "") << text;
        EXPECT_EQ(reading.job.geom.atom_count(), 0U) << text;
        EXPECT_EQ(reading.job.geom.multiplicity, 1) << text;
        EXPECT_TRUE(reading.layout.missing.empty()) << text;
    }
    for (const char* text : {"# hf geom=modela\n\nt\n\n0 1\no h h\n\n", "# hf geom=(modela)\n\nt\n\n0 1\nc h h f h\n\n"}) {
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(reading.error, "") << text;
        EXPECT_TRUE(reading.atoms_uncertain) << text;
        EXPECT_EQ(reading.job.geom.molecule_lines.size(), 1U) << text;
    }
    for (const char* route : {"nonstd\n1/29=2,30=1/1;\n99//99;", "lst=restart", "lst(restart)"}) {
        EXPECT_EQ(read_jobs_with_layout(std::string("# ") + route + "\n\n").at(0).error, "") << route;
    }
    for (const char* route : {"nonstd\n1/29=0,30=1/1;\n99//99;", "lst", "hf geom=modredundant"}) {
        EXPECT_EQ(read_jobs_with_layout(std::string("# ") + route + "\n\n").at(0).error, "Missing title section") << route;
    }
}

TEST(MoleculesOfACheckpoint, HaveChangesThatAreCalledSo) {
    const auto name_in = [](const char* route) {
        return section_name(ExtraInputSectionKind::MMParameters, GJFParser::parse_control_section({route}));
    };
    for (const char* route : {"# hf geom=modify", "# hf Geom=(Check,Modify)", "# uff geom(modify) freq"}) {
        EXPECT_EQ(name_in(route), "changes to the checkpoint's geometry (geom=modify)") << route;
    }
    for (const char* route : {"# uff=softfirst", "# amber=modify", "# hf geom=modredundant", "# hf geom=check", "#"}) {
        EXPECT_EQ(name_in(route), "Molecular Mechanics parameters (hardfirst, softfirst, softonly or modify)") << route;
    }
    const ControlSection control = GJFParser::parse_control_section({"# hf geom=modify"});
    EXPECT_EQ(section_name(ExtraInputSectionKind::Connectivity, control),
              std::string(extra_input_kind_name(ExtraInputSectionKind::Connectivity)) + " (" +
                  extra_input_request(ExtraInputSectionKind::Connectivity) + ")");
}

TEST(ConnectivityRows, MayNameTheirNeighboursAlone) {
    const std::string head = "# uff geom=connectivity\n\nt\n\n0 1\nO 0. 0. 0.\nH 0. 0. 1.\nH 0. 1. 0.\n\n";
    const JobReading reading = read_jobs_with_layout(head + "2 1.0 3 1.0\n3 0.5\n\n").at(0);
    EXPECT_EQ(reading.error, "");
    ASSERT_EQ(reading.job.extra_inputs.size(), 1U);
    ASSERT_NE(reading.job.extra_inputs[0].connectivity(), nullptr);
    EXPECT_EQ(reading.job.extra_inputs[0].connectivity()->bonds.size(), 3U);
    for (const char* wrong : {"2 1.0 9 1.0\n", "2 1.0\nx 1.0\n", "1 2\n2 1.0\n3 x\n"}) {
        EXPECT_NE(read_jobs_with_layout(head + wrong + "\n").at(0).error, "") << wrong;
    }
}

TEST(WholeNumbers, WithALayerBehindThemAreCoordinates) {
    const std::string head = "# oniom(hf/sto-3g:uff)\n\nt\n\n0 1 0 1 0 1\n";
    for (const char* rows : {"C 1 0 0 H\nO 0 0 2 L\n", "C 1. 0. 0. H\nO 0. 0. 2. L\n"}) {
        const JobReading reading = read_jobs_with_layout(head + rows + "\n").at(0);
        EXPECT_EQ(reading.error, "");
        const std::vector<AtomPosition> places = positions(reading.job);
        ASSERT_EQ(places.size(), 2U) << rows;
        EXPECT_EQ(places[0].position, (Position{1, 0, 0})) << rows;
        EXPECT_EQ(places[1].position, (Position{0, 0, 2})) << rows;
    }
    const std::vector<AtomPosition> unknown = positions(read_jobs_with_layout(head + "C 1 0 x H\nO 0 0 2 L\n\n").at(0).job);
    ASSERT_EQ(unknown.size(), 2U);
    EXPECT_FALSE(unknown[0].position);
}

TEST(LastLines, MayEndInAnOldMark) {
    for (const char* end : {"\n\x1a", "\x1a", "\n\x1a\n"}) {
        const std::string text = std::string("# hf\n\nt\n\n0 1\nO 0. 0. 0.\n") + end;
        const JobReading reading = read_jobs_with_layout(text).at(0);
        EXPECT_EQ(reading.error, "");
        EXPECT_EQ(reading.job.geom.atoms.size(), 1U);
        EXPECT_TRUE(reading.job.extra_inputs.empty());
    }
}

}  // namespace
}  // namespace quor::input::gaussian
