// Tells what words mean: a table sorted by role and word, in which a word is looked up by halving.
#include <gjf/core/knowledge/fact_table.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/knowledge/route_facts.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

const Facts<WordDescription>& all_descriptions() {
    static const Facts<WordDescription> facts(
        "descriptions", {"role", "keyword", "word", "meaning", "default", "source", "certainty"},
        [](const std::string_view* cells) {
            return WordDescription{cells[0], cells[1], cells[2], cells[3], cells[4], cells[5], cells[6] == "certain"};
        });
    return facts;
}

// Options of one name have a row for each meaning, which lists the keywords that have it.
const WordDescription* find_described(std::string_view role, std::string_view keyword, std::string_view word) {
    const std::vector<WordDescription>& rows = all_descriptions().rows;
    const auto is_before = [&](const WordDescription& row) { return std::pair(row.role, row.word) < std::pair(role, word); };
    for (auto row = std::partition_point(rows.begin(), rows.end(), is_before);
         row != rows.end() && row->role == role && row->word == word; ++row) {
        if (keyword.empty() ? row->keyword.empty() : lists_word(row->keyword, keyword)) {
            return &*row;
        }
    }
    return nullptr;
}

// What stands behind the name of a basis set begins with one of these signs, some of which its name may have too.
const WordDescription* find_basis(std::string_view word) {
    const WordDescription* row = find_described("basis", {}, word);
    for (std::size_t end = word.size(); row == nullptr && end != std::string_view::npos;) {
        end = word.substr(0, end).find_last_of("(*+=");
        row = end == std::string_view::npos ? nullptr : find_described("basis", {}, word.substr(0, end));
    }
    return row;
}

// The method without r, u or ro before it; the word itself where that is a method, or nothing is before it.
std::string_view without_spin(std::string_view word) {
    for (const std::string_view prefix : spin_prefixes) {
        if (word.starts_with(prefix) && find_described("method", {}, word.substr(prefix.size())) != nullptr) {
            return word.substr(prefix.size());
        }
    }
    return word;
}

}  // namespace

const WordDescription* find_description(std::string_view role, std::string_view keyword, std::string_view word) {
    if (role == "option") {
        const bool is_one_word = !keyword.empty() && keyword.find(' ') == std::string_view::npos;
        return is_one_word ? find_described(role, without_spin(keyword), word) : nullptr;
    }
    if (!keyword.empty()) {
        return nullptr;
    }
    if (role == "basis") {
        return find_basis(word);
    }
    const WordDescription* row = find_described(role, {}, word);
    if (row != nullptr || (role != "keyword" && role != "method")) {
        return row;
    }
    row = find_described("method", {}, without_spin(word));
    return row != nullptr ? row : find_described("keyword", {}, word);
}

}  // namespace quor::input::gaussian
