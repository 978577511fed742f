// Turns the tables about words of routes into answers.
#include <gjf/core/knowledge/route_facts.hpp>

#include <gjf/core/knowledge/fact_table.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

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

using Lack = std::pair<std::string_view, std::string_view>;

const Facts<Lack>& all_lacks() {
    static const Facts<Lack> facts("method_lacks", {"property", "methods"}, [](const std::string_view* cells) {
        return Lack{cells[0], cells[1]};
    });
    return facts;
}

const Facts<MethodRequest>& all_requests() {
    static const Facts<MethodRequest> facts("method_requests", {"request", "unless", "needs", "kind", "severity"},
                                            [](const std::string_view* cells) {
                                                return MethodRequest{cells[0], cells[1], cells[2], cells[3], cells[4]};
                                            });
    return facts;
}

const Facts<Dispersion>& all_dispersions() {
    static const Facts<Dispersion> facts("dispersion", {"functional", "correction", "status", "severity"},
                                         [](const std::string_view* cells) {
                                             return Dispersion{cells[0], cells[1], cells[2], cells[3]};
                                         });
    return facts;
}

const Facts<MethodCost>& all_costs() {
    static const Facts<MethodCost> facts("method_costs", {"methods", "cost", "memory", "in_core", "disk"},
                                         [](const std::string_view* cells) {
                                             return MethodCost{cells[0], cells[1], cells[2], cells[3], cells[4]};
                                         });
    return facts;
}

}  // namespace

std::span<const OptionValue> option_values(std::string_view keyword) {
    const std::vector<OptionValue>& rows = all_option_values().rows;  // sorted by keyword
    const OptionValue* const end = rows.data() + rows.size();
    const OptionValue* const first =
        std::partition_point(rows.data(), end, [&](const OptionValue& row) { return row.keyword < keyword; });
    return {first, std::find_if(first, end, [&](const OptionValue& row) { return row.keyword != keyword; })};
}

std::span<const MethodRequest> method_requests() { return all_requests().rows; }

bool method_lacks(std::string_view method, std::string_view needed) {
    return std::any_of(all_lacks().rows.begin(), all_lacks().rows.end(), [&](const Lack& row) {
        return row.first == needed &&
               std::any_of(std::begin(spin_prefixes), std::end(spin_prefixes), [&](std::string_view prefix) {
                   return method.starts_with(prefix) && (lists_word(row.second, method.substr(prefix.size())) ||
                                                         lists_word(row.second, std::string(prefix) + "*"));
               });
    });
}

const Dispersion* find_dispersion(std::string_view functional, std::string_view correction) {
    const std::vector<Dispersion>& rows = all_dispersions().rows;
    for (const std::string_view prefix : spin_prefixes) {
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const Dispersion& row) {
            return row.correction == correction && functional.starts_with(prefix) &&
                   functional.substr(prefix.size()) == row.functional;
        });
        if (found != rows.end()) {
            return &*found;
        }
    }
    return nullptr;
}

const MethodCost* method_cost(std::string_view method) {
    const std::vector<MethodCost>& rows = all_costs().rows;
    for (const std::string_view prefix : spin_prefixes) {
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const MethodCost& row) {
            return method.starts_with(prefix) && lists_word(row.methods, method.substr(prefix.size()));
        });
        if (found != rows.end()) {
            return &*found;
        }
    }
    return nullptr;
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

std::string missing_route_facts() {
    return first_problem({&all_option_values().table, &all_lacks().table, &all_requests().table, &all_dispersions().table,
                          &all_costs().table});
}

}  // namespace quor::input::gaussian
