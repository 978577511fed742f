// The document as a whole: no spelling twice, nothing unreachable, nothing without a row in the word tables.
#include "vocabulary_tables.hpp"

#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/schema_validation.hpp>

#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "../support/files.hpp"

namespace quor::input::gaussian {
namespace {

const SimpleYAMLParser::Impl& tables() {
    static const auto loaded = [] {
        auto fresh = std::make_unique<SimpleYAMLParser::Impl>();
        fresh->reset_schema();
        EXPECT_TRUE(load_schema_document(vocabulary_path(), *fresh));
        return fresh;
    }();
    return *loaded;
}

void expect_no_spelling_twice(const std::string& role, const GroupList& groups) {
    std::set<std::string> seen;
    for (const CandidateGroup& group : groups) {
        for (const std::string& form : group.forms) {
            EXPECT_TRUE(seen.insert(form).second) << role << ": " << form;
        }
    }
}

/// Names the states that `state` leads to: those it includes and those its edges lead to.
std::vector<std::string> followers(const std::string& state) {
    std::vector<std::string> names;
    if (const auto found = tables().state_includes.find(state); found != tables().state_includes.end()) {
        names = found->second;
    }
    if (const auto found = tables().state_edges.find(state); found != tables().state_edges.end()) {
        for (const GraphEdge& edge : found->second) {
            if (!edge.next.empty()) {
                names.push_back(edge.next);
            }
        }
    }
    return names;
}

std::set<std::string> reachable_from(std::vector<std::string> states) {
    std::set<std::string> reached;
    while (!states.empty()) {
        const std::string state = states.back();
        states.pop_back();
        if (reached.insert(state).second) {
            const auto names = followers(state);
            states.insert(states.end(), names.begin(), names.end());
        }
    }
    return reached;
}

std::set<std::string> all_reachable() {
    std::vector<std::string> starts = {tables().entry_state, tables().procedure_state, "basis"};
    for (const auto& [keyword, states] : tables().option_states) {
        starts.insert(starts.end(), states.begin(), states.end());
    }
    return reachable_from(std::move(starts));
}

TEST(Document, HasNoSpellingTwiceInOneRole) {
    expect_no_spelling_twice("keyword", tables().keyword_groups);
    expect_no_spelling_twice("method", tables().method_groups);
    expect_no_spelling_twice("basis set", tables().basis_groups);
    for (const auto& [keyword, groups] : tables().option_groups) {
        expect_no_spelling_twice(std::string(keyword), groups);
    }
}

TEST(Document, ListsThePreferredSpellingFirst) {
    std::size_t entries = 0;
    for (const auto& [state, groups] : tables().state_groups) {
        for (const CandidateGroup& group : groups) {
            EXPECT_EQ(group.canonical, group.forms.front()) << state;
            ++entries;
        }
    }
    EXPECT_GT(entries, 2500U);
}

TEST(Document, NamesOnlyStatesThatItHas) {
    for (const std::string& state : all_reachable()) {
        const bool known = state == "exi" || tables().state_groups.count(state) != 0 || !followers(state).empty();
        EXPECT_TRUE(known) << state;
    }
}

TEST(Document, LeavesNoStateUnreached) {
    const auto reached = all_reachable();
    for (const auto& [state, groups] : tables().state_groups) {
        EXPECT_EQ(reached.count(std::string(state)), 1U) << state;
    }
    for (const auto& [state, edges] : tables().state_edges) {
        EXPECT_EQ(reached.count(std::string(state)), 1U) << state;
    }
}

TEST(Document, LetsEveryBasisStateAccept) {
    for (const std::string& state : reachable_from({"basis"})) {
        EXPECT_EQ(reachable_from({state}).count("exi"), 1U) << state;
    }
}

TEST(Document, LeadsEveryKeywordBackToTheEntryState) {
    for (const CandidateGroup& group : tables().keyword_groups) {
        if (!group.has_action && group.next != "extern") {
            EXPECT_EQ(group.next, tables().entry_state) << group.canonical;
        }
    }
}

TEST(Document, GivesOptionsAndCategoriesToKeywordsOnly) {
    for (const auto& [keyword, states] : tables().option_states) {
        EXPECT_TRUE(tables().keyword_groups.match_exact(keyword).found()) << keyword;
    }
    for (const auto& [keyword, category] : tables().categories) {
        EXPECT_TRUE(tables().keyword_groups.match_exact(keyword).found()) << keyword;
    }
}

TEST(Document, GivesEveryKeywordOneOfThirteenCategories) {
    const std::set<std::string> known = {"job type", "geometry",   "guess",  "scf",       "solvation",   "model", "integral",
                                         "basis",    "properties", "output", "resources", "development", "method"};
    std::set<std::string> used;
    for (const CandidateGroup& group : tables().keyword_groups) {
        const std::string category = vocabulary().classify(group.canonical);
        EXPECT_EQ(known.count(category), 1U) << group.canonical << ": " << category;
        used.insert(category);
    }
    EXPECT_EQ(used, known);
}

TEST(Document, GivesOptionsToEveryMethodThatIsAKeywordToo) {
    for (const CandidateGroup& group : tables().method_groups) {
        if (group.has_action) {
            EXPECT_EQ(tables().option_states.count(group.canonical), 1U) << group.canonical;
            EXPECT_EQ(vocabulary().classify(group.canonical), "method") << group.canonical;
        }
    }
}

/// Returns the document with each text after the line in which its mark ends.
std::string document_with(const std::vector<std::pair<std::string, std::string>>& additions) {
    std::string document = quor::test::bytes_of(vocabulary_path());
    for (const auto& [mark, text] : additions) {
        const std::size_t place = document.find('\n', document.find(mark) + mark.size());
        EXPECT_NE(place, std::string::npos) << mark;
        document.insert(place + 1, text);
    }
    return document;
}

TEST(Document, CanBeExtendedByASite) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write(
        "site_route.yaml", document_with({{"  JobTypes:\n    entries:", "      - {forms: [sitejob, sitework], next: GCL}\n"},
                                          {"  # opt, fopt, popt", "  SiteOptions:\n    entries:\n      - {forms: [fast]}\n"},
                                          {"  option_states: {", "    sitework: SiteOptions,\n"},
                                          {"  categories: {", "    sitejob: job type,\n"}}));
    SimpleYAMLParser site;
    ASSERT_TRUE(site.load_from_file(path));
    EXPECT_FALSE(vocabulary().knows_keyword("sitejob"));
    EXPECT_TRUE(site.knows_keyword_exact("sitejob"));
    EXPECT_EQ(site.normalize_keyword("SiteWork"), "sitejob");
    EXPECT_TRUE(site.knows_option_exact("sitejob", "fast"));
    EXPECT_EQ(site.classify("sitework"), "job type");
    EXPECT_EQ(site.classify("opt"), "job type");
    EXPECT_TRUE(site.knows_option_exact("opt", "calcfc"));
    EXPECT_TRUE(validate_route_schema(path).empty());
}

TEST(Document, PassesItsOwnValidation) {
    for (const SchemaProblem& problem : validate_route_schema(vocabulary_path())) {
        ADD_FAILURE() << problem.line << ": " << problem.message;
    }
}

TEST(Document, HasARowInTheTablesForEveryWord) {
    std::set<std::string> rows;
    for (const char* const name : {"keywords", "methods"}) {
        for (const TableRow& row : read_table(name, 3)) {
            rows.insert(SimpleYAMLParser::to_lower(row[0]));
        }
    }
    for (const CandidateGroup& group : tables().keyword_groups) {
        for (const std::string& form : group.forms) {
            EXPECT_EQ(rows.count(form), 1U) << form;
        }
    }
    std::set<std::string> basis_rows;
    for (const TableRow& row : read_table("basis_sets", 1)) {
        basis_rows.insert(SimpleYAMLParser::to_lower(row[0]));
    }
    for (const CandidateGroup& group : tables().basis_groups) {
        EXPECT_EQ(basis_rows.count(group.forms.front()), 1U) << group.forms.front();
    }
}

TEST(Document, HasARowInTheTablesForEveryOption) {
    std::map<std::string, std::set<std::string>> rows;
    for (const TableRow& row : read_table("options", 3)) {
        rows[vocabulary().normalize_keyword(row[0])].insert(SimpleYAMLParser::to_lower(row[2]));
    }
    std::size_t checked = 0;
    for (const auto& [keyword, groups] : tables().option_groups) {
        const auto found = rows.find(std::string(keyword));
        if (found == rows.end()) {
            continue;  // a spin-prefixed name, which has the options of its method
        }
        for (const CandidateGroup& group : groups) {
            for (const std::string& form : group.forms) {
                EXPECT_EQ(found->second.count(form), 1U) << keyword << '=' << form;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 1500U);
}

}  // namespace
}  // namespace quor::input::gaussian
