// Trees of routes: what each node is, where it stands and how it was found.
#include <gjf/core/route/route_tree.hpp>

#include "small_vocabulary.hpp"

namespace quor::input::gaussian::test {
namespace {

const char* name_of(RouteMatch match) {
    constexpr const char* names[] = {"", "~", "..", "?*", "?"};
    return names[static_cast<std::size_t>(match)];
}

// Writes a tree in one line: a segment is [method|basis|second method word=option:value,...]; a word is its canonical
// spelling, behind it "~" for an alias, ".." for an abbreviation, "?*" for an ambiguous one, "?" for one that is not known.
std::string tree_text(const RouteTree& tree) {
    std::string text;
    for (const RouteTree::Segment& segment : tree.segments) {
        text += "[" + segment.method + (segment.basis.empty() ? "" : "|" + segment.basis) +
                (segment.secondary_method.empty() ? "" : "|" + segment.secondary_method) + (segment.is_oniom ? "oniom" : "");
        text += !segment.is_assignment ? "" : "<" + std::string(segment.assigned.in(tree.text)) + ">";
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            text += " " + keyword.name + name_of(keyword.match);
            const char* separator = "=";
            for (const RouteTree::Option& option : keyword.options) {
                text += separator + option.canonical + name_of(option.match);
                text += option.value.empty() ? "" : ":" + std::string(option.value.in(tree.text));
                separator = ",";
            }
        }
        text += "]";
    }
    return text;
}

TEST(RouteTree, NamesWhatEachSegmentIs) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"#", ""},
        {"# hf/sto-3g opt", "[hf|sto-3g][ opt]"},
        {"#p hf sto-3g optimize", "[hf][|sto-3g][ opt~]"},
        {"# hf frequency fre", "[hf][ freq~][ freq..]"},
        {"# hf op f qqq", "[hf][ op?*][ f?*][ qqq?]"},
        {"# opt=(CalcFC,maxcycles=30,calc,x)", "[ opt=calcfc,maxcycle~:30,calc?*,x?]"},
        {"# opt(tight) opt=ti opt/tight", "[ opt=tight][ opt=tight..][ opt=tight]"},
        {"# scrf=pcm(solvent=water)", "[ scrf=pcm,solvent:water]"},
        {"# iop(3/33=1)", "[ iop=3/33?:1]"},
        {"# opt(calcfc)(tight)", "[ opt(calcfc)(tight)?]"},
        {"# mp2(full)/6-31g", "[mp2|631g mp2=full?]"},
        {"# hf/sto-3g//mp2/6-31g", "[hf|sto-3g|mp2]"},
        {"# = x", "[<>][ x?]"},
        {"# hf/xxx=freq basis=6-31g", "[hf<xxx>][|631g<basis>]"},
        {"# basis=6-31g xxx=freq", "[|631g<basis>][<xxx>]"},
        {"# ONIOM( hf/sto-3g:uff, a )=(b,c=d)", "[oniom oniom?=hf/sto-3g:uff?,a?,b?,c?:d]"},
        {"# oniom=(hf:uff) Oniom(hf:uff)=x oniom(hf", "[oniom oniom?=hf:uff?][oniom oniom?=hf:uff?,x?][oniom oniom?=?:(hf]"},
        // A segment says by itself what its neighbours leave it no place for.
        {"# hf/sto-3g b3lyp/6-31g", "[hf|sto-3g][b3lyp|631g]"},
        {"# hf mp2", "[hf][mp2]"},
        {"# hf/sto-3g 6-31g", "[hf|sto-3g][|631g]"},
        {"# hf/sto-3g xfoo/foo", "[hf|sto-3g][ xfoo? foo?]"},
        {"# hf/sto-3g/mp2/6-31g", "[hf|sto-3g mp2 6-31g?*]"},
    };
    for (const auto& [route, tree] : cases) {
        EXPECT_EQ(tree_text(read_route(route, vocabulary()).tree), tree) << route;
    }
}

// The texts at all places of a tree, separated by bars.
std::string places_text(const RouteTree& tree) {
    std::string text(tree.head.in(tree.text));
    const auto add = [&](Span place) { text += "|" + std::string(place.in(tree.text)); };
    for (const RouteTree::Segment& segment : tree.segments) {
        add(segment.place);
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            add(keyword.place);
            add(keyword.head);
            for (const RouteTree::Option& option : keyword.options) {
                add(option.place);
                add(option.name);
                add(option.value);
            }
        }
    }
    return text;
}

TEST(RouteTree, KnowsWhereEverythingStands) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {" #P hf/sto-3g  Opt", "#P|hf/sto-3g|Opt|Opt|Opt"},
        {"#n#p opt", "#n#p|opt|opt|opt"},
        {"opt", "|opt|opt|opt"},
        {"# opt = x", "#|opt|opt|opt|=|x|x|x"},
        {"# Opt=( CalcFC , MaxCycle = 30 )",
         "#|Opt=( CalcFC , MaxCycle = 30 )|Opt=( CalcFC , MaxCycle = 30 )|Opt|CalcFC|CalcFC||MaxCycle = 30|MaxCycle|30"},
        {"# hf/sto-3g xfoo/foo", "#|hf/sto-3g|xfoo/foo|xfoo|xfoo|foo|foo"},
        {"# hf/mp2(full)/x", "#|hf/mp2(full)/x|mp2(full)|mp2|full|full||x|x"},
        {"# foo foo/foo", "#|foo|foo|foo|foo/foo|foo|foo|foo|foo"},
        {"# opt=(a,,a)", "#|opt=(a,,a)|opt=(a,,a)|opt|a|a||a|a|"},
        {"# opt(tight)x", "#|opt(tight)x|opt(tight)x|opt(tight)x"},
    };
    for (const auto& [route, places] : cases) {
        EXPECT_EQ(places_text(read_route(route, vocabulary()).tree), places) << route;
    }
}

TEST(RouteTree, TellsWhatEachSegmentGaveToTheInterpretation) {
    // m, b, o for method, basis set and ONIOM; the indices of keywords.
    const std::pair<const char*, const char*> cases[] = {
        {"# hf/sto-3g opt freq", "[mb][0][1]"},
        {"# hf mp2 sto-3g 6-31g", "[m][0][b][1]"},
        {"# opt mp2(full) basis=sto-3g basis=sto-3g basis=6-31g", "[0][m][b][][b]"},
        {"# oniom(hf:uff) hf/sto-3g", "[o0][mb]"},
        {"# xxx=freq opt xfoo/foo opt", "[][0][12][3]"},
    };
    for (const auto& [route, given] : cases) {
        const RouteReading reading = read_route(route, vocabulary());
        std::string text;
        for (const RouteTree::Segment& segment : reading.tree.segments) {
            text += std::string("[") + (segment.gives_method ? "m" : "") + (segment.gives_basis ? "b" : "") +
                    (segment.gives_oniom ? "o" : "");
            for (std::size_t i = 0; i < segment.keyword_count; ++i) {
                text += std::to_string(segment.first_keyword + i);
            }
            text += "]";
        }
        EXPECT_EQ(text, given) << route;
    }
}

TEST(RouteTree, ComesWithTheInterpretationOfTheParser) {
    for (const char* route :
         {"", "# hf/sto-3g opt=(ts,calc)", "#n#p op hf mp2/6-31g x/y basis=z", "oniom(hf:uff) scrf=pcm(a=b)"}) {
        G16KeywordParser parser = make_parser();
        parser.parse(route);
        const ParsedKeywords plain = parser.get_parsed_keywords();
        const ParsedKeywords with_tree = read_route(route, vocabulary()).meaning;
        EXPECT_EQ(keywords_of(with_tree), keywords_of(plain)) << route;
        EXPECT_EQ(warnings_of(with_tree), warnings_of(plain)) << route;
        EXPECT_EQ(with_tree.method + with_tree.basis_set + with_tree.print_level,
                  plain.method + plain.basis_set + plain.print_level)
            << route;
    }
}

TEST(RouteTree, KnowsNothingWithoutAVocabulary) {
    EXPECT_EQ(tree_text(read_route("# hf/sto-3g opt=tight", SimpleYAMLParser()).tree), "[ hf? sto-3g?][ opt?=tight?]");
}

}  // namespace
}  // namespace quor::input::gaussian::test
