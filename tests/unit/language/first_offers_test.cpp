// How often the word that was meant is among the first offers.
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/language/offers.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include "../../support/files.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

struct KnownWord {
    std::string name;
    std::string text;  // of the job
    Span place;        // of the word
    std::size_t route_end = 0;
};

// The word in the vocabulary's spelling, without what stands behind the name of a basis set; empty for one that is not
// known.
std::string known_name(const JobToken& token, const std::string& text, std::string& keyword) {
    const SimpleYAMLParser& schema = default_route_schema();
    const std::string word = to_lower_copy(text.substr(0, text.find_first_of("(*=/")));
    if (token.role == TokenRole::Keyword) {
        keyword = schema.normalize_keyword(word);
        return schema.knows_keyword(word) ? keyword : "";
    }
    if (token.role == TokenRole::Method) {
        return schema.knows_method(word) ? schema.normalize_keyword(word) : "";
    }
    if (token.role == TokenRole::BasisSet) {
        return schema.knows_basis(word) ? schema.normalize_basis(word) : "";
    }
    return token.role != TokenRole::Option || schema.option_completions(keyword, word).empty()
               ? ""
               : schema.normalize_option(keyword, word);
}

// The words of the examples' routes that have at least two letters, those behind a basis set's name not counted.
std::vector<KnownWord> known_words() {
    std::vector<KnownWord> words;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(QUOR_GJF_SOURCE_DIR) / "examples/jobs")) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        const JobFile file(path.string(), quor::test::bytes_of(path));
        std::string keyword;
        for (const JobToken& token : tokens_in(file, {0, static_cast<std::uint32_t>(file.text().size())})) {
            const std::string text(token.place.in(file.text()));
            const std::string name = known_name(token, text, keyword);
            const auto length = static_cast<std::uint32_t>(std::min(text.find_first_of("(*=/"), text.size()));
            if (!name.empty() && length > 1) {
                words.push_back({name,
                                 file.text(),
                                 {token.place.begin, length},
                                 file.jobs()[token.job].places.route_words.back().end()});
            }
        }
    }
    return words;
}

TEST(FirstOffers, HoldTheWordThatWasMeant) {
    const std::vector<KnownWord> words = known_words();
    ASSERT_GT(words.size(), 100U);
    std::mt19937 random(20);
    std::size_t met = 0;
    std::string missed;
    for (int i = 0; i < 200; ++i) {
        const KnownWord& word = words[random() % words.size()];
        const std::size_t cut = word.place.begin + 1 + random() % (word.place.length - 1);
        const JobFile file("t.gjf", word.text.substr(0, cut) + word.text.substr(word.route_end));
        std::vector<Offer> offers = offers_at(file, cut).offers;
        std::stable_sort(offers.begin(), offers.end(), [](const Offer& a, const Offer& b) { return a.rank < b.rank; });
        offers.resize(std::min<std::size_t>(offers.size(), 5));
        const std::string wanted = to_lower_copy(word.place.in(word.text));
        const bool is_met =
            std::any_of(offers.begin(), offers.end(), [&](const Offer& offer) { return offer.text == word.name; });
        met += is_met ? 1 : 0;
        missed += is_met ? "" : " " + wanted.substr(0, cut - word.place.begin) + "|" + wanted.substr(cut - word.place.begin);
    }
    EXPECT_GE(met, 180U) << missed;
}

}  // namespace
