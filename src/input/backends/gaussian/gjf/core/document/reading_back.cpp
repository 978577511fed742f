// Compares a job that was read back with the one that should be there: its route by what it means, all else as it is
// written.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/job/job_comparison.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Keywords = std::vector<std::pair<std::string, std::map<std::string, std::string>>>;

Keywords sorted_keywords(const ParsedKeywords& route) {
    Keywords keywords;
    for (const KeywordInfo& keyword : route.keywords) {
        keywords.emplace_back(keyword.name, keyword.options);
    }
    std::sort(keywords.begin(), keywords.end());
    return keywords;
}

// Returns the options of a method expression, whichever way they are joined to the method: "=full", "(full)", "=(full)",
// "-full". Letter case, blanks and their order mean nothing.
std::vector<std::string> sorted_method_options(const std::string& expression) {
    const std::string text = to_lower_copy(expression);
    const KeywordShape shape = keyword_shape(text, true);
    std::vector<std::string> options;
    for (const Span item : shape.items) {
        options.emplace_back(item.in(text));
        options.back().erase(std::remove_if(options.back().begin(), options.back().end(), is_trim_character),
                             options.back().end());
    }
    if (const std::size_t dash = text.rfind('-'); options.empty() && dash != std::string::npos) {
        options.push_back(text.substr(dash + 1));
    }
    std::sort(options.begin(), options.end());
    return options;
}

bool same_meaning(const ParsedKeywords& x, const ParsedKeywords& y) {
    const auto model = [](const ParsedKeywords& r) {
        return std::tie(r.print_level, r.method, r.basis_set, r.secondary_method, r.secondary_basis_set,
                        r.density_fitting_basis, r.oniom_expression);
    };
    const auto options = [](const ParsedKeywords& r) {
        return std::pair(sorted_method_options(r.method_options), sorted_method_options(r.secondary_method_options));
    };
    return model(x) == model(y) && options(x) == options(y) && sorted_keywords(x) == sorted_keywords(y);
}

// Tells whether the words of a route are those that its stored interpretation is written in.
bool is_written_from_interpretation(const ControlSection& control) {
    return format_route(*control.parsed_keywords, control.route_keywords) == control.route_keywords;
}

// An edited route comes with its interpretation, with names as they were given: only where these say something else than
// what was read, the words are interpreted.
bool same_meaning(const ControlSection& wanted, const ControlSection& read) {
    const ParsedKeywords meaning =
        read.parsed_keywords ? *read.parsed_keywords : GJFParser::parse_keywords(read.route_keywords, {});
    if (wanted.parsed_keywords && is_written_from_interpretation(wanted)) {
        ParsedKeywords given = *wanted.parsed_keywords;
        for (KeywordInfo& keyword : given.keywords) {
            keyword.name = default_route_schema().normalize_keyword(keyword.name);
        }
        if (same_meaning(given, meaning)) {
            return true;
        }
    }
    return same_meaning(GJFParser::parse_keywords(wanted.route_keywords, {}), meaning);
}

// Says which word would ask for a section, where there is one.
std::string missing_request(ExtraInputSectionKind kind) {
    const std::string request = extra_input_request(kind);
    return request.empty() ? std::string() : ": nothing in the route asks for it, as " + request + " does";
}

std::string section_name(const ExtraInputSection& section) {
    return std::string("the section '") + extra_input_kind_name(section.kind) + "'";
}

using Sections = std::vector<ExtraInputSection>;

std::string section_difference(std::size_t i, const Sections& read, const Sections& wanted) {
    if (i >= wanted.size()) {
        return section_name(read[i]) + ", which should not be there";
    }
    if (i >= read.size()) {
        return section_name(wanted[i]) + ", which is not read";
    }
    const bool other_kind = read[i].kind != wanted[i].kind && wanted[i].kind != ExtraInputSectionKind::Unknown;
    if (!other_kind) {
        return section_name(wanted[i]);
    }
    return section_name(wanted[i]) + ", which would be read as " + section_name(read[i]) +
           (read[i].kind == ExtraInputSectionKind::Unknown ? missing_request(wanted[i].kind) : std::string());
}

}  // namespace

std::string difference_between(const GJFData& read, const GJFData& wanted, const Sections* sections) {
    JobComparison comparison;
    comparison.coordinates = JobComparison::Coordinates::AsWritten;
    // What was left over may be asked for now.
    comparison.unknown_sections = JobComparison::UnknownSections::OfFirst;
    comparison.order_of_link0_lines = false;
    comparison.same_route = [&](const auto&, const auto&) { return same_meaning(wanted.control, read.control); };
    comparison.sections = false;
    const std::optional<JobDifference> difference = find_difference(wanted, read, comparison);
    if (!difference) {
        const auto place =
            sections == nullptr ? std::nullopt : find_section_difference(*sections, read.extra_inputs, comparison);
        return place ? section_difference(*place, read.extra_inputs, *sections) : std::string();
    }
    switch (difference->part) {
        case JobPart::Overlays:
            return "the overlays";
        case JobPart::Format:
        case JobPart::AtomCount:
            return "the number of atoms";
        case JobPart::Atom: {
            const std::size_t atom = difference->index;
            const bool by_label = !same_label(read.geom.atoms[atom].info, wanted.geom.atoms[atom].info);
            return (by_label ? "the label of atom " : "atom ") + std::to_string(atom + 1);
        }
        default:
            return std::string("the ") + job_part_name(difference->part);
    }
}

}  // namespace quor::input::gaussian
