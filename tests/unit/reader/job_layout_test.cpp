// Where the parts of a job stand in its text, and where a failure was detected.
#include <gjf/core/reader/job_layout.hpp>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

JobReading read_one(const std::string& text) {
    std::vector<JobReading> readings = read_jobs_with_layout(text);
    EXPECT_EQ(readings.size(), 1u);
    return readings.empty() ? JobReading() : std::move(readings.front());
}

std::vector<std::size_t> ends(const LineRange& range) { return {range.first, range.last}; }

using Ends = std::vector<std::size_t>;

TEST(JobLayout, GivesTheLineOfEveryPartOfACartesianJob) {
    const JobReading reading = read_one(
        "%chk=a.chk\n"          // 1
        "%mem=1GB\n"            // 2
        "#p b3lyp/6-31g(d)\n"   // 3
        "  opt=modredundant\n"  // 4
        "\n"                    // 5
        "two\nlines\n"          // 6-7
        "\n"                    // 8
        "0 1\n"                 // 9
        "O 0.0 0.0 0.1\n"       // 10
        "! a comment\n"         // 11
        "H 0.0 r -0.5\n"        // 12
        "r=0.7\n"               // 13
        "\n\n"                  // 14-15
        "B 1 2 F\nA 1 2 1 F\n"  // 16-17
        "\n"                    // 18
        "something else\n");    // 19
    const JobLayout& layout = reading.layout;
    EXPECT_EQ(reading.error, "");
    EXPECT_EQ(layout.number, 1u);
    EXPECT_EQ(ends(layout.lines), (Ends{1, 19}));
    EXPECT_EQ(layout.link0_lines, (std::vector<std::size_t>{1, 2}));
    ASSERT_EQ(layout.route_words.size(), reading.job.control.route_keywords.size());
    ASSERT_EQ(layout.route_words.size(), 3u);
    const TextPlace& option = layout.route_words[2];
    EXPECT_EQ(std::make_tuple(option.line, option.column, option.length), std::make_tuple(4u, 3u, 16u));
    EXPECT_EQ(ends(layout.title), (Ends{6, 7}));
    EXPECT_EQ(layout.charge_line, 9u);
    EXPECT_EQ(ends(layout.molecule), (Ends{10, 13}));
    EXPECT_EQ(layout.atoms, (std::vector<std::size_t>{10, 12}));
    EXPECT_EQ(layout.cartesian_variables, (std::vector<std::size_t>{13}));
    ASSERT_EQ(layout.sections.size(), 2u);
    EXPECT_EQ(layout.sections[0].kind, Kind::CoordinateModifications);
    EXPECT_EQ(ends(layout.sections[0].lines), (Ends{16, 17}));
    EXPECT_EQ(layout.sections[1].kind, Kind::Unknown);
    EXPECT_EQ(ends(layout.sections[1].lines), (Ends{19, 19}));
    EXPECT_TRUE(layout.missing.empty());
    EXPECT_TRUE(layout.overlays.empty());
}

TEST(JobLayout, GivesTheLinesOfAZMatrixAndItsSections) {
    const JobReading reading = read_one("# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 r\nH 1 r 2 a\n\nr 0.96\n\na 104.5\n");
    const JobLayout& layout = reading.layout;
    EXPECT_EQ(layout.zmatrix_rows, (std::vector<std::size_t>{6, 7, 8}));
    EXPECT_EQ(layout.variables, (std::vector<std::size_t>{10}));
    EXPECT_EQ(layout.constants, (std::vector<std::size_t>{12}));
    EXPECT_EQ(ends(layout.molecule), (Ends{6, 12}));
    EXPECT_EQ(reading.job.geom.molecule_lines.size(), 7u);
}

TEST(JobLayout, ListsTheKindsThatTheRouteAsksForAndTheJobLacks) {
    const JobReading reading = read_one("# b3lyp/genecp opt=modredundant\n\nt\n\n0 1\nH 0 0 0\n\nB 1 1 F\n");
    EXPECT_EQ(reading.layout.missing, (std::vector<Kind>{Kind::BasisSet, Kind::ECP}));
    ASSERT_EQ(reading.layout.sections.size(), 1u);
    EXPECT_EQ(ends(reading.layout.sections[0].lines), (Ends{8, 8}));
}

TEST(JobLayout, CountsLinesOverAllJobsOfAText) {
    const std::vector<JobReading> readings =
        read_jobs_with_layout("\n--Link1--\n# hf/sto-3g\n\nt\n\n0 1\nH 0 0 0\n\n--Link1--\n# hf/sto-3g geom=allcheck\n");
    ASSERT_EQ(readings.size(), 2u);
    EXPECT_EQ(readings[0].layout.number, 1u);
    EXPECT_EQ(ends(readings[0].layout.lines), (Ends{3, 9}));
    EXPECT_EQ(readings[0].layout.atoms, (std::vector<std::size_t>{8}));
    EXPECT_EQ(readings[1].layout.number, 2u);
    EXPECT_EQ(readings[1].layout.route_words.front().line, 11u);
    EXPECT_EQ(readings[1].layout.charge_line, 0u);
}

TEST(JobLayout, NamesTheLineOfAFailure) {
    struct Case {
        std::string text;
        std::string error;
        std::size_t line;
        std::size_t column = 1;
    };
    const std::string head = "# hf/sto-3g geom=connectivity\n\nt\n\n";
    const Case cases[] = {
        {"Hello\n", "Invalid control line: Hello", 1},
        {"%chk=a\n\n\nHello\n", "Missing geometry section", 4},
        {head + "0 1 0\nH 0 0 0\n", "Invalid charge/spin line: 0 1 0", 5},
        {head + "0 99999999999\nH 0 0 0\n", "charge or multiplicity beyond 32 bits", 5, 3},
        {head + "0 1\nH 0 0 0\nH 0 0 1e999\n", "Invalid coordinate values: H 0 0 1e999", 7, 7},
        {head + "0 1\nH 0 0 0\nH 0 0\n", "Invalid coordinate line: H 0 0", 7},
        {head + "0 1\nO\nH 1 r\nr=1\na\n", "Invalid Z-matrix variable line: a", 9},
        {head + "0 1\nH 0 0 0\n\n1 2 1.0\n", "2 references atom index outside the geometry atom count", 8},
    };
    for (const Case& c : cases) {
        const JobReading reading = read_one(c.text);
        EXPECT_EQ(reading.error, c.error) << c.text;
        EXPECT_EQ(reading.error_line, c.line) << c.text;
        EXPECT_EQ(reading.error_column, c.column) << c.text;
    }
}

TEST(JobLayout, KeepsWhatWasReadBeforeAFailure) {
    const JobReading reading = read_one("%chk=a.chk\n# hf/sto-3g\n\nt\n\n0 1 0\nH 0 0 0\n");
    EXPECT_EQ(reading.job.control.chk, "a.chk");
    EXPECT_EQ(reading.job.title, "t");
    EXPECT_EQ(ends(reading.layout.title), (Ends{4, 4}));
}

}  // namespace
}  // namespace quor::input::gaussian
