// Which places have one name, and what renaming changes.
#include <gjf/core/language/names.hpp>

#include "marked_text.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quor::input::gaussian;

std::string told(const JobFile& file, const std::vector<Span>& places) {
    std::string text;
    for (const Span place : places) {
        const LineAndColumn at = line_and_column(file.text(), place.begin);
        text += (text.empty() ? "" : " ") + std::to_string(at.line) + ":" + std::to_string(at.column) + "+" +
                std::to_string(place.length);
    }
    return text;
}

// "definitions > uses", or "-" where nothing has a name.
std::string occurrences(const std::string& marked) {
    const MarkedFile at(marked);
    const Occurrences found = occurrences_at(at.file, at.offset);
    return found.kind == NameKind::None ? "-" : told(at.file, found.definitions) + " > " + told(at.file, found.uses);
}

struct NamesRow {
    std::string text;
    const char* told;
};

const std::string water = "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\n";

TEST(Names, OfVariablesAreThoseOfOneJob) {
    const NamesRow rows[] = {
        {"# hf\n\nt\n\n0 1\nO\nH 1 r|\nH 1 R 2 -a\n\nr=0.96\na=104\n\n", "10:1+1 > 7:5+1 8:5+1"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 r\nH 1 r 2 -|a\n\nr=0.96\na=104\n\n", "11:1+1 > 8:10+1"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 r\n\n|r=0.96\n\n--Link1--\n# hf\n\nt\n\n0 1\nO\nH 1 r\n\nr=1\n\n", "9:1+1 > 7:5+1"},
        {"# hf\n\nt\n\n0 1\nO 0. 0. z|\nH 0. 0. 1.\n z 2.\n\n", "8:2+1 > 6:9+1"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 q|\nH 1 r 2 a\n\nr=0.96\na=104\n\n", " > 7:5+1"},
        {"# hf\n\nt r|\n\n0 1\nO\nH 1 r\n\nr=1\n\n", "-"},
    };
    for (const NamesRow& row : rows) {
        EXPECT_EQ(occurrences(row.text), row.told) << row.text;
    }
}

TEST(Names, OfAtomsAreTheirLabelsAndNumbers) {
    const NamesRow rows[] = {
        {water + "O 0 0 0\nH 0 0 1\nH 0 1 0\n\nB 1 |2 F\nA 2 1 3 B\n\n", "7:1+1 > 10:5+1 11:3+1"},
        {water + "O 0 0 0\n|H 0 0 1\nH 0 1 0\n\nB 1 2 F\n\n", "7:1+1 > 10:5+1"},
        {water + "O 0 0 0\nH 0 0 1\n\nB 1 |9 F\n\n", " > 9:5+1"},
        {water + "O 0 0 0\nH 0 0 1\n\nB 1 * |F\n\n", "1:17+12 > 9:1+7"},
        {"# hf\n\nt\n\n0 1\nO\nH |1 r\nH 1 r 2 a\n\nr=0.96\na=104\n\n", "6:1+1 > 7:3+1 8:3+1"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 r\nH 1 r |2 a\n\nr=0.96\na=104\n\n", "7:1+1 > 8:7+1"},
        {"# hf freq=readiso geom=connectivity\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\n\n1 2| 1.0\n2\n\n", "7:1+1 > 9:3+1 10:1+1"},
        {"# hf\n\nt\n\n0 1\nO 0 |0 0\n\n", "-"},
    };
    for (const NamesRow& row : rows) {
        EXPECT_EQ(occurrences(row.text), row.told) << row.text;
    }
}

TEST(Names, OfCheckpointsAreThoseOfTheFile) {
    const std::string file =
        "%chk=a|.chk\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n--Link1--\n%oldchk=\"a\"\n%chk=b\n# hf geom=check\n\nt\n\n0 1\n\n";
    EXPECT_EQ(occurrences(file), "1:6+5 > 10:9+3");
    EXPECT_EQ(occurrences("%chk=a\n%rwf=|a\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n"), "-");
    EXPECT_EQ(occurrences("%oldchk=|a\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n"), " > 1:9+1");
}

TEST(Names, OfSectionsAreWhatAsksForThem) {
    const NamesRow rows[] = {
        {"# hf opt=mod|redundant\n\nt\n\n0 1\nH 0 0 0\n\nB 1 2 F\n\n", "8:1+7 > 1:10+12"},
        {"# hf/g|en\n\nt\n\n0 1\nH 0 0 0\n\nH 0\nsto-3g\n****\n\n", "8:1+15 > 1:6+3"},
        {"# hf/gen\n\nt\n\n0 1\nH 0 0 0\n\nH 0\nsto|-3g\n****\n\n", "1:6+3 > 8:1+15"},
        {"# hf pse|udo=read geom=connectivity\n\nt\n\n0 1\nH 0 0 0\n\n1\n\n", "-"},
        {"# hf o|pt\n\nt\n\n0 1\nH 0 0 0\n\n", "-"},
    };
    for (const NamesRow& row : rows) {
        EXPECT_EQ(occurrences(row.text), row.told) << row.text;
    }
}

std::string renamed(const std::string& marked, const std::string& name) {
    const MarkedFile at(marked);
    try {
        return with_edits(at.file.text(), rename_edits(at.file, at.offset, name));
    } catch (const RenameError& error) {
        return std::string("! ") + error.what();
    }
}

TEST(Names, AreChangedInAllTheirPlaces) {
    const std::string rows = "# hf\n\nt\n\n0 1\nO\nH 1 r|\nH 1 -R 2 a\n\nr=0.96\na=104\n\n";
    EXPECT_EQ(renamed(rows, "r_OH"), "# hf\n\nt\n\n0 1\nO\nH 1 r_OH\nH 1 -r_OH 2 a\n\nr_OH=0.96\na=104\n\n");
    EXPECT_EQ(renamed(rows, "R"), "# hf\n\nt\n\n0 1\nO\nH 1 R\nH 1 -R 2 a\n\nR=0.96\na=104\n\n");
    const std::string names =
        "%chk=x|\n%oldchk=y.chk\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n--link1--\n%oldchk=x.chk\n# hf geom=check\n\nt\n\n0 1\n\n";
    EXPECT_EQ(
        renamed(names, "z"),
        "%chk=z\n%oldchk=y.chk\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n--link1--\n%oldchk=z.chk\n# hf geom=check\n\nt\n\n0 1\n\n");
}

TEST(Names, AreNotChangedToWhatCannotBe) {
    const std::string rows = "# hf\n\nt\n\n0 1\nO\nH 1 r|\nH 1 r 2 a\n\nr=0.96\na=104\n\n";
    for (const char* name : {"", "a", "A", "1r", "r 1", "r-1", "r=", "-r", "r\n", "r!"}) {
        EXPECT_EQ(renamed(rows, name).substr(0, 2), "! ") << name;
    }
    const std::string chk = "%chk=x|\n%oldchk=y\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n";
    for (const char* name : {"", " ", "y", "y.chk", "a\nb", "a!b"}) {
        EXPECT_EQ(renamed(chk, name).substr(0, 2), "! ") << name;
    }
    EXPECT_EQ(renamed("# hf\n\nt|\n\n0 1\nH 0 0 0\n\n", "x"), "! nothing here has a name to change");
    EXPECT_EQ(renamed("# hf\n\nt\n\n0 1\n|H 0 0 0\n\n", "x"), "! nothing here has a name to change");
}

}  // namespace
