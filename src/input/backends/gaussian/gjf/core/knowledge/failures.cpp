// Reads failures.tsv and output_codes.tsv.
#include <gjf/core/knowledge/failures.hpp>

#include <gjf/core/knowledge/fact_table.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

std::vector<std::string_view> fragments_of(std::string_view cell) {
    constexpr std::string_view separator = " | ";
    std::vector<std::string_view> fragments;
    while (!cell.empty()) {
        fragments.push_back(cell.substr(0, cell.find(separator)));
        cell.remove_prefix(std::min(cell.size(), fragments.back().size() + separator.size()));
    }
    return fragments;
}

const Facts<Failure>& all_failures() {
    static const Facts<Failure> facts("failures", {"id", "kind", "where", "any", "all", "links", "ending", "says", "remedy"},
                                      [](const std::string_view* row) {
                                          return Failure{row[0], row[1], row[2], fragments_of(row[3]), row[4], row[5],
                                                         row[6], row[7], row[8]};
                                      });
    return facts;
}

const Facts<OutputCode>& all_output_codes() {
    static const Facts<OutputCode> facts(
        "output_codes", {"code", "id", "severity", "says", "remedy", "explanation"},
        [](const std::string_view* row) { return OutputCode{row[0], row[1], row[2], row[3], row[4], row[5]}; });
    return facts;
}

}  // namespace

std::span<const Failure> failures() { return all_failures().rows; }

std::span<const OutputCode> output_codes() { return all_output_codes().rows; }

std::string missing_failures() { return first_problem({&all_failures().table, &all_output_codes().table}); }

}  // namespace quor::input::gaussian
