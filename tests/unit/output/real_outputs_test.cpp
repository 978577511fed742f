// Real outputs, where QUOR_GJF_REAL_OUTPUTS names a folder of them with a table of what each holds: ends, causes, charges,
// steps and first and last atoms as that table says, also of outputs that are cut off where a step begins.
#include <gjf/core/output/diagnosis.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

using Row = std::map<std::string, std::string>;

std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> result(1);
    for (const char c : line) {
        if (c == '\t') {
            result.emplace_back();
        } else {
            result.back() += c;
        }
    }
    return result;
}

std::vector<Row> rows_of(const std::string& folder) {
    std::ifstream file(folder + "/manifest.tsv");
    std::string line;
    std::getline(file, line);
    const std::vector<std::string> heads = cells(line);
    std::vector<Row> rows;
    while (std::getline(file, line)) {
        const std::vector<std::string> values = cells(line);
        Row row;
        for (std::size_t i = 0; i < heads.size(); ++i) {
            row[heads[i]] = i < values.size() ? values[i] : "";
        }
        rows.push_back(row);
    }
    return rows;
}

std::string text_of(const std::string& path) {
    const auto source = open_output(path);
    std::string text;
    std::vector<char> buffer(1 << 16);
    for (std::size_t count = 0; (count = source->read(buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), count);
    }
    return text;
}

std::string path_of(const std::string& folder, const Row& row) {
    const std::string& name = row.at("name");
    return folder + "/" + name + (name.ends_with(".gz") ? "" : ".gz");
}

// "C -0.000371 0.000015 0.000066"
void expect_atom(const OutputAtom& atom, const std::string& text, const std::string& name) {
    std::istringstream fields(text);
    std::string symbol;
    fields >> symbol;
    for (const double value : atom.position) {
        double wanted = 0;
        fields >> wanted;
        EXPECT_NEAR(value, wanted, 1e-6) << name << ": " << text;
    }
}

void expect_row(const Diagnosis& found, const Row& row) {
    const std::string& name = row.at("name");
    const OutputSummary& summary = found.summary;
    const std::string termination = termination_name(summary.termination());
    EXPECT_EQ(termination == "unfinished" ? "none" : termination, row.at("termination")) << name;
    EXPECT_EQ(row.at("link").empty() ? "" : "l" + std::to_string(found.link), row.at("link")) << name;
    EXPECT_EQ(std::to_string(summary.steps.size()), row.at("steps")) << name;
    EXPECT_EQ(std::to_string(summary.last ? summary.last->geometry.atoms.size() : 0), row.at("atoms")) << name;
    if (!row.at("cause_fragment").empty()) {
        EXPECT_NE(found.cause_text.find(row.at("cause_fragment")), std::string::npos) << name << ": " << found.cause;
        EXPECT_FALSE(found.cause.empty()) << name;
    }
    EXPECT_EQ(found.cause.empty(), termination == "normal") << name;
    if (!row.at("charge_mult").empty()) {
        ASSERT_NE(summary.total_charge(), nullptr) << name;
        EXPECT_EQ(
            std::to_string(summary.total_charge()->charge) + "," + std::to_string(summary.total_charge()->multiplicity),
            row.at("charge_mult"))
            << name;
    }
    if (summary.last && !row.at("orientation").empty()) {
        const bool is_standard = row.at("orientation") == "Standard";
        const OutputGeometry& block = is_standard ? summary.last->standard : summary.last->geometry;
        ASSERT_FALSE(block.atoms.empty()) << name;
        expect_atom(block.atoms.front(), row.at("first_atom_last_block"), name);
        expect_atom(block.atoms.back(), row.at("last_atom_last_block"), name);
    }
}

TEST(RealFiles, OutputsAreDiagnosedAsTheirTableSays) {
    const char* const folder = std::getenv("QUOR_GJF_REAL_OUTPUTS");
    if (folder == nullptr) {
        GTEST_SKIP() << "QUOR_GJF_REAL_OUTPUTS names no folder of outputs";
    }
    const std::vector<Row> rows = rows_of(folder);
    ASSERT_GT(rows.size(), 10U);
    for (const Row& row : rows) {
        expect_row(diagnose_output(*open_output(path_of(folder, row))), row);
    }
}

TEST(RealFiles, OutputsThatAreCutWhereAStepBeginsAreUnfinished) {
    const char* const folder = std::getenv("QUOR_GJF_REAL_OUTPUTS");
    if (folder == nullptr) {
        GTEST_SKIP() << "QUOR_GJF_REAL_OUTPUTS names no folder of outputs";
    }
    std::size_t cuts = 0;
    for (const Row& row : rows_of(folder)) {
        const std::string text = text_of(path_of(folder, row));
        const OutputSummary whole = summarize_output(*text_source(text));
        std::size_t line = 1;
        std::size_t begin = 0;
        for (std::size_t step = 0; step < whole.steps.size(); ++step) {
            // Three lines into the step.
            for (; line < whole.steps[step].line + 3 && begin != std::string::npos; ++line) {
                begin = text.find('\n', begin) == std::string::npos ? begin : text.find('\n', begin) + 1;
            }
            const Diagnosis cut = diagnose_output(*text_source(std::string_view(text).substr(0, begin)));
            EXPECT_EQ(cut.summary.termination(), StepTermination::Unfinished) << row.at("name") << " " << step;
            EXPECT_EQ(cut.summary.steps.size(), step + 1) << row.at("name");
            ++cuts;
        }
    }
    EXPECT_GT(cuts, 65U);
}

}  // namespace
