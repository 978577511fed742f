// The parts of a file, and the hints beside its lines.
#include <gjf/core/language/structure.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quor::input::gaussian;

std::string told(const JobFile& file, const std::vector<FilePart>& parts) {
    std::string text;
    for (const FilePart& part : parts) {
        const std::size_t first = line_and_column(file.text(), part.lines.begin).line;
        const std::size_t last = line_and_column(file.text(), part.lines.end()).line;
        text += part.name + (part.detail.empty() ? "" : "=" + part.detail) + " " + std::to_string(first) + "-" +
                std::to_string(last) + (part.parts.empty() ? ";" : "{" + told(file, part.parts) + "}");
    }
    return text;
}

TEST(Structure, ListsThePartsOfEachJob) {
    const JobFile file(
        "t.gjf",
        "%chk=a\n%mem=1GB\n#p hf/sto-3g\n opt=modredundant\n\nWater\nat last\n\n0 1\nO\nH 1 r\n\nr=0.96\n\nB 1 2 "
        "F\n\n--Link1--\r\n%chk=a\r\n# hf geom=allcheck\r\n\r\n");
    EXPECT_EQ(told(file, file_parts(file)),
              "job 1=Water 1-16{Link 0 1-2;route=#p hf/sto-3g opt=modredundant 3-4;title=Water 6-7;molecule=2 atoms "
              "9-13{variables=1 13-13;}Modifications to coordinates (opt=modredundant) 15-15;}job 2 18-20{Link 0 "
              "18-18;route=# hf geom=allcheck "
              "19-19;}");
    const JobFile empty("t.gjf", "");
    EXPECT_TRUE(file_parts(empty).empty());
}

std::string hints_of(const std::string& text) {
    const JobFile file("t.gjf", text);
    std::string told;
    for (const InlayHint& hint : inlay_hints(file, span_between(0, text.size()))) {
        const LineAndColumn at = line_and_column(text, hint.offset);
        told += std::to_string(at.line) + ":" + std::to_string(at.column) + "=" + hint.text + "|";
    }
    return told;
}

TEST(Structure, GivesHintsToAtomsAndCoordinates) {
    const std::string head = "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\n\n";
    EXPECT_EQ(hints_of(head + "B 1 2 F\n\n"), "6:1=1|7:1=2|9:6=1.000 Å|");
    EXPECT_EQ(hints_of(head + "B 1 9 F\nX\n\n"), "6:1=1|7:1=2|");
    EXPECT_EQ(hints_of(""), "");
    EXPECT_EQ(hints_of("# hf\n\nt\n\n0 1\nO\nH 1 r\n\nr=1\n\n"), "6:1=1|7:1=2|");
}

TEST(Structure, FindsTheFilesThatLinesName) {
    const std::string text = "# hf/gen\n\nt\n\n0 1\nH 0 0 0\n\n@basis/h.gbs/N ! here\n@\n\n";
    const JobFile file("t.gjf", text);
    const std::vector<FileLink> links = file_links(file);
    ASSERT_FALSE(links.empty());
    EXPECT_EQ(links[0].path, "basis/h.gbs");
    EXPECT_EQ(links[0].place.in(text), "basis/h.gbs");
}

}  // namespace
