// Texts of other kinds get one finding that says what they are and what to do.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using FindingList = std::vector<Finding>;

TEST(ForeignTexts, GetOneFinding) {
    using namespace std::string_literals;
    const struct {
        std::string text;
        std::string begin;
        std::size_t line;
    } cases[] = {
        {" Entering Gaussian System, Link 0=g16\n Input=a.gjf\n # hf/sto-3g\n", "this is an output", 1},
        {"\n Entering Link 1 = /opt/l1.exe PID= 1.\n # opt\n", "this is an output", 2},
        {"3\nwater\nO 0.0 0.0 0.1\nH 0 0.7 -0.5\nH 0 -0.7 -0.5\n", "this is an .xyz file", 1},
        {"  2  \r\n\r\n6 0.0 0.0 0.1\r\n1 0 0 1\r\n", "this is an .xyz file", 1},
        {"ATOM      1  N   ALA A   1      11.104   6.134  -6.504\nEND\n", "this is a PDB file", 1},
        {"HEADER    OXYGEN TRANSPORT\nATOM      1  N   ALA A   1\n", "this is a PDB file", 1},
        {"! B3LYP def2-SVP Opt\n%maxcore 2000\n\n* xyz 0 1\nH 0 0 0\n*\n", "this is input of ORCA", 4},
        {"!HF\n*xyz -1 2\nH 0 0 0\n*\n", "this is input of ORCA", 2},
        {"# of a friend\n! B3LYP def2-SVP\n%pal nprocs 4 end\n* xyzfile 0 1 a.xyz\n", "this is input of ORCA", 4},
        {"! HF\n*int 0 1\n", "this is input of ORCA", 2},
        {"! HF\n* gzmt 0 1\n", "this is input of ORCA", 2},
        {"\xFF\xFE#\0 \0h\0f\0"s, "this text is encoded in UTF-16", 1},
        {"#\0 \0h\0f\0\n\0"s, "this text is encoded in UTF-16", 1},
        {"# hf/sto-3g\r\rt\r\r0 1\rH 0 0 0\r", "the lines end in carriage returns alone", 1},
        {"# hf/sto-3g\n\nt\n\n0 1\n1\nhelium\nHe 0.0 0.0 0.0\n\n", "an .xyz file stands here", 6},
        {"# hf/sto-3g\n\nt\n\n0 1\n1\n\nHe 0.0 0.0 0.0\n\n", "an .xyz file stands here", 6},
    };
    for (const auto& c : cases) {
        const FindingList findings = check_text(c.text);
        ASSERT_EQ(findings.size(), 1u) << c.text;
        EXPECT_EQ(findings[0].code, "GJF-P001") << c.text;
        EXPECT_EQ(findings[0].severity, Severity::Error) << c.text;
        EXPECT_EQ(findings[0].message.substr(0, c.begin.size()), c.begin) << c.text;
        EXPECT_EQ(findings[0].line, c.line) << c.text;
        EXPECT_NE(findings[0].hint, "") << c.text;
    }
}

TEST(ForeignTexts, AreNoJobs) {
    const std::string helium = "\n\nEntering Gaussian System\n\n0 1\nHe 0.0 0.0 0.0\n\n";
    for (const std::string& text : {
             "# hf/sto-3g" + helium,
             "! a comment\n# hf/sto-3g" + helium,
             std::string("# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0.0 0.0 0.0\r\n\r\n"),
             // Atomic numbers as labels of a Z-matrix.
             std::string("# hf/sto-3g\n\nt\n\n0 1\n8\n1 1 0.96\n1 1 0.96 2 104.5\n\n"),
             std::string("# hf/sto-3g\n\n3\nwater\nO 0.0 0.0 0.1\n\n0 1\nHe 0.0 0.0 0.0\n\n"),
         }) {
        const FindingList findings = check_text(text);
        EXPECT_TRUE(findings.empty()) << text << findings.front().message;
    }
}

TEST(ForeignTexts, MayBeAnOldMarkAlone) {
    const std::string job = "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";
    for (const char* end : {"\x1a", "\x1a\n"}) {
        const FindingList findings = check_text(job + end);
        ASSERT_EQ(findings.size(), 1u);
        EXPECT_EQ(findings[0].code + ' ' + severity_name(findings[0].severity), "GJF-T002 note");
        EXPECT_EQ(findings[0].line, 8u);
        EXPECT_EQ(findings[0].hint, "remove it");
        ASSERT_EQ(findings[0].fixes.size(), 1u);
        EXPECT_EQ(findings[0].fixes[0].edits[0].begin, job.size());
    }
    EXPECT_TRUE(check_text(job + "\n").empty());
}

TEST(ForeignTexts, CanBeSilenced) { EXPECT_TRUE(check_text("3\nwater\nO 0 0 0\n", {{"GJF-P001"}}).empty()); }

}  // namespace
}  // namespace quor::input::gaussian
