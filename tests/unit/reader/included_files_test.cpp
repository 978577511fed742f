// Files that lines "@file" name: which are opened, what is said of the others, and the job that they make.
#include <gjf/core/reader/included_files.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "../../support/files.hpp"

namespace quor::input::gaussian {
namespace {

class IncludedFilesTest : public ::testing::Test {
   protected:
    IncludedFilesTest() {
        folder.write("outside.txt", "secret\n");
        folder.write("jobs/job.gjf", "@job.gjf\n");
        folder.write("jobs/atoms", "O 0. 0. 0.\n");
        folder.write("jobs/sub/more", "H 0. 0. 1.\n");
    }

    std::string path(const std::string& name = "jobs/job.gjf") const { return (folder / name).string(); }

    std::vector<IncludedFile> files_of(const std::string& text) const { return read_included_files(text, path()); }

    // What became of the one file of a text.
    std::string outcome_of(const std::string& line) const {
        const std::vector<IncludedFile> files = files_of(line + "\n");
        if (files.size() != 1) {
            return std::to_string(files.size()) + " files";
        }
        EXPECT_TRUE(files[0].problem.empty() || files[0].text.empty()) << line;
        return files[0].problem.empty() ? files[0].text : files[0].problem;
    }

    const quor::test::TemporaryFolder folder;
};

TEST_F(IncludedFilesTest, AreReadBesideTheText) {
    const std::string text = "O 0. 0. 0.\n";
    folder.write("jobs/two words", text);
    folder.write("jobs/returns", "a\r\nb\r\n");
    folder.write("jobs/empty", "");
    folder.write("jobs/..atoms", text);
    std::filesystem::create_symlink("sub/more", folder / "jobs/inner_link");
    const struct {
        const char* line;
        std::string text;
    } lines[] = {
        {"@atoms", text},
        {"  @ atoms \t", text},
        {"@atoms/N", text},
        {"@atoms/n", text},
        {"@atoms /N", text},
        {"@atoms\r", text},
        {"@atoms ! which are not printed", text},
        {"@./atoms", text},
        {"@sub/../atoms", text},
        {"@../jobs/atoms", text},
        {"@..atoms", text},
        {"@two words", text},
        {"@two words/N", text},
        {"@sub/more", "H 0. 0. 1.\n"},
        {"@inner_link", "H 0. 0. 1.\n"},
        {"@returns", "a\r\nb\r\n"},
        {"@empty", ""},
    };
    for (const auto& each : lines) {
        EXPECT_EQ(outcome_of(each.line), each.text) << each.line;
    }
    EXPECT_EQ(outcome_of("@" + path("jobs/atoms")), text);
}

TEST_F(IncludedFilesTest, AreNotOpenedElsewhere) {
    const std::string outside = "lies outside the folder of the job";
    std::filesystem::create_symlink("../outside.txt", folder / "jobs/link");
    std::filesystem::create_symlink(folder.path(), folder / "jobs/link_to_folder");
    std::filesystem::create_symlink("link", folder / "jobs/link_to_link");
    std::filesystem::create_directory(folder / "jobs2");
    folder.write("jobs2/file", "secret\n");
    for (const std::string& name :
         {std::string("../outside.txt"), std::string("../outside.txt/N"), std::string("../nothing"),
          std::string("sub/../../outside.txt"), std::string("./../jobs2/file"), std::string("/etc/passwd"),
          std::string("/dev/stdin"), std::string("/"), std::string("/N"), std::string(".."), std::string("link"),
          std::string("link_to_link"), std::string("link_to_folder/outside.txt"), std::string("nowhere/../../outside.txt"),
          path("outside.txt"), path("jobs2/file")}) {
        EXPECT_EQ(outcome_of("@" + name), outside) << name;
    }
}

TEST_F(IncludedFilesTest, AreRegularTexts) {
    std::filesystem::create_symlink("circle2", folder / "jobs/circle1");
    std::filesystem::create_symlink("circle1", folder / "jobs/circle2");
    std::filesystem::create_symlink("nothing", folder / "jobs/link_to_nothing");
    ASSERT_EQ(::mkfifo(path("jobs/pipe").c_str(), 0600), 0);
    folder.write("jobs/binary", std::string("a\0b", 3));
    folder.write("jobs/utf16", std::string("\xff\xfe"
                                           "O\0",
                                           4));
    folder.write("jobs/large", std::string(largest_included_text + 1, 'x'));
    const struct {
        std::string line;
        const char* problem;
    } lines[] = {
        {"@nothing", "is not there"},
        {"@sub/nothing", "is not there"},
        {"@nowhere/at/all", "is not there"},
        {"@atoms/below", "is not there"},
        {"@link_to_nothing", "cannot be read"},
        {"@atoms/N/N", "is not there"},
        {"@ ! a comment", "is not there"},
        {"@\"atoms\"", "is not there"},
        {"@ATOMS", "is not there"},
        {std::string("@atoms\0x", 8), "is not there"},
        {"@" + std::string(5000, 'x'), "cannot be read"},
        {"@circle1", "cannot be read"},
        {"@sub", "is no file that can be included"},
        {"@.", "is no file that can be included"},
        {"@pipe", "is no file that can be included"},
        {"@binary", "is no text"},
        {"@utf16", "is no text"},
        {"@large", "is too large to be looked at"},
        {"@job.gjf", "would include itself"},
        {"@sub/../job.gjf/N", "would include itself"},
    };
    for (const auto& each : lines) {
        EXPECT_EQ(outcome_of(each.line), each.problem) << each.line.substr(0, 40);
    }
}

TEST_F(IncludedFilesTest, AreTheLinesThatBeginWithTheSignAlone) {
    for (const char* text : {"", "atoms\n", "! @atoms\n", "x @atoms\n", "@\n", "@ \n", "#p @atoms\n"}) {
        EXPECT_TRUE(files_of(text).empty()) << text;
    }
    EXPECT_TRUE(read_included_files("@atoms\n", "").empty());
    EXPECT_TRUE(read_included_files("@atoms\n", path("no/such/folder/job.gjf")).empty());
}

TEST_F(IncludedFilesTest, MayNameFilesInTurnFourDeep) {
    folder.write("jobs/1", "@2\n");
    folder.write("jobs/2", "@sub/3\n");
    folder.write("jobs/sub/3", "@4\n");  // names are those of the job's folder
    folder.write("jobs/4", "deepest\n");
    EXPECT_EQ(with_included_files("@1", files_of("@1")), "deepest\n");
    EXPECT_EQ(find_problem(files_of("@1").at(0)), "");
    folder.write("jobs/0", "@1\n");
    EXPECT_EQ(find_problem(files_of("@0").at(0)), "4 is named too deep in other files");
}

TEST_F(IncludedFilesTest, GoRoundInNoCircle) {
    folder.write("jobs/a", "x\n@b\n");
    folder.write("jobs/b", "@a/N\n");
    folder.write("jobs/self", "@./self\n");
    folder.write("jobs/back", "@job.gjf\n");
    std::filesystem::create_symlink("self", folder / "jobs/other_self");
    EXPECT_EQ(find_problem(files_of("@a").at(0)), "a would include itself");
    EXPECT_EQ(find_problem(files_of("@self").at(0)), "./self would include itself");
    EXPECT_EQ(find_problem(files_of("@other_self").at(0)), "./self would include itself");
    EXPECT_EQ(find_problem(files_of("@back").at(0)), "job.gjf would include itself");
    const std::vector<IncludedFile> twice = files_of("@atoms\n@atoms\n");
    ASSERT_EQ(twice.size(), 2u);
    EXPECT_EQ(find_problem(twice[1]), "");  // twice is no circle
}

TEST_F(IncludedFilesTest, AreOnlySoMany) {
    const auto lines = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += "@atoms\n";
        }
        return text;
    };
    EXPECT_EQ(files_of(lines(most_included_files)).back().problem, "");
    const std::vector<IncludedFile> many = files_of(lines(most_included_files + 5));
    ASSERT_EQ(many.size(), most_included_files + 1);
    EXPECT_EQ(many.back().problem, "is one file more than are looked at");
    // Files that multiply, four deep, end as soon.
    for (const char* name : {"1", "2", "3"}) {
        std::string text;
        for (int i = 0; i < 50; ++i) {
            text += "@" + std::to_string(name[0] - '0' + 1) + "\n";
        }
        folder.write(std::string("jobs/") + name, text);
    }
    folder.write("jobs/4", std::string(1000, 'x'));
    EXPECT_NE(find_problem(files_of("@1").at(0)), "");
    EXPECT_LE(with_included_files("@1", files_of("@1")).size(), most_included_files * 1001);
    // Their sizes count together.
    folder.write("jobs/half", std::string(largest_included_text / 2 + 1, 'x'));
    EXPECT_EQ(files_of("@half\n@half\n").at(0).problem, "");
    EXPECT_EQ(files_of("@half\n@half\n").at(1).problem, "is too large to be looked at");
}

TEST_F(IncludedFilesTest, StandInThePlaceOfTheirLines) {
    folder.write("jobs/open", "last");
    folder.write("jobs/two", "a\n@open\nb\n");
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"", ""},
        {"x\n@atoms\ny\n", "x\nO 0. 0. 0.\ny\n"},
        {"x\r\n@open\r\ny", "x\r\nlast\ny"},
        {"@two\n@nothing\n@open", "a\nlast\nb\n@nothing\nlast\n"},
        {"\n\n@open\n\n", "\n\nlast\n\n"},
    };
    for (const auto& [text, whole] : texts) {
        EXPECT_EQ(with_included_files(text, files_of(text)), whole) << text;
    }
}

TEST_F(IncludedFilesTest, MakeOneJob) {
    folder.write("jobs/hydrogen", "H 0. 0. 0.\nH 0. 0. 0.74\n");
    folder.write("jobs/jobs", "H 0. 0. 0.\n\n--Link1--\n# hf\n\nt\n\n0 1\nHe 0. 0. 0.\n");
    const std::string text =
        "# hf\n\nfirst\n\n0 1\nHe 0. 0. 0.\n\n--Link1--\n# hf\n\nt\n\n0 1\n@hydrogen/N\n\n--Link1--\n# hf\n\nt\n\n0 "
        "1\n@nothing\n\n"
        "--Link1--\n# hf\n\nt\n\n0 1\n@jobs\n\n";
    const std::vector<IncludedFile> files = files_of(text);
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    ASSERT_EQ(readings.size(), 4u);
    EXPECT_FALSE(read_with_included_files(text, readings[0], files));
    EXPECT_FALSE(read_with_included_files(text, readings[2], files));
    EXPECT_FALSE(read_with_included_files(text, readings[3], files));
    const std::optional<JobReading> whole = read_with_included_files(text, readings[1], files);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->error, "");
    EXPECT_EQ(whole->job.geom.atom_count(), 2u);
    EXPECT_FALSE(whole->atoms_uncertain);
    EXPECT_TRUE(readings[1].atoms_uncertain);
    EXPECT_EQ(readings[1].job.geom.molecule_lines, std::vector<std::string>{"@hydrogen/N"});
}

}  // namespace
}  // namespace quor::input::gaussian
