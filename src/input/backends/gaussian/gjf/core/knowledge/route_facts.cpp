// Turns the tables about words of routes into answers.
#include <gjf/core/knowledge/route_facts.hpp>

#include <gjf/core/knowledge/fact_table.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

const Facts<OptionValue>& all_option_values() {
    static const Facts<OptionValue> facts(
        "option_values", {"keyword", "options", "takes_value", "kind", "least", "names", "severity"},
        [](const std::string_view* cells) {
            return OptionValue{cells[0], cells[1], cells[2], cells[3], cells[4], cells[5], cells[6]};
        });
    return facts;
}

}  // namespace

std::span<const OptionValue> option_values(std::string_view keyword) {
    const std::vector<OptionValue>& rows = all_option_values().rows;  // sorted by keyword
    const auto first =
        std::partition_point(rows.begin(), rows.end(), [&](const OptionValue& row) { return row.keyword < keyword; });
    return {first, std::find_if(first, rows.end(), [&](const OptionValue& row) { return row.keyword != keyword; })};
}

bool lists_word(std::string_view list, std::string_view word) noexcept {
    for (std::size_t at = list.find(word); at != std::string_view::npos && !word.empty(); at = list.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || list[at - 1] == ' ') && (end == list.size() || list[end] == ' ')) {
            return true;
        }
    }
    return false;
}

std::string missing_route_facts() { return all_option_values().table.problem(); }

}  // namespace quor::input::gaussian
