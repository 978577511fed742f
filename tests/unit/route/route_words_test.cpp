// What a route has, asked by name.
#include <gjf/core/route/route_words.hpp>

#include "small_vocabulary.hpp"

namespace quor::input::gaussian::test {
namespace {

// Returns the stretch of a route where a word stands; "-" where it has none.
std::string place_of(const char* route, const char* word) {
    const RouteTree tree = read_route(route, vocabulary()).tree;
    const std::optional<Span> place = RouteWords(tree).find_word(word);
    return place ? std::string(place->in(tree.text)) : "-";
}

TEST(RouteWords, FindsKeywordsOptionsAndMethods) {
    constexpr struct {
        const char* route;
        const char* word;
        const char* place;
    } rows[] = {
        {"# hf/sto-3g opt", "opt", "opt"},
        {"# hf/sto-3g Optimize=(Tight)", "opt", "Optimize"},
        {"# hf/sto-3g opt=(calcfc,Maxcycle=5)", "opt=maxcycle", "Maxcycle"},
        {"# hf/sto-3g opt opt=tight", "opt=tight", "tight"},
        {"# hf/sto-3g frequency", "freq", "frequency"},
        {"# HF/sto-3g", "hf", "HF/sto-3g"},
        {"# oniom(hf:uff)", "oniom", "oniom(hf:uff)"},
        {"# hf/sto-3g opt=calcfc", "calcfc", "-"},
        {"# hf/sto-3g opt=calcfc", "opt=tight", "-"},
        {"# hf/sto-3g scrf=pcm opt", "opt=pcm", "-"},
        {"# hf/sto-3g optcyc", "opt", "-"},
        {"# hf/sto-3g freq", "frequency", "-"},  // its preferred spelling is another
        {"# hf/sto-3g force", "orce", "-"},
        {"# hf/sto-3g", "sto-3g", "-"},
        {"# oniom(opt:hf)", "opt", "-"},
        {"# oniom(hf:uff)", "hf", "-"},
        {"#", "opt", "-"},
        {"", "opt", "-"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(place_of(row.route, row.word), row.place) << row.route << ": " << row.word;
    }
}

TEST(RouteWords, TellsAllFromAny) {
    constexpr struct {
        const char* words;
        bool all;
        bool any;
    } rows[] = {
        {"opt", true, true},         {"opt scf", true, true},     {"opt=calcfc hf", true, true},
        {"opt force", false, true},  {"force opt", false, true},  {"force", false, false},
        {"opt=tight", false, false}, {"opt=calcf", false, false}, {"opt= scf=", false, false},
        {"force g1x", false, false}, {"", true, false},
    };
    const RouteTree tree = read_route("# hf/sto-3g opt=calcfc scf", vocabulary()).tree;
    const RouteWords words(tree);
    for (const auto& row : rows) {
        EXPECT_EQ(words.has_all_words(row.words), row.all) << row.words;
        EXPECT_EQ(words.has_any_word(row.words), row.any) << row.words;
    }
    EXPECT_TRUE(words.names_basis("sto-3g"));
    EXPECT_FALSE(words.names_basis("sto"));
}

TEST(RouteWords, TellsTheFirstFromTheLast) {
    const RouteTree tree = read_route("# hf/sto-3g opt=calcfc scf opt=tight", vocabulary()).tree;
    const RouteWords words(tree);
    ASSERT_EQ(words.keywords.size(), 3u);
    EXPECT_EQ(words.find_keyword("opt"), words.keywords[0]);
    EXPECT_EQ(words.last_keyword("opt"), words.keywords[2]);
    EXPECT_EQ(words.last_keyword("scf"), words.find_keyword("scf"));
    EXPECT_EQ(words.find_keyword("force"), nullptr);
    EXPECT_EQ(words.last_keyword("force"), nullptr);
    EXPECT_TRUE(words.has_option("opt", "tight"));
    EXPECT_FALSE(words.has_option("scf", "tight"));
}

}  // namespace
}  // namespace quor::input::gaussian::test
