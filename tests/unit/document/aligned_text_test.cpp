// Aligned texts: columns stand below each other, and nothing but blanks of atom lines changes, over texts, examples and real
// files.
#include <gjf/core/document/aligned_text.hpp>

#include "../../support/real_files.hpp"

#include <gjf/core/job/job_comparison.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/job_text.hpp>
#include <gjf/core/text/text.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

const std::string head = "# hf/sto-3g ! kept  as it is\n\nt  t\n\n0   1\n";

TEST(AlignedText, AlignsColumns) {
    const struct {
        const char* before;
        const char* after;
    } rows[] = {
        {"C 0 0 0\nCl -1.50  10.25 3.\n", " C    0      0     0\n Cl  -1.50  10.25  3.\n"},
        {"C -1 0.0 0 0 H\n\tH 0.5 0 0\n", " C  -1  0.0  0  0  H\n H      0.5  0  0\n"},
        {"O ! first\nH  1 r\nH 1 r 2  a ! third\n", " O              ! first\n H  1  r\n H  1  r  2  a  ! third\n"},
        {"C(Fragment=1, Iso=13) 0 0 0\nH 0 0 1.0\n", " C(Fragment=1, Iso=13)  0  0  0\n H                      0  0  1.0\n"},
        {"C 1.0D0 0 1e-3\r\nH 0 10 0   \r\n", " C  1.0D0   0  1e-3\r\n H  0      10  0\r\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(aligned_text(head + row.before + "\n"), head + row.after + "\n") << row.before;
        EXPECT_EQ(aligned_text(head + row.after + "\n"), head + row.after + "\n") << row.before;
    }
}

TEST(AlignedText, LeavesWhatItCannotAlign) {
    const std::string texts[] = {
        "",
        "Hello\n",
        head + "C,0,0,0\nH,0,0,1.1\n\n",
        head + "C 0 0 0x\nH   0 0 1\n\n",
        "# hf geom=allcheck\n\n",
        head + "@mol.xyz\n\n",
        "# hf/sto-3g\n\nt\n\n0 1\n C  0  0  0\n\nC   0   0   0  left over\n\n",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(aligned_text(text), text) << text;
    }
    EXPECT_EQ(aligned_text(head + "C,0,0,0\nH  0 0 1\n\n"), head + "C,0,0,0\n H  0  0  1\n\n");
}

std::vector<std::string_view> words_of(std::string_view line) {
    std::vector<std::string_view> words;
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t begin = std::min(line.find_first_not_of(" \t\v\f", i), line.size());
        const std::size_t end = std::min(line.find_first_of(" \t\v\f", begin), line.size());
        if (end > begin) {
            words.push_back(line.substr(begin, end - begin));
        }
        i = end;
    }
    return words;
}

// Tells what the aligned text of a file loses; empty for nothing.
std::string loss_of(const std::string& text) {
    const std::string aligned = aligned_text(text);
    const std::vector<JobReading> before = read_jobs_with_layout(text);
    const std::vector<JobReading> after = read_jobs_with_layout(aligned);
    std::set<std::size_t> may_change;
    for (const JobReading& reading : before) {
        may_change.insert(reading.layout.atoms.begin(), reading.layout.atoms.end());
        may_change.insert(reading.layout.zmatrix_rows.begin(), reading.layout.zmatrix_rows.end());
    }
    const std::vector<std::string_view> lines = split_lines(text);
    const std::vector<std::string_view> new_lines = split_lines(aligned);
    if (lines.size() != new_lines.size() || before.size() != after.size() || aligned_text(aligned) != aligned) {
        return lines.size() == new_lines.size() ? "a second run changes it" : "lines";
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool same =
            may_change.count(i + 1) != 0 ? words_of(lines[i]) == words_of(new_lines[i]) : lines[i] == new_lines[i];
        if (!same) {
            return "line " + std::to_string(i + 1);
        }
    }
    for (std::size_t job = 0; job < before.size(); ++job) {
        if (before[job].error != after[job].error || find_difference(before[job].job, after[job].job)) {
            return "job " + std::to_string(job + 1);
        }
    }
    return {};
}

void expect_no_loss_below(const std::filesystem::path& folder, std::size_t at_least) {
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".gjf" || extension == ".com")) {
            ++files;
            EXPECT_EQ(loss_of(read_whole_file(entry.path().string())), "") << entry.path();
        }
    }
    EXPECT_GE(files, at_least);
}

TEST(AlignedText, LosesNothingOfExamples) {
    expect_no_loss_below(std::filesystem::path(QUOR_GJF_SOURCE_DIR) / "examples/jobs", 30);
}

TEST(RealFiles, LoseNothingWhenAligned) {
    const std::filesystem::path folder = quor::test::real_files_folder();
    if (folder.empty()) {
        GTEST_SKIP() << quor::test::no_real_files;
    }
    expect_no_loss_below(folder, 100);
}

}  // namespace
