// Reads and writes under every rounding mode and under locales that the program itself sets: the same job, the same text,
// and mode and locale as they were.
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <cstring>
#include <locale>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

constexpr int modes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};

// Numbers that lie between two doubles, short and long, large and small.
constexpr const char* numbers[] = {"0.1",
                                   "0.3",
                                   "1.1",
                                   "-2.675",
                                   "123456.789",
                                   "1e22",
                                   "1e23",
                                   "9e-5",
                                   "3.3e7",
                                   "-0.7",
                                   "0.1000000000000000055511151231257827",
                                   "1e-310",
                                   "2.5e-324",
                                   "1e308",
                                   "7",
                                   "8.41357e11",
                                   "123456789012345678",
                                   "1.0e-07",
                                   "4.35"};

std::string job_text() {
    std::string text = "# hf geom=connectivity\n\nt\n\n0 1\n";
    for (const char* number : numbers) {
        text += std::string("C-CT-") + (number[0] == '-' ? number + 1 : number) + " " + number + " 0.1 -0.3\n";
    }
    return text + "\n1 2 1.1 3 2.25\n\n";
}

// The bits of every number of a job.
std::vector<double> numbers_of(const GJFData& job) {
    std::vector<double> found;
    for (const AtomCoord& atom : job.geom.atoms) {
        found.insert(found.end(), {atom.x, atom.y, atom.z, atom.info.mm_charge.value_or(0)});
    }
    for (const Bond& bond : job.connectivity()->bonds) {
        found.push_back(bond.order);
    }
    return found;
}

class RoundingMode {
   public:
    explicit RoundingMode(int mode) : old_(std::fegetround()) { std::fesetround(mode); }
    RoundingMode(const RoundingMode&) = delete;
    RoundingMode& operator=(const RoundingMode&) = delete;
    ~RoundingMode() { std::fesetround(old_); }

   private:
    int old_;
};

std::string written(GJFEditor editor) {
    std::string text = editor.to_gjf_string();
    editor.use_numeric_coordinates();
    return text + editor.to_gjf_string();
}

TEST(RoundingModes, ChangeNeitherWhatIsReadNorWhatIsWritten) {
    const GJFData expected = GJFParser::parse_string(job_text());
    const std::string text = written(GJFEditor(expected));
    const std::string report = GJFParser::format_full_gjf(expected);
    for (const int mode : modes) {
        const RoundingMode changed(mode);
        const GJFData job = GJFParser::parse_string(job_text());
        const std::vector<double> found = numbers_of(job);
        const std::vector<double> wanted = numbers_of(expected);
        ASSERT_EQ(found.size(), wanted.size());
        EXPECT_EQ(std::memcmp(found.data(), wanted.data(), found.size() * sizeof(double)), 0) << "mode " << mode;
        EXPECT_EQ(written(GJFEditor(job)), text) << "mode " << mode;
        EXPECT_EQ(GJFParser::format_full_gjf(job), report) << "mode " << mode;
        EXPECT_EQ(std::fegetround(), mode) << "the mode stays the caller's";
    }
}

// A comma for the point, dots between thousands, and letters of two bytes.
struct HostilePunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Locales, OfTheProgramChangeNothing) {
    const GJFData expected = GJFParser::parse_string(job_text());
    const std::string text = written(GJFEditor(expected));
    std::string report;
    for (int i = 0; i < 1200; ++i) {  // numbers of atoms above a thousand
        report += "H 0.5 1000.5 -1234567.5\n";
    }
    const GJFData large = GJFParser::parse_string("# hf\n\nt\n\n0 1\n" + report);
    report = GJFParser::format_full_gjf(large);
    const std::locale old = std::locale::global(std::locale(std::locale::classic(), new HostilePunctuation));
    EXPECT_EQ(written(GJFEditor(GJFParser::parse_string(job_text()))), text);
    EXPECT_EQ(GJFParser::format_full_gjf(large), report);
    EXPECT_TRUE(std::has_facet<std::numpunct<char>>(std::locale()));
    EXPECT_EQ(std::use_facet<std::numpunct<char>>(std::locale()).decimal_point(), ',') << "the locale stays the program's";
    std::locale::global(old);
}

}  // namespace
}  // namespace quor::input::gaussian
