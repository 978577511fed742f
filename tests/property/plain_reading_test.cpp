// Thousands of made jobs, read by the library and by the plain reader. Where they differ, the job holds a form on the list
// of departures: Gaussian reads it, and the class interface refuses it or takes it for something else.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "plain_reader.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

constexpr int usual_count = 600;  // QUOR_GJF_MADE_JOBS asks for more

// Makes a job, and tells what it means and which departures it holds.
class MadeJob {
   public:
    explicit MadeJob(std::uint32_t seed) : random_(seed) {
        control();
        title();
        molecule();
        if (one_in(4)) {
            text += "\nleft over " + std::to_string(below(9)) + "\n";
        }
        text += "\n";
        if (one_in(8)) {
            with_carriage_returns();
        }
    }

    std::string text;
    std::vector<std::string> departures;
    bool wrong = false;  // cannot be read
    std::string charge;
    std::string multiplicity;
    std::size_t atoms = 0;
    std::vector<std::string> words;

   private:
    std::size_t below(std::size_t count) { return random_() % count; }
    bool one_in(std::size_t count) { return below(count) == 0; }
    std::string any(const std::vector<std::string>& texts) { return texts[below(texts.size())]; }
    std::string number() { return any({"", "-"}) + std::to_string(below(9)) + "." + std::to_string(below(99999)); }
    std::string departing(const char* name, std::string line) {
        departures.emplace_back(name);
        return line;
    }
    std::string spoilt(std::string line) {
        wrong = true;
        return line;
    }

    void control() {
        if (one_in(40)) {
            text += departing("first line of old files", "$RunGauss\n");
        }
        for (const char* line : {"%chk=a b.chk\n", "%Mem = 2GB\n", "%NProcShared=8x\n", "%nprocs=4\n", "% rwf=x,1GB,y\n",
                                 "%save\n", "%mem=\n", "%kjob=l301 ! later\n"}) {
            text += one_in(4) ? line : "";
        }
        if (one_in(40)) {
            text += text.empty() ? "" : departing("blank line before the route", "\n");
        }
        words = {any({"#", "#p", "#N"}), any({"hf/sto-3g", "B3LYP/6-31G(d,p)", "mp2=full/cc-pvdz"})};
        for (const char* word : {"opt=(calcfc,maxcycle=9)", "freq", "scf(xqc, tight)", "nosymm", "iop(3/33=1)"}) {
            if (one_in(4)) {
                words.emplace_back(word);
            }
        }
        for (std::size_t i = 0; i < words.size(); ++i) {
            text += (i == 0 ? "" : any({" ", "  ", ",", "\n", " ! note\n"})) + words[i];
        }
        text += any({"\n", " \n", " ! end\n"}) + (one_in(60) ? spoilt("") : "\n");
    }

    void title() {
        if (wrong) {
            text += "title\n\n";
        } else if (one_in(40)) {
            text += departing("no title", "\n");
        } else {
            text += any({"title", "2 1", "a title\nof two lines", "x=1, y=2 ! kept"}) + any({"\n\n", "\n \n"});
        }
    }

    void molecule() {
        charge = any({"0", "-1", "2"});
        multiplicity = any({"1", "2"});
        const std::string pair = charge + any({" ", ",", "  "}) + multiplicity;
        text += one_in(50) ? spoilt(any({charge + " x", charge, charge + " 1 2"})) : pair + any({"", " 0 1", " ! c", " "});
        text += "\n";
        atoms = 1 + below(6);
        one_in(3) ? rows() : coordinates();
    }

    std::string atom_line(const std::string& z) {
        const std::string label = any({"C", "h", "O1", "Cl", "H(Iso=2)", "6", "C-CT"});
        const std::string x = number();
        switch (below(6)) {
            case 0:
                return label + ", " + x + "," + number() + " , " + z;
            case 1:
                return label + " " + any({"0", "-1"}) + " " + x + " " + number() + " " + z;
            case 2:
                return " " + label + "  -1 " + x + " " + number() + "\t" + z + " L H 1";
            case 3:
                return label + " " + x + " " + number() + " " + z + " M";
            default:
                return label + " " + x + " " + number() + " " + z + any({"", " ", " ! note"});
        }
    }

    void coordinates() {
        const bool symbolic = one_in(5);
        for (std::size_t i = 0; i < atoms; ++i) {
            std::string z = number();
            if (symbolic && i == 0) {
                z = any({"zz", "-zz"});
            } else if (one_in(120)) {
                z = departing("numbers with D", "1.5D-01");
            } else if (one_in(150)) {
                z = spoilt("1.5l");
            }
            text += atom_line(z) + "\n";
        }
        if (one_in(60)) {
            text += spoilt("C 1.0 2.0\n");
        }
        if (symbolic) {
            values_of_coordinates();
        }
    }

    void values_of_coordinates() {
        switch (below(5)) {
            case 0:
                text += departing("values behind a blank", "zz 1.5\n");
                break;
            case 1:
                text += departing("values behind a header", "Variables:\nzz=1.5\n");
                break;
            case 2:
                text += departing("values in a section of their own", "\nzz=1.5\n");
                break;
            default:
                text += any({"zz=1.5\n", "zz = 1.5 ! note\n", "zz=-2,\n"});
        }
    }

    void rows() {
        atoms = 3 + below(2);
        const std::string r = one_in(2) ? "r" : "0.96";
        const bool by_label = one_in(12);
        text += "O1\nH2 1 " + r + "\n" +
                (by_label ? departing("rows by labels", "H3 O1 0.97 H2 104.5\n") : "H3 1 " + r + " 2 a\n");
        if (atoms == 4) {
            text += one_in(10)  ? departing("layer behind a row", "C 1 1.4 2 109. 3 120. 0 L H 1\n")
                    : one_in(8) ? departing("rows of numbers below others", "C 1 1.4 2 109. 3 120.\n")
                                : "C " + any({"1 1.4 2 a 3 120.", "1,1.4,2,a,3,-d"}) + "\n";
        }
        const std::string angle =
            one_in(15) ? departing("code behind a variable", "a 104.5 F\n") : any({"a 104.5\n", "a=104.5\n"});
        const std::string values = (r == "r" ? "r=0.96\n" : "") + angle + "d=120.\n";
        const bool close = one_in(8) && values.find('=') < values.find(' ');
        const std::string between = any({"\n", "Variables:\n"});
        text += close ? departing("value directly below the rows", values) : between + values;
        if (one_in(30) && !close && between != "\n") {  // in a section of its own it would be left over
            text += spoilt("lonely\n");
        }
    }

    void with_carriage_returns() {
        std::string changed;
        for (const char c : text) {
            changed += c == '\n' ? "\r\n" : std::string(1, c);
        }
        text = std::move(changed);
    }

    std::mt19937 random_;
};

int count_of_jobs() {
    const char* wanted = std::getenv("QUOR_GJF_MADE_JOBS");
    return wanted == nullptr ? usual_count : std::atoi(wanted);
}

PlainJob read_by_class(const std::string& text) {
    PlainJob job;
    try {
        return plain_form_of(GJFParser::parse_string(text));
    } catch (const std::exception& error) {
        job.error = error.what();
        job.error.erase(0, std::string("GJF Parse Error: ").size());
    }
    return job;
}

// What was meant is there, whichever form it was written in.
void expect_meaning(const MadeJob& made, const JobReading& reading) {
    const PlainJob read = plain_form_of(reading.job);
    EXPECT_EQ(reading.error, "") << made.text;
    EXPECT_EQ(read.words, made.words) << made.text;
    ASSERT_GE(read.charges.size(), 2U) << made.text;
    EXPECT_EQ(read.charges[0] + " " + read.charges[1], made.charge + " " + made.multiplicity) << made.text;
    EXPECT_EQ(read.atoms.size() + read.rows.size(), made.atoms) << made.text;
}

TEST(PlainReading, DiffersInTheListedDeparturesAlone) {
    std::map<std::string, int> differing;
    int refused = 0;
    for (int i = 0; i < count_of_jobs(); ++i) {
        const MadeJob made(static_cast<std::uint32_t>(i));
        const std::vector<JobReading> readings = read_jobs_with_layout(made.text);
        ASSERT_EQ(readings.size(), 1U) << made.text;
        const PlainJob plain = read_plainly(made.text);
        if (made.wrong) {
            ++refused;
            EXPECT_NE(readings[0].error, "") << made.text;
            EXPECT_TRUE(!plain.error.empty() || !made.departures.empty()) << made.text;
            continue;
        }
        expect_meaning(made, readings[0]);
        const std::string difference = plain_difference(plain, plain_form_of(readings[0].job));
        if (made.departures.empty()) {
            EXPECT_EQ(difference, "") << made.text;
            EXPECT_EQ(plain_difference(plain, read_by_class(made.text)), "") << made.text;
            EXPECT_TRUE(readings[0].faults.empty()) << made.text;
        } else if (!difference.empty() && made.departures.size() == 1) {
            ++differing[made.departures[0]];
        }
    }
    for (const char* departure :
         {"first line of old files", "blank line before the route", "no title", "numbers with D", "values behind a blank",
          "values behind a header", "values in a section of their own", "rows by labels", "layer behind a row",
          "rows of numbers below others", "value directly below the rows"}) {
        EXPECT_GT(differing[departure], 0) << departure << " is no departure";
        differing.erase(departure);
    }
    EXPECT_TRUE(differing.empty()) << differing.begin()->first << " is not on the list";
    EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace quor::test
