// Turns the tables of facts into answers, each table at its first question.
#include <gjf/core/knowledge/facts.hpp>

#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/knowledge/fact_table.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <map>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr const char* file_of_checks = "checks.md";

using Pair = std::pair<std::string_view, std::string_view>;

const Facts<Pair>& traits() {
    static const Facts<Pair> facts("words", {"word", "trait"}, [](const std::string_view* cells) {
        return Pair{cells[0], cells[1]};
    });
    return facts;
}

struct SolventWord {
    std::string_view word;
    std::string_view takes;
    std::string_view names;
    bool verified;
};

const Facts<SolventWord>& solvent_input() {
    static const Facts<SolventWord> facts("solvent_input", {"word", "takes", "names", "source"},
                                          [](const std::string_view* cells) {
                                              return SolventWord{cells[0], cells[1], cells[2], is_verified(cells[3])};
                                          });
    return facts;
}

const Facts<CoordinateWord>& all_coordinate_words() {
    static const Facts<CoordinateWord> facts("coordinate_words", {"kind", "word", "takes"},
                                             [](const std::string_view* cells) {
                                                 return CoordinateWord{cells[0], cells[1], cells[2]};
                                             });
    return facts;
}

struct OtherName {
    std::string_view kind;
    std::string_view name;
    std::string_view meant;
};

OtherName make_other_name(const std::string_view* cells) { return {cells[0], cells[1], cells[2]}; }

const Facts<OtherName>& other_names() {
    static const Facts<OtherName> facts("other_names", {"kind", "name", "meant"}, make_other_name);
    return facts;
}

const Facts<OtherName>& solvents() {
    static const Facts<OtherName> facts("solvents", {"kind", "name", "stands_for"}, make_other_name);
    return facts;
}

const Facts<Exclusion>& all_exclusions() {
    static const Facts<Exclusion> facts("excludes", {"what", "keyword", "first", "second", "severity"},
                                        [](const std::string_view* cells) {
                                            return Exclusion{cells[0], cells[1], cells[2], cells[3], cells[4]};
                                        });
    return facts;
}

std::vector<std::string_view> words_of(std::string_view list) {
    std::vector<std::string_view> words;
    split_fields(list, FieldSeparators::WhiteSpaceAndComma, true, words);
    return words;
}

const Facts<Need>& all_needs() {
    static const Facts<Need> facts("needs", {"keyword", "option", "severity", "any_of", "message", "hint"},
                                   [](const std::string_view* cells) {
                                       return Need{cells[0], cells[1], cells[2], words_of(cells[3]), cells[4], cells[5]};
                                   });
    return facts;
}

const Facts<CheckpointRead>& all_checkpoint_reads() {
    static const Facts<CheckpointRead> facts(
        "checkpoint_reads", {"keyword", "option", "fails_without", "content", "source"}, [](const std::string_view* cells) {
            return CheckpointRead{cells[0], cells[1], cells[2] == "yes", cells[3], is_verified(cells[4])};
        });
    return facts;
}

std::optional<std::string_view> find_name(const Facts<OtherName>& facts, std::string_view kind, std::string_view name) {
    const auto found = std::find_if(facts.rows.begin(), facts.rows.end(),
                                    [&](const OtherName& row) { return row.kind == kind && equals_folded(name, row.name); });
    return found == facts.rows.end() ? std::nullopt : std::optional(found->meant);
}

const SolventWord* find_solvent_word(std::string_view word) {
    const std::vector<SolventWord>& rows = solvent_input().rows;
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const SolventWord& row) { return equals_folded(word, row.word); });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace

bool has_trait(std::string_view word, std::string_view trait) {
    const std::vector<Pair>& rows = traits().rows;
    return std::find(rows.begin(), rows.end(), Pair{word, trait}) != rows.end();
}

bool method_has_trait(std::string_view method, std::string_view trait) {
    for (const std::string_view prefix : spin_prefixes) {
        if (method.starts_with(prefix) && has_trait(method.substr(prefix.size()), trait)) {
            return true;
        }
    }
    return false;
}

std::string_view words_with(std::string_view trait) {
    static const std::map<std::string_view, std::string> words = [] {
        std::map<std::string_view, std::string> lists;
        for (const auto& [word, of_word] : traits().rows) {
            std::string& list = lists[of_word];
            list.append(list.empty() ? "" : " ").append(word);
        }
        return lists;
    }();
    const auto found = words.find(trait);
    return found == words.end() ? std::string_view() : std::string_view(found->second);
}

const std::vector<std::string>& solvent_input_words() {
    static const std::vector<std::string> words = [] {
        std::vector<std::string> list;
        for (const SolventWord& row : solvent_input().rows) {
            list.emplace_back(row.word);
        }
        return list;
    }();
    return words;
}

bool is_verified_solvent_word(std::string_view word) {
    const SolventWord* row = find_solvent_word(word);
    return row != nullptr && row->verified;
}

bool takes_number(std::string_view solvent_input_word) {
    const SolventWord* row = find_solvent_word(solvent_input_word);
    return row != nullptr && row->takes == "number";
}

std::string_view names_taken(std::string_view solvent_input_word) {
    const SolventWord* row = find_solvent_word(solvent_input_word);
    return row == nullptr ? std::string_view() : row->names;
}

std::span<const CoordinateWord> coordinate_words() { return all_coordinate_words().rows; }

std::optional<std::string_view> other_name(std::string_view kind, std::string_view name) {
    return find_name(other_names(), kind, name);
}

bool is_solvent(std::string_view name) {
    const std::vector<OtherName>& rows = solvents().rows;
    return std::any_of(rows.begin(), rows.end(), [&](const OtherName& row) {
        // The comma of 1,4-dioxane ends an option, so that only the beginning of some names arrives here.
        return row.kind == "name" ? equals_folded(name, row.name.substr(0, name.size()))
                                  : row.kind != "not taken" && equals_folded(name, row.name);
    });
}

const std::vector<std::string>& solvent_names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (const OtherName& row : solvents().rows) {
            if (row.kind == "name") {
                list.emplace_back(row.name);
            }
        }
        return list;
    }();
    return names;
}

std::optional<std::string_view> abbreviated_solvent(std::string_view name) {
    return find_name(solvents(), "not taken", name);
}

std::span<const Exclusion> exclusions(std::string_view what, std::string_view keyword) {
    const std::vector<Exclusion>& rows = all_exclusions().rows;
    const auto belongs = [&](const Exclusion& row) { return row.keyword == keyword && row.what == what; };
    const Exclusion* const end = rows.data() + rows.size();
    const Exclusion* const first = std::find_if(rows.data(), end, belongs);  // the rows of one keyword stand together
    return {first, std::find_if_not(first, end, belongs)};
}

std::span<const Need> needs() { return all_needs().rows; }

std::span<const CheckpointRead> checkpoint_reads() { return all_checkpoint_reads().rows; }

const std::string& check_pages() {
    static const std::string text = read_facts(path_of_facts(file_of_checks));
    return text;
}

std::string path_of_check_pages() { return path_of_facts(file_of_checks); }

std::string missing_knowledge() {
    std::string problem =
        first_problem({&traits().table, &other_names().table, &solvents().table, &all_exclusions().table, &all_needs().table,
                       &all_checkpoint_reads().table, &solvent_input().table, &all_coordinate_words().table});
    if (problem.empty() && check_pages().empty()) {
        problem = path_of_facts(file_of_checks) + " cannot be read";
    }
    problem = problem.empty() ? missing_route_facts() : problem;
    return problem.empty() ? missing_basis_facts() : problem;
}

}  // namespace quor::input::gaussian
