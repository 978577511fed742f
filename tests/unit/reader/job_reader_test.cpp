// Whole jobs and files: --Link1--, sections, titles, failures, and input that is no job at all.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "../../support/files.hpp"

namespace quor::input::gaussian {
namespace {

using Texts = std::vector<std::string>;

const std::string helium = "# hf/sto-3g\n\nhelium\n\n0 1\nHe 0 0 0\n\n";

template <typename Action>
std::string refusal_of(Action action) {
    try {
        action();
        return "";
    } catch (const GJFParseException& error) {
        return error.what();
    }
}

std::string refusal_of_job(const std::string& text) {
    return refusal_of([&] { GJFParser::parse_string(text); });
}

TEST(Link1, SplitsAtLinesThatHoldItAlone) {
    struct Case {
        std::string text;
        Texts pieces;
    };
    const Case cases[] = {
        {"", {}},
        {"a", {"a\n"}},
        {"a\n--Link1--\nb\n", {"a\n", "b\n"}},
        {"a\r\n \t--LINK1--\r\nb", {"a\r\n", "b\n"}},
        {"--link1--\n", {""}},
        {"--link1--\n--link1--\na", {"", "", "a\n"}},
        {"a --link1--\n--link1-- b\n--link1---\n", {"a --link1--\n--link1-- b\n--link1---\n"}},
        {"a\n--link1--", {"a\n"}},
        {"\n", {"\n"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(GJFParser::split_by_link1(c.text), c.pieces) << c.text;
    }
}

TEST(Jobs, AreReadOneOrAll) {
    const std::string two = helium + "--Link1--\n" + "# mp2/sto-3g\n\nneon\n\n1 2\nNe 0 0 0\n";
    EXPECT_EQ(GJFParser::parse_string(two).title, "helium");
    const GJFMultiData file = GJFParser::parse_string_multi(two);
    ASSERT_EQ(file.jobs.size(), 2u);
    EXPECT_EQ(file.jobs[1].title, "neon");
    EXPECT_EQ(GJFParser::parse_string_multi("\n--link1--\n" + two + "\n--Link1--\n  \n").jobs.size(), 2u);
    EXPECT_EQ(GJFParser::parse_string("# hf\n\nabout --link1-- in a title\n\n0 1\nH 0 0 0\n").title,
              "about --link1-- in a title");
    EXPECT_EQ(GJFParser::parse_string_multi(helium + "! --link1--\n").jobs.size(), 1u);
}

TEST(Jobs, NameTheOneThatFails) {
    const auto refusal = [](const std::string& text) { return refusal_of([&] { GJFParser::parse_string_multi(text); }); };
    EXPECT_EQ(refusal(helium + "--link1--\nHello\n"),
              "GJF Parse Error: Job 2: GJF Parse Error: Invalid control line: Hello");
    EXPECT_EQ(refusal("\n--link1--\n\n--link1--\n# hf\n"), "GJF Parse Error: Job 3: GJF Parse Error: Missing title section");
    for (const char* text : {"", "\n \n", "--link1--\n", "\n--Link1--\n--LINK1--\n\n"}) {
        EXPECT_EQ(refusal(text), "GJF Parse Error: No valid jobs found in input") << text;
    }
    EXPECT_THROW(GJFParser::parse_string_multi("# hf\n\nt\n\n0 99999999999\nH 0 0 0\n"), std::out_of_range);
}

TEST(Jobs, MissParts) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "Empty file or invalid format"},
        {" \n\t\n", "Empty file or invalid format"},
        {"! only\n\n! comments\n", "Empty file or invalid format"},
        {"--Link1--\n" + helium, "Empty file or invalid format"},
        {"Hello\n", "Invalid control line: Hello"},
        {"# hf\n", "Missing title section"},
        {"%chk=a\n", "Missing title section"},
        {"# hf\n\ntitle\n", "Missing geometry section"},
        {"# hf\n\ntitle\n\n! no molecule\n\n", "Missing geometry section"},
        {"# hf geom=check\n\ntitle\n", "Missing charge/spin line for geom=check"},
        {"# hf geom=check\n\ntitle\n\n! comment\n", "Missing charge/spin line for geom=check"},
        {"# hf geom=check\n\ntitle\n\nno charge\n", "Invalid charge/spin line: no charge"},
        {"# hf\n\ntitle\n\n0 1\n", "Geometry section must have at least 2 lines"},
        {"# hf extraoverlays\n\n1/2;\n\n", "Missing title section"},
    };
    for (const auto& [text, message] : cases) {
        EXPECT_EQ(refusal_of_job(text), "GJF Parse Error: " + message) << text;
    }
}

TEST(Jobs, AreReadWhateverTheLineEnds) {
    const std::string unix_text = "%chk=a.chk\n#p hf/sto-3g\nopt\n\ntwo\nlines \n\n0 1\nHe 0 0 0\n\nleft\n";
    std::string dos_text = "\xEF\xBB\xBF";
    for (const char c : unix_text) {
        dos_text += c == '\n' ? "\r\n" : std::string(1, c);
    }
    for (const std::string& text :
         {unix_text, dos_text, "\n \n! note\n" + unix_text, unix_text.substr(0, unix_text.size() - 1)}) {
        const GJFData job = GJFParser::parse_string(text);
        EXPECT_EQ(job.control.chk, "a.chk");
        EXPECT_EQ(job.title, "two\nlines ");
        EXPECT_EQ(job.geom.atoms.size(), 1u);
        EXPECT_EQ(job.extra_input_text(0), "left");
    }
}

TEST(Jobs, KeepCommentsAsTextInTitlesAndSections) {
    const GJFData job = GJFParser::parse_string(
        "# hf ! small\n\nA title! Really\n! second line\n\n0 1 ! charge\nHe 0 0 0 ! one\n! two\n\n! text\nmore ! text\n");
    EXPECT_EQ(job.title, "A title! Really\n! second line");
    EXPECT_EQ(job.extra_input_text(0), "! text\nmore ! text");
    EXPECT_EQ(job.geom.molecule_lines, (Texts{"He 0 0 0 ! one", "! two"}));
    EXPECT_EQ(job.control.raw_lines, Texts{"# hf ! small"});
}

TEST(Titles, MayBeEmpty) {
    struct Case {
        std::string text, title;
        std::size_t atoms;
    };
    const Case cases[] = {
        {"# hf\n\n\n0 1\nHe 0 0 0\n", "", 1},
        {"# hf\n\n\n\n0 1\nHe 0 0 0\n\nx\n", "", 1},
        {"# hf geom=check\n\n\n0 1\n", "", 0},
        {"# hf extraoverlays\n\n1/2;\n\n\n0 1\nHe 0 0 0\n", "", 1},
        {"# hf\n\n0 1\n\n0 1\nHe 0 0 0\n", "0 1", 1},
        {"# hf\n\n\n0 1\n\n0 1\nHe 0 0 0\n", "0 1", 1},
        {"# hf\n\n\na title\n\n0 1\nHe 0 0 0\n", "a title", 1},
        {"# hf\n\n\n2 1\nwater at 300 K\n\n0 1\nHe 0 0 0\n", "2 1\nwater at 300 K", 1},
        {"# hf\n\n\n2 1\nwater\n\n! c\n\n0 1\nHe 0 0 0\n", "2 1\nwater", 1},
        {"# hf\n\n\n! c\n0 1\nO 0 0 0\nH 0 0 1\n\nleft\n", "", 2},
        {"# hf\n\n\n0 1\nHe 0 0 0\n\n0 1\nleft over\n", "", 1},
        {"# hf\n\n\n0 1\nHe 0 0 0\n\n0 1\nHe 0 0 1\n", "0 1\nHe 0 0 0", 1},
        {"# hf geom=check\n\n\n2 1\n\n0 1\n", "2 1", 0},
        {"# hf geom=check\n\n\n0 1\n\nleft\n", "", 0},
        {"# hf/gen geom=check\n\n\n0 1\n\n1 2\nS 1 1.0\n", "", 0},
        {"# hf/gen geom=check\n\n\n2 1\n\n0 1\n\nH 0\nS 1 1.0\n", "2 1", 0},
    };
    for (const Case& c : cases) {
        const GJFData job = GJFParser::parse_string(c.text);
        EXPECT_EQ(job.title, c.title) << c.text;
        EXPECT_EQ(job.geom.atoms.size(), c.atoms) << c.text;
    }
    EXPECT_EQ(refusal_of_job("# hf\n\n0 1\nHe 0 0 0\n"), "GJF Parse Error: Missing geometry section");
}

TEST(Checkpoints, GiveMoleculeOrAll) {
    const GJFData check = GJFParser::parse_string("# hf geom=check\n\nt\n\n-1 2 0 1\nkept\n\nleft\n");
    EXPECT_EQ(check.geom.charge_spin_pairs().size(), 2u);
    EXPECT_TRUE(check.geom.atoms.empty());
    EXPECT_EQ(check.geom.molecule_lines, Texts{"kept"});
    EXPECT_EQ(check.extra_input_text(0), "left");
    const GJFData all = GJFParser::parse_string("# hf Geom=AllCheck pop=nboread\n\n$nbo\n$end\nx\n");
    EXPECT_EQ(all.title, "");
    EXPECT_EQ(all.geom.multiplicity, 0);
    ASSERT_EQ(all.extra_inputs.size(), 2u);
    EXPECT_EQ(all.extra_inputs[0].kind, ExtraInputSectionKind::NBOInput);
}

TEST(Overlays, AreKeptWhenTheRouteAsksForThem) {
    const GJFData job = GJFParser::parse_string("# hf extraoverlays\n\n1/2=3/4;\n2/5=6/7;\n\nt\n\n0 1\nHe 0 0 0\n");
    EXPECT_EQ(job.extra_overlays, "1/2=3/4;\n2/5=6/7;");
    EXPECT_EQ(job.title, "t");
    EXPECT_FALSE(GJFParser::parse_string(helium).extra_overlays.has_value());
}

TEST(ControlSections, MayHaveABlankLineBeforeTheRoute) {
    const GJFData job = GJFParser::parse_string("\n%chk=a\n\n! note\n%mem=1GB\n \n# hf\nopt\n\nt\n\n0 1\nHe 0 0 0\n");
    EXPECT_EQ(job.control.mem, "1GB");
    EXPECT_EQ(job.control.route_keywords, (Texts{"#", "hf", "opt"}));
    EXPECT_EQ(job.title, "t");
}

TEST(Texts, AreCutForCallers) {
    EXPECT_EQ(GJFParser::split_by_empty_lines("\n a \nb\r\n \t\n\nc"), (Texts{" a \nb", "c"}));
    EXPECT_EQ(GJFParser::split_by_empty_lines(" \n"), Texts{});
    EXPECT_EQ(GJFParser::split_string("a,,b,", ','), (Texts{"a", "", "b"}));
    EXPECT_EQ(GJFParser::split_string("", ','), Texts{});
    EXPECT_EQ(GJFParser::trim(" \t x y\r\n"), "x y");
    EXPECT_TRUE(GJFParser::is_number("1e5"));
    EXPECT_FALSE(GJFParser::is_number(""));
    EXPECT_TRUE(GJFParser::is_integer("-7"));
    EXPECT_FALSE(GJFParser::is_integer("7.0"));
}

TEST(Files, AreReadOrRefused) {
    namespace fs = std::filesystem;
    const quor::test::TemporaryFolder folder;
    const fs::path path = folder.write("job.gjf", helium);
    EXPECT_EQ(GJFParser::parse_file(path).title, "helium");
    EXPECT_EQ(GJFParser::parse_file_multi(path).jobs.size(), 1u);
    folder.write("job.gjf", "");
    EXPECT_EQ(refusal_of([&] { GJFParser::parse_file(path); }), "GJF Parse Error: Empty file or invalid format");
    fs::remove(path);
    for (const fs::path& bad : {path, folder.path(), fs::path("/no/such/file"), fs::path("")}) {
        EXPECT_EQ(refusal_of([&] { GJFParser::parse_file(bad); }), "GJF Parse Error: Cannot open file: " + bad.string());
        EXPECT_EQ(refusal_of([&] { GJFParser::parse_file_multi(bad); }),
                  "GJF Parse Error: Cannot open file: " + bad.string());
    }
}

TEST(HostileInput, IsRefusedInLinearTime) {
    const std::string endless(1'000'000, 'x');
    std::string binary;
    for (int i = 0; i < 300'000; ++i) {
        binary += static_cast<char>(i * 131 % 256);
    }
    std::string short_lines = "# hf\n\nt\n\n0 1\n";
    for (int i = 0; i < 300'000; ++i) {
        short_lines += "x\n";
    }
    const std::string texts[] = {endless,
                                 "# " + endless,
                                 "%" + endless + "=1",
                                 std::string(2'000'000, '('),
                                 "# hf\n\nt\n\n0 1\nH " + std::string(2'000'000, '('),
                                 "# " + std::string(1'000'000, '(') + "\n",
                                 binary,
                                 std::string(1'000'000, '\0'),
                                 std::string(1'000'000, '\''),
                                 "# hf\n\nt\n\n0 1\nH 0 0 " + std::string(1'000'000, '9') + "x",
                                 short_lines + "y z\nw\n",
                                 std::string(2'000'000, '-')};
    const std::clock_t start = std::clock();
    for (const std::string& text : texts) {
        EXPECT_THROW(GJFParser::parse_string(text), GJFParseException);
        EXPECT_THROW(GJFParser::parse_string_multi(text), GJFParseException);
    }
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 60);
    std::string many_jobs;
    for (int i = 0; i < 20'000; ++i) {
        many_jobs += "# hf geom=allcheck\n--Link1--\n";
    }
    EXPECT_EQ(GJFParser::parse_string_multi(many_jobs).jobs.size(), 20'000u);
}

}  // namespace
}  // namespace quor::input::gaussian
