// What is told of a place.
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/language/hover.hpp>

#include "marked_text.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quor::input::gaussian;

std::string hover(const std::string& marked) {
    const MarkedFile at(marked);
    const std::optional<Hover> found = hover_at(at.file, at.offset);
    return found ? std::string(found->place.in(at.file.text())) + ": " + found->markdown : "";
}

struct HoverRow {
    std::string text;
    const char* told;
};

TEST(Hover, TellsWhatAWordIs) {
    const std::string rest = "\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\n\n";
    const HoverRow rows[] = {
        {"# hf/sto-3g op|t=calcfc" + rest, "opt: **`opt`** keyword"},
        {"# hf/sto-3g opt=calc|fc" + rest, "calcfc: **`calcfc`** option of `opt`"},
        {"# hf/sto-3g opt=modred|" + rest, "modred: **`modredundant`** option of `opt`\n\nReads changes"},
        {"# b3l|yp/6-31g*" + rest, "b3lyp: **`b3lyp`** method"},
        {"# b3lyp/6-31|g*" + rest, "6-31g*: **`6-31g*`** basis set\n\nSplit valence"},
        {"%me|m=1GB\n# hf" + rest, "mem: **`%mem`** takes an amount of memory"},
        {"# hf/sto-3g opt=clac|fc" + rest, "clacfc: **`clacfc`** no known option of `opt`"},
        {"# hf\n\n|t\n\n0 1\nO 0 0 0\n\n", ""},
        {"# hf ! opt|\n\nt\n\n0 1\nO 0 0 0\n\n", ""},
        {"|", ""},
    };
    for (const HoverRow& row : rows) {
        const std::string found = hover(row.text);
        EXPECT_EQ(found.substr(0, std::string(row.told).size()), row.told) << row.text;
        EXPECT_EQ(found.empty(), std::string(row.told).empty()) << row.text << found;
    }
}

TEST(Hover, TellsWhatAWordMeans) {
    const std::string rest = "\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\n\n";
    const struct {
        const char* begin;
        const char* role;
        const char* keyword;
        const char* word;
    } rows[] = {
        {"# hf/sto-3g op|t", "keyword", "", "opt"},
        {"# hf/sto-3g optim|", "keyword", "", "opt"},
        {"# b3l|yp/6-31g*", "method", "", "b3lyp"},
        {"# ub3l|yp/6-31g*", "method", "", "b3lyp"},
        {"# b3lyp/6-31|g", "basis", "", "6-31g"},
        {"# hf/sto-3g opt=calc|fc", "option", "opt", "calcfc"},
        {"# hf/sto-3g optim=(ts,calc|fc)", "option", "opt", "calcfc"},
        {"# hf/sto-3g irc=maxp|oints=5", "option", "irc", "maxpoints"},
        {"%me|m=1GB\n# hf", "link0", "", "mem"},
        {"%mem=1|GB\n# hf", "link0", "", "mem"},
        {"%nproc|=1\n# hf", "link0", "", "nprocshared"},
    };
    for (const auto& row : rows) {
        const WordDescription* known = find_description(row.role, row.keyword, row.word);
        ASSERT_NE(known, nullptr) << row.begin;
        const std::string meaning(known->meaning.substr(0, known->meaning.find_first_of("*_<[")));
        const std::string found = hover(row.begin + rest);
        EXPECT_NE(found.find("\n\n" + meaning), std::string::npos) << row.begin << ": " << found;
        EXPECT_EQ(found.find("Default: ") != std::string::npos, !known->default_value.empty()) << found;
    }
    for (const char* unknown : {"# hf/sto-3g opt=clac|fc", "# hf/sto-3g qqq|", "%no|ne=1\n# hf"}) {
        EXPECT_EQ(hover(unknown + rest).find("."), std::string::npos) << hover(unknown + rest);
    }
    EXPECT_NE(hover("# b3lyp/6-31|g*" + rest).find("\n\n17 basis functions"), std::string::npos);
    EXPECT_NE(hover("# hf opt=modred|" + rest).find("\n\nAsks for a section: Modifications to coordinates"),
              std::string::npos);
    EXPECT_NE(hover("# b3lyp/3-2|1g" + rest).find("; \\* adds d"), std::string::npos) << hover("# b3lyp/3-2|1g" + rest);
}

TEST(Hover, TellsWhichAtomIsMeant) {
    const std::string water = "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n";
    const HoverRow rows[] = {
        {"# hf\n\nt\n\n0 1\n|O 0 0 0\nH 0 0 1\nH 0 1 0\n\n",
         "O: atom 1 of 3, `O` at 0.000 0.000 0.000; bonded to `H` 2 (1.000 Å), `H` 3 (1.000 Å)"},
        {water + "B 1 |2 F\n\n",
         "2: atom 2 of 3, `H` at 0.000 0.000 1.000; bonded to `O` 1 (1.000 Å)\n\ndistance 1-2: 1.000 Å"},
        {water + "A 2 1 |3 F\n\n",
         "3: atom 3 of 3, `H` at 0.000 1.000 0.000; bonded to `O` 1 (1.000 Å)\n\nangle 2-1-3: 90.000°"},
        {water + "B 1 |9 F\n\n", "9: no atom 9: the molecule has 3"},
        {water + "|B 1 2 F\n\n", "B: section: Modifications to coordinates, asked for by `opt=modredundant`"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 r\nH 1 r |2 a\n\nr=0.96\na=104.5\n\n",
         "2: atom 2 of 3, `H` at 0.000 0.000 0.960; bonded to `O` 1 (0.960 Å)\n\nangle 3-1-2: 104.500°"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 r|\nH 1 r 2 a\n\nr=0.96\na=104.5\n\n", "r: `r` = `0.96`, used 2 times"},
        {"# hf\n\nt\n\n0 1\nO\nH 1 q|\n\nr=0.96\n\n", "q: `q` has no value"},
        {"# hf\n\nt\n\n0 1\nO\n|H 1 q\n\nr=0.96\n\n", "H: atom 2 of 2, `H`: `q has no value`"},
        {"# hf\n\nt\n\n|0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n", "0: 10 electrons"},
        {"# hf geom=connectivity\n\nt\n\n0 1\nO 0 0 0\nH 0 0 3\n\n1 |2 1.0\n2\n\n",
         "2: atom 2 of 2, `H` at 0.000 0.000 3.000; bonded to `O` 1 (3.000 Å)\n\ndistance 1-2: 3.000 Å"},
        {"# hf opt=modredundant\n\nt\n\n0 1\nH 1 0 0\nO 0 0 0\nO 0 1.4 0\nH 0 1.4 1\n\nD 1 2 3 |4 F\n\n",
         "4: atom 4 of 4, `H` at 0.000 1.400 1.000; bonded to `O` 3 (1.000 Å)\n\ndihedral 1-2-3-4: -90.000°"},
        {"# hf opt=modredundant\n\nt\n\n0 1\nH 1 0 0\nO 0 0 0\nO 0 1.4 0\nH 0 1.4 1\n\nD 1 2 |3 4 F\n\n",
         "3: atom 3 of 4, `O` at 0.000 1.400 0.000; bonded to `O` 2 (1.400 Å), `H` 4 (1.000 Å)\n\ndihedral 1-2-3-4: "
         "-90.000°"},
        {"# hf counterpoise=2\n\nt\n\n0 1 0 1 0 1\nHe(Fragment=|1) 0 0 0\nHe(Fragment=2) 0 0 3\n\n",
         "He(Fragment=1): atom 1 of 2, `He` at 0.000 0.000 0.000; fragment `1` of 1 atom, charge 0, multiplicity 1"},
        {"# hf counterpoise=2\n\nt\n\n0 1 0 1 |0 1\nHe(Fragment=1) 0 0 0\nHe(Fragment=2) 0 0 3\n\n", "0: 4 electrons"},
        {"# hf guess=fragment=2\n\nt\n\n0 1 1 2 -1 2\nHe(Fragment=|2) 0 0 0\nHe(fragment=2) 0 0 3\nHe(Fragment=1) 0 0 6\nHe "
         "0 0 9\n\n",
         "He(Fragment=2): atom 1 of 4, `He` at 0.000 0.000 0.000; fragment `2` of 2 atoms, charge -1, multiplicity 2"},
        {"# hf\n\nt\n\n0 1\nHe(Fragment=|7) 0 0 0\nHe 0 0 3\n\n",
         "He(Fragment=7): atom 1 of 2, `He` at 0.000 0.000 0.000; fragment `7` of 1 atom"},
        {"# hf\n\nt\n\n0 1\nO |0 0 0\n\n", ""},
    };
    for (const HoverRow& row : rows) {
        EXPECT_EQ(hover(row.text), row.told) << row.text;
    }
}

TEST(Hover, KeepsTextsOfTheFileInCodeSpans) {
    const HoverRow rows[] = {{"a", "`a`"},        {"`", "`` ` ``"},  {"a`b", "``a`b``"}, {"``", "``` `` ```"},
                             {"", "`  `"},        {"a\nb", "`a b`"}, {" a", "`  a `"},   {"<b>[x](y)", "`<b>[x](y)`"},
                             {"\r\x01", "`    `"}};
    for (const HoverRow& row : rows) {
        EXPECT_EQ(code_span(row.text), row.told);
    }
}

}  // namespace
