// How keywords with options and the model chemistry are written in a route.
#include <gjf/core/route/option_syntax.hpp>

#include <gjf/core/route/joined_route.hpp>
#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/route/route_segments.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string_view>

namespace quor::input::gaussian {
namespace {

bool is_oniom(std::string_view segment) {
    return equals_folded(trim_view(segment.substr(0, segment.find_first_of("(="))), "oniom");
}

// Returns the segments that `parse` finds no place for, since they assign to a word what is no basis set, as xxx=freq does.
std::vector<std::string> unplaced_segments(const std::vector<std::string>& words) {
    const G16KeywordParser parser(default_route_schema());
    const std::string text = join_route_words(words).text;
    std::string_view rest = trim_view(text);
    take_route_head(rest);
    std::vector<std::string> segments;
    for (const Span place : find_route_segments(rest)) {
        std::string_view word = place.in(rest);
        word.remove_prefix(std::min(word.find_first_not_of('#'), word.size()));  // each reading would take one for a head
        const std::string segment(word);
        const std::size_t value = static_cast<std::size_t>(find_top_level_char(segment, '=')) + 1;  // 0 without a sign
        // A sign without a word before it would take the word that comes to stand there.
        const bool is_assignment =
            value > 1 && find_top_level_char(segment, '/') < 0 && parser.is_basis_set_pattern(segment);
        if (is_assignment && !is_oniom(segment) && !parser.is_known_basis_token(parser.trim(segment.substr(value)))) {
            segments.push_back(segment);
        }
    }
    return segments;
}

// Tells whether a word takes what stands behind it: its brackets stay open, or it ends with a sign that wants a value or a
// basis set.
bool goes_on(std::string_view word) {
    NestingTracker nesting;
    std::for_each(word.begin(), word.end(), [&](char c) { nesting.advance(c); });
    return !nesting.at_top_level() || (!word.empty() && std::string_view("=/").find(word.back()) != std::string_view::npos);
}

// Writes a route with segments that have no place in its interpretation. What takes the words behind it comes last.
std::vector<std::string> words_with(const ParsedKeywords& route, const std::vector<std::string>& unplaced) {
    std::vector<std::string> words = format_route(route);
    if (const std::string model = format_model_chemistry(route); goes_on(model)) {
        words.front() = "#" + route.print_level;
        words.push_back(model);
    }
    words.insert(words.end(), unplaced.begin(), unplaced.end());
    std::stable_partition(words.begin() + 1, words.end(), [](const std::string& word) { return !goes_on(word); });
    return words;
}

}  // namespace

std::string format_keyword(const std::string& name, const std::vector<RouteOption>& options) {
    if (options.empty()) {
        return name;
    }
    const bool is_iop = equals_folded(name, "iop");
    if (!is_iop && options.size() == 1 && !options.front().value) {
        return name + "=" + options.front().name;
    }
    std::string text = name + (is_iop ? "(" : "=(");
    for (const RouteOption& option : options) {
        text += &option == &options.front() ? "" : ",";
        text += option.name;
        if (option.value) {
            text += "=" + *option.value;
        }
    }
    return text + ")";
}

std::string format_oniom(const std::string& layers, const std::vector<RouteOption>& options) {
    return format_keyword("oniom(" + layers + ")", options);
}

std::string oniom_layers(const std::string& expression) {
    const KeywordShape shape = oniom_shape(expression);
    const auto names_levels = [&](Span item) { return find_top_level_char(std::string(item.in(expression)), ':') >= 0; };
    const auto found = std::find_if(shape.items.begin(), shape.items.end(), names_levels);
    const auto layers = found == shape.items.end() ? shape.items.begin() : found;
    return layers == shape.items.end() ? std::string() : std::string(layers->in(expression));
}

std::vector<RouteOption> options_called_layers(const std::string& expression) {
    std::vector<RouteOption> options;
    for (const Span item : oniom_shape(expression).items) {
        const std::string text(item.in(expression));
        const std::size_t sign = text.find('=');
        if (sign != std::string::npos && equals_folded(trim_view(text.substr(0, sign)), "layers")) {
            options.push_back({"layers", std::string(trim_view(std::string_view(text).substr(sign + 1)))});
        }
    }
    return options;
}

std::vector<std::string> oniom_levels(const std::string& expression) {
    std::vector<std::string> levels = split_top_level_list(oniom_layers(expression), ':');
    return levels.size() > 1 && expression.find('(') != std::string::npos ? levels : std::vector<std::string>();
}

std::vector<std::string> format_route(const ParsedKeywords& route) {
    const std::string model = format_model_chemistry(route);
    std::vector<std::string> words = {"#" + route.print_level + (model.empty() ? "" : " " + model)};
    for (const KeywordInfo& keyword : route.keywords) {
        if (!route.oniom_expression.empty() && keyword.raw == route.oniom_expression) {
            continue;
        }
        words.push_back(keyword.raw.empty() ? format_keyword(keyword.name, to_route_options(keyword.options)) : keyword.raw);
    }
    return words;
}

std::vector<std::string> format_route(const ParsedKeywords& route, const std::vector<std::string>& words_before) {
    std::vector<std::string> unplaced = unplaced_segments(words_before);
    std::vector<std::string> words = words_with(route, unplaced);
    while (!unplaced.empty()) {
        // A segment that its new neighbours change, as brackets alone behind a word, cannot be kept.
        const std::vector<std::string> found = unplaced_segments(words);
        const auto changed = std::remove_if(unplaced.begin(), unplaced.end(), [&](const std::string& segment) {
            return std::find(found.begin(), found.end(), segment) == found.end();
        });
        if (changed == unplaced.end()) {
            break;
        }
        unplaced.erase(changed, unplaced.end());
        words = words_with(route, unplaced);
    }
    return words;
}

std::vector<RouteOption> to_route_options(const std::map<std::string, std::string>& options) {
    std::vector<RouteOption> list;
    list.reserve(options.size());
    for (const auto& [name, value] : options) {
        const bool bare = value.empty() || value == "TRUE";
        list.push_back({name, bare ? std::nullopt : std::optional<std::string>(value)});
    }
    return list;
}

std::string format_model_chemistry(const ParsedKeywords& route) {
    if (!route.oniom_expression.empty()) {
        return route.oniom_expression;
    }
    if (route.method.empty()) {
        return route.basis_set.empty() ? std::string() : "basis=" + route.basis_set;
    }
    std::string text = route.method_options.empty() ? route.method : route.method_options;
    if (route.basis_set.empty()) {
        return text;
    }
    text += "/" + route.basis_set;
    if (!route.density_fitting_basis.empty()) {
        text += "/" + route.density_fitting_basis;
    }
    if (!route.secondary_method.empty() && !route.secondary_basis_set.empty()) {
        text += "//" + (route.secondary_method_options.empty() ? route.secondary_method : route.secondary_method_options);
        text += "/" + route.secondary_basis_set;
    }
    return text;
}

}  // namespace quor::input::gaussian
