// Texts with two faults or more: which of them is told is the first in the order of detection, and every way of reading
// tells the same one.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

enum class Thrown { ParseException, OutOfRange };

struct FirstFault {
    std::string text;
    std::string message;
    Thrown exception = Thrown::ParseException;
    std::size_t job = 1;  // 0: the text holds none
};

const std::string fault_head = "# hf/sto-3g\n\nt\n\n";
const std::string fault_head_c = "# hf/sto-3g geom=connectivity\n\nt\n\n";
const std::string fault_water = "0 1\nO 0.0 0.0 0.1\nH 0.0 0.7 -0.5\nH 0.0 -0.7 -0.5\n";

const FirstFault first_faults[] = {
    {"chk=a.chk\nmem=1GB\n# hf/sto-3g\n\nt\n\n" + fault_water, "Invalid control line: chk=a.chk"},
    {"%chk=a\nb3lyp/6-31g(d) opt\n\nt\n\nx 1\nH 0 0 0\n", "Invalid control line: b3lyp/6-31g(d) opt"},
    {"$RunGauss\n# hf/sto-3g\n\nt\n\n0 1 0\nH 0 0 0\n", "Invalid control line: $RunGauss"},
    {"Hello\n", "Invalid control line: Hello"},
    {"Hello\nworld\n\nagain\n", "Invalid control line: Hello"},
    {"%chk=a\n\n\nHello\n", "Missing geometry section"},
    {"opt\n# hf/sto-3g\n\nt\n", "Invalid control line: opt"},
    {"%mem=1GB\nnproc=4\n%chk=b\noldchk=c\n# hf\n\nt\n\n0 1\nH 0 0 0\n", "Invalid control line: nproc=4"},
    {"! only a comment\n", "Empty file or invalid format"},
    {"! only\n\n! comments\n", "Empty file or invalid format"},
    {"# hf/sto-3g\n", "Missing title section"},
    {"# hf/sto-3g\n\n", "Missing title section"},
    {"# hf/sto-3g\n\nt\n", "Missing geometry section"},
    {"# hf/sto-3g\n\n0 1\nH 0 0 0\n", "Missing geometry section"},
    {fault_head + "! comment\n\n", "Missing geometry section"},
    {"H 0 0 0\n\n0 1\n", "Invalid control line: H 0 0 0"},
    {"0 1\nO 0 0 0\nH 0 0\n", "Invalid control line: 0 1"},
    {"0 1\n# hf\n\nt\n\n0 1.5\nH 0 0\n", "Invalid control line: 0 1"},
    {fault_head + "0 1 0\nH 0 0\n", "Invalid charge/spin line: 0 1 0"},
    {fault_head + "0\nH 0 0 1e999\n", "Invalid charge/spin line: 0"},
    {fault_head + "0 one\nH 0 0 0 0 0x\nH\n", "Invalid charge/spin line: 0 one"},
    {fault_head + "a b\n", "Geometry section must have at least 2 lines"},
    {fault_head + "0 1\n", "Geometry section must have at least 2 lines"},
    {fault_head + "0 1\n! comment\n", "Geometry section must have at least 2 lines"},
    {fault_head + "! comment\n0 1\n", "Geometry section must have at least 2 lines"},
    {fault_head + "0.0 1\nH 0 0 zz-\n", "Invalid charge/spin line: 0.0 1"},
    {fault_head + "0 99999999999\nH 0 0\n", "charge or multiplicity beyond 32 bits", Thrown::OutOfRange},
    {fault_head + "99999999999 x\nH 0 0\n", "Invalid charge/spin line: 99999999999 x"},
    {fault_head + "99999999999 1 x 1\nH 0 0\n", "charge or multiplicity beyond 32 bits", Thrown::OutOfRange},
    {fault_head + "x 99999999999\nH 0 0\n", "Invalid charge/spin line: x 99999999999"},
    {fault_head + "0 1 99999999999 1\nH 0 0 0 !\nH 1\n", "charge or multiplicity beyond 32 bits", Thrown::OutOfRange},
    {fault_head + "0 1 0 1 0 99999999999 5\nH 0 0 0\n", "Invalid charge/spin line: 0 1 0 1 0 99999999999 5"},
    {fault_head + "H 0 0 0\nH 0 0 1\n", "Invalid charge/spin line: H 0 0 0"},
    {fault_head + "0 1, 2\nH 0 0 0\nC\n", "Invalid charge/spin line: 0 1, 2"},
    {fault_head + "! 0 1\n0 2 1\nH\n", "Invalid charge/spin line: 0 2 1"},
    {fault_head + "0 1\nH 0 0 0\nH 0 0\nH 0 0 1e999\n", "Invalid coordinate line: H 0 0"},
    {fault_head + "0 1\nH 0 0 1e999\nH 0 0\n", "Invalid coordinate values: H 0 0 1e999"},
    {fault_head + "0 1\nH 0 0 0\nC a-b 0 0\nH 0 inf 0\n", "Invalid coordinate value: a-b"},
    {fault_head + "0 1\nH 0 0 0\nH 0 nan 0\nH 0 0 0 0 0 0\nx\n", "Invalid coordinate values: H 0 nan 0"},
    {fault_head + "0 1\nH 99999999999 0 0 0\nH 0 0\n", "Invalid coordinate values: H 99999999999 0 0 0"},
    {fault_head + "0 1\nH 0 0 0\nH 99999999999 0 0 0 L\nH 0 0 1.2.3\n", "Invalid coordinate values: H 99999999999 0 0 0 L"},
    {fault_head + "0 1\nH 0 0 0\nH 0,0 0,1\nH 0 0 O.5\n", "Invalid coordinate value: O.5"},
    {fault_head + "0 1\nH 0 0 0.5D0\nH 0 0 1.0D-1\n", "Invalid coordinate value: 0.5D0"},
    {fault_head + "0 1\nO -1 0.0 0.0 0.0\nH -1 0.0 0.7 ,\nH\n", "Invalid coordinate line: H"},
    {fault_head + "0 1\nO 0 0 0\n3\nwater\nO 0 0 0\n", "Invalid coordinate line: 3"},
    {fault_head + "0 1\nO 0 0 0\nthis is a very wrong line\nand another\n", "Invalid coordinate line: and another"},
    {fault_head + "0 1\nO 0 0 0\nH 0 0 r\nr=\ns=1\nq\n", "Invalid coordinate line: r="},
    {fault_head + "0 1\nO 0 0 0\nH 0 0 r\n1r=0.5\nr=,\n", "Invalid coordinate line: 1r=0.5"},
    {fault_head + "0 1\nO 0 0 0\nH 0 0 r\nr=,\nr=0.5=\n=1\n", "Invalid Cartesian coordinate variable line: r=,"},
    {fault_head + "0 1\nO 0 0 0\nH 0 0 r\n\nr=,\ns=,\n", "Invalid Cartesian coordinate variable line: r=,"},
    {fault_head + "0 1\n,,,\nH 0 0 0\nH 0\n", "Invalid coordinate line: ,,,"},
    {fault_head + "0 1\nH 0 0 0\n,,,\nH 0\n", "Invalid coordinate line: ,,,"},
    {fault_head + "0 1\nO\nH 1 r\nr=1\na\nb\n", "Invalid Z-matrix variable line: a"},
    {fault_head + "0 1\nO\nH 99999999999 r\nH 1 r 99999999999 a\n", "Invalid Z-matrix geometry section"},
    {fault_head + "0 1\nO\nH 1 r\nH 1 r 2 a\nr\n=3\n", "Invalid Z-matrix variable line: =3"},
    {fault_head + "0 1\nO\nH 1 r\nVariables:\nr 0.96\nx\n=\n", "Invalid Z-matrix variable line: x"},
    {fault_head + "0 1\nVariables:\nr=1\nx\n", "Invalid Z-matrix variable line: x"},
    {fault_head + "0 1\nVariables:\n", "Invalid Z-matrix geometry section"},
    {fault_head + "0 1\nO\nH -99999999999 r\nx\n", "Invalid Z-matrix geometry section"},
    {fault_head + "0 1\nO\n!c\nH 1 r 2\nH\nr\n", "Invalid Z-matrix variable line: H"},
    {fault_head_c + fault_water + "\n1 2 1.0\n2 9 1.0\n3 x 1.0\n", "Invalid connectivity atom index 'x' in line: 3 x 1.0"},
    {fault_head_c + fault_water + "\n1 2\n2 3 1.0\n3 0 1.0\n", "Incomplete connectivity pair in line: 1 2"},
    {fault_head_c + fault_water + "\n1 2 x\n2 3 1.0 4\n3\n", "Invalid connectivity bond order 'x' in line: 1 2 x"},
    {fault_head_c + fault_water + "\n9 1 1.0\n1 8 1.0\n", "9 references atom index outside the geometry atom count"},
    {fault_head_c + fault_water + "\n0 1 1.0\n-1\n",
     "Connectivity atom indices must be positive 1-based integers in line: 0 1 1.0"},
    {fault_head_c + fault_water + "\n1 2 1.0 3\n2 x 1.0\n", "Incomplete connectivity pair in line: 1 2 1.0 3"},
    {fault_head_c + "0 1\nH 0 0 0\nH 0 0\n\n1 2 1.0\n2 x\n", "Invalid coordinate line: H 0 0"},
    {fault_head_c + "0 1 1\nH 0 0 0\n\n1 2 1.0\n", "Invalid charge/spin line: 0 1 1"},
    {"# hf/sto-3g geom=(check,connectivity)\n\nt\n\n0 x\n\n1 2\n", "Invalid charge/spin line: 0 x"},
    {"# hf/sto-3g geom=check\n\nt\n", "Missing charge/spin line for geom=check"},
    {"# hf/sto-3g geom=check\n\nt\n\n! no line\n", "Missing charge/spin line for geom=check"},
    {"# hf/sto-3g geom=check\n\nt\n\n0 99999999999\n0 1\n", "charge or multiplicity beyond 32 bits", Thrown::OutOfRange},
    {"# hf/sto-3g geom=(allcheck,connectivity)\n\n1 1000001 1.0\n2 x 1.0\n",
     "Invalid connectivity atom index 'x' in line: 2 x 1.0"},
    {"# hf/sto-3g opt=qst2\n\nt\n\n" + fault_water + "\nsecond title\n",
     "Incomplete QST2/QST3 second title and molecule section: missing molecule specification block"},
    {"# hf/sto-3g opt=(qst3)\n\nt\n\n" + fault_water + "\nsecond\n\n" + fault_water + "\nthird\n",
     "Incomplete QST3 third title and molecule section: missing molecule specification block"},
    {"# hf/sto-3g opt=qst2 geom=connectivity\n\nt\n\n" + fault_water + "\n1 2 1.0\n2 7 1.0\n\nsecond title\n",
     "7 references atom index outside the geometry atom count"},
    {"# hf/sto-3g geom=connectivity opt=(qst2)\n\nt\n\n" + fault_water + "\n1 2 1.0\n\nsecond\n\n" + fault_water +
         "\n1 9 1.0\nx\n",
     "Invalid connectivity atom index 'x' in line: x"},
    {fault_head + fault_water + "\n--Link1--\n# hf\n\nt\n\n0 1\nH 0 0\n\n--Link1--\nbad\n", "Invalid control line: bad",
     Thrown::ParseException, 3},
    {fault_head + "0 1\nH 0 0\n\n--Link1--\nbad\n", "Invalid control line: bad", Thrown::ParseException, 2},
    {"\n--Link1--\nbad\n\n--Link1--\n# hf/sto-3g\n\nt\n\n0 1\nH 0\n", "Invalid control line: bad", Thrown::ParseException,
     2},
    {fault_head + fault_water + "\n--Link1--\n# hf geom=check\n\nt\n\n0 99999999999\n\n--Link1--\nbad\n",
     "charge or multiplicity beyond 32 bits", Thrown::OutOfRange, 2},
    {"\n\n--Link1--\n\n", "No valid jobs found in input", Thrown::ParseException, 0},
    {"", "No valid jobs found in input", Thrown::ParseException, 0},
    {"\357\273\277chk=a\nb\n# hf\n\nt\n\n0 1\nH 0 0 0\n", "Invalid control line: chk=a"},
    {"chk=a\r\nmem\r\n# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nH 0 0 0\r\n", "Invalid control line: chk=a"},
    {"# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nH 0 0 0\r\nH 0 0 \r\nH 0 1e999 0\r\n", "Invalid coordinate line: H 0 0 "},
};

// Returns what reading throws: its message behind the kind of exception.
template <typename Read>
std::optional<std::string> thrown_by(Read read) {
    try {
        read();
    } catch (const GJFParseException& error) {
        return error.what();
    } catch (const std::out_of_range& error) {
        return "out of range: " + std::string(error.what());
    }
    return std::nullopt;
}

std::string parse_fault(const std::string& message) { return "GJF Parse Error: " + message; }

TEST(FirstFaultTold, IsThrownByReadingAllJobs) {
    for (const FirstFault& c : first_faults) {
        const std::string job = c.job == 0 ? "" : "Job " + std::to_string(c.job) + ": GJF Parse Error: ";
        const std::string wanted =
            c.exception == Thrown::ParseException ? parse_fault(job + c.message) : "out of range: " + c.message;
        EXPECT_EQ(thrown_by([&] { GJFParser::parse_string_multi(c.text); }), wanted) << c.text;
    }
}

TEST(FirstFaultTold, IsThrownByReadingTheFirstJob) {
    for (const FirstFault& c : first_faults) {
        if (c.job == 1) {
            const std::string wanted =
                c.exception == Thrown::ParseException ? parse_fault(c.message) : "out of range: " + c.message;
            EXPECT_EQ(thrown_by([&] { GJFParser::parse_string(c.text); }), wanted) << c.text;
        }
    }
}

TEST(FirstFaultTold, IsTheFirstOfTheReading) {
    for (const FirstFault& c : first_faults) {
        const std::vector<JobReading> readings = read_jobs_with_layout(c.text);
        const auto failed =
            std::find_if(readings.begin(), readings.end(), [](const JobReading& r) { return !r.faults.empty(); });
        ASSERT_EQ(failed == readings.end(), c.job == 0) << c.text;
        if (failed != readings.end()) {
            EXPECT_EQ(failed->faults.front().message, c.message) << c.text;
            EXPECT_EQ(failed->faults.front().kind == FaultKind::Parse, c.exception == Thrown::ParseException) << c.text;
            const bool behind_blank_piece = c.text.rfind("\n--Link1--", 0) == 0;  // which is no job of the reading
            EXPECT_EQ(failed->layout.number + (behind_blank_piece ? 1 : 0), c.job) << c.text;
        }
    }
}

}  // namespace
}  // namespace quor::input::gaussian
