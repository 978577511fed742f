// What holds of every file: all examples are asked at every place, whole and cut off.
#include <gjf/core/language/hover.hpp>
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/language/names.hpp>
#include <gjf/core/language/offers.hpp>
#include <gjf/core/language/structure.hpp>

#include "../../support/files.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;
namespace fs = std::filesystem;

std::vector<fs::path> example_files() {
    std::vector<fs::path> paths;
    for (const char* folder : {"examples/jobs", "examples/forms"}) {
        for (const auto& entry : fs::directory_iterator(fs::path(QUOR_GJF_SOURCE_DIR) / folder)) {
            if (entry.path().extension() == ".gjf" || entry.path().extension() == ".com") {
                paths.push_back(entry.path());
            }
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

void expect_in_order(const JobFile& file, const std::vector<JobToken>& tokens) {
    std::size_t end = 0;
    for (const JobToken& token : tokens) {
        EXPECT_GE(token.place.begin, end) << token.place.in(file.text());
        EXPECT_FALSE(token.place.empty());
        EXPECT_LT(token.job, file.jobs().size());
        end = token.place.end();
    }
    EXPECT_LE(end, file.text().size());
}

// The tokens of a part are those of the whole that touch it.
void expect_same_in_part(const JobFile& file, const std::vector<JobToken>& all, std::size_t at) {
    std::vector<Span> expected;
    for (const JobToken& token : all) {
        if (token.place.begin <= at && at <= token.place.end()) {
            expected.push_back(token.place);
        }
    }
    std::vector<Span> found;
    for (const JobToken& token : tokens_in(file, span_between(at, at))) {
        found.push_back(token.place);
    }
    EXPECT_EQ(found, expected) << "at " << at;
}

void expect_answers(const JobFile& file, std::size_t at) {
    if (const std::optional<Hover> hover = hover_at(file, at)) {
        EXPECT_LE(hover->place.begin, at);
        EXPECT_GE(hover->place.end(), at);
    }
    const Offers offers = offers_at(file, at);
    EXPECT_TRUE(offers.offers.empty() || (offers.replaced.begin <= at && at <= offers.replaced.end())) << at;
    const Occurrences names = occurrences_at(file, at);
    if (names.kind == NameKind::Variable) {
        const std::string text = with_edits(file.text(), rename_edits(file, at, "renamed_name"));
        EXPECT_EQ(JobFile("t.gjf", text).jobs().size(), file.jobs().size());
    }
}

TEST(ExampleFiles, AreAnsweredAtEveryPlace) {
    const std::vector<fs::path> paths = example_files();
    ASSERT_GE(paths.size(), 80U);
    for (const fs::path& path : paths) {
        SCOPED_TRACE(path.filename().string());
        const std::string text = quor::test::bytes_of(path);
        const JobFile file("t.gjf", text);
        const std::vector<JobToken> all = tokens_in(file, span_between(0, text.size()));
        expect_in_order(file, all);
        inlay_hints(file, span_between(0, text.size()));
        for (std::size_t at = 0; at <= text.size(); at += 1 + text.size() / 97) {
            expect_same_in_part(file, all, at);
            expect_answers(file, at);
            const JobFile cut("t.gjf", text.substr(0, at));
            expect_in_order(cut, tokens_in(cut, span_between(0, at)));
            offers_at(cut, at);
            file_parts(cut);
        }
    }
}

}  // namespace
