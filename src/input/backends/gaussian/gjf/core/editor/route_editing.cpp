// Changes the route: its words as they stand, or the interpreted route, from which the words are then written anew.
//
// Edits of the interpreted route check their arguments, change a copy, write the words from it and swap both in, so that a
// refused or failing edit leaves route and cache as they were.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Words given to the editor are taken as they are, in lower case.
std::string normalize_token(const std::string& text) { return to_lower_copy(trim_view(text)); }

std::string require_keyword(const std::string& name) {
    std::string keyword = normalize_token(name);
    if (keyword.empty()) {
        throw GJFParseException("Route keyword cannot be empty");
    }
    return keyword;
}

bool same_keyword(const std::string& a, const std::string& b) { return default_route_schema().keywords_equivalent(a, b); }

// Options are stored in lower case, as the interpretation of a route stores them.
std::string stored_name(const RouteOption& option) { return to_lower_copy(trim_view(option.name)); }

KeywordInfo make_keyword(const std::string& name, const std::vector<RouteOption>& options) {
    KeywordInfo keyword;
    keyword.name = name;
    for (const RouteOption& option : options) {
        keyword.options[stored_name(option)] = option.value.value_or("TRUE");
    }
    keyword.raw = format_keyword(name, options);
    return keyword;
}

std::vector<RouteOption> options_from(const std::map<std::string, std::string>& variables) {
    std::vector<RouteOption> options;
    options.reserve(variables.size());
    for (const auto& [name, value] : variables) {
        options.push_back({name, value.empty() ? std::nullopt : std::optional<std::string>(value)});
    }
    return options;
}

bool is_expression(const ParsedKeywords& route, const KeywordInfo& keyword) {
    return !route.oniom_expression.empty() && keyword.raw == route.oniom_expression;
}

// Writes a keyword anew from its options. An ONIOM expression keeps its layers, which are one of them.
void write_anew(ParsedKeywords& route, KeywordInfo& keyword) {
    if (!is_expression(route, keyword)) {
        keyword.raw = format_keyword(keyword.name, to_route_options(keyword.options));
        return;
    }
    std::map<std::string, std::string> options = keyword.options;
    const std::string layers = oniom_layers(route.oniom_expression);
    // Of options with the same name, the map holds the last.
    const std::vector<RouteOption> same_name = options_called_layers(route.oniom_expression);
    const auto stored = options.find("layers");
    const bool is_last = stored != options.end() && !same_name.empty() && stored->second == same_name.back().value;
    if (is_last || (stored != options.end() && stored->second == layers)) {
        options.erase(stored);
    }
    std::vector<RouteOption> written = to_route_options(options);
    if (is_last) {
        written.insert(written.end(), same_name.begin(), same_name.end());
    }
    keyword.raw = format_oniom(layers, written);
    route.oniom_expression = keyword.raw;
}

// Gives a keyword other options, but for the layers of an ONIOM expression.
void replace_options(ParsedKeywords& route, KeywordInfo& keyword, const std::string& name,
                     const std::vector<RouteOption>& options) {
    KeywordInfo made = make_keyword(name, options);
    if (is_expression(route, keyword)) {
        made.options.emplace("layers", oniom_layers(keyword.raw));
        made.raw = keyword.raw;
        write_anew(route, made);
    }
    keyword = std::move(made);
}

KeywordInfo* find_keyword(ParsedKeywords& route, const std::string& name) {
    const auto found = std::find_if(route.keywords.begin(), route.keywords.end(),
                                    [&](const KeywordInfo& keyword) { return same_keyword(keyword.name, name); });
    return found == route.keywords.end() ? nullptr : &*found;
}

// Stores an option of a keyword, which is added when it is not there, in place of an equivalent one.
void store_option(ParsedKeywords& route, const std::string& name, const RouteOption& option) {
    KeywordInfo* keyword = find_keyword(route, name);
    if (keyword == nullptr) {
        route.keywords.push_back(make_keyword(name, {option}));
        return;
    }
    const SimpleYAMLParser& schema = default_route_schema();
    for (auto entry = keyword->options.begin(); entry != keyword->options.end();) {
        entry = schema.options_equivalent(keyword->name, entry->first, option.name) ? keyword->options.erase(entry)
                                                                                    : std::next(entry);
    }
    keyword->options[stored_name(option)] = option.value.value_or("TRUE");
    write_anew(route, *keyword);
}

// Returns an option's name as a keyword that has it spells it.
std::string spelling_in(const KeywordInfo& keyword, const std::string& option) {
    const auto found = std::find_if(keyword.options.begin(), keyword.options.end(), [&](const auto& entry) {
        return default_route_schema().options_equivalent(keyword.name, entry.first, option);
    });
    return found == keyword.options.end() ? option : found->first;
}

// An ONIOM expression stands among the keywords too: it goes from there with the expression.
void clear_oniom(ParsedKeywords& route) {
    if (route.oniom_expression.empty()) {
        return;
    }
    const auto goes = [&](const KeywordInfo& keyword) { return is_expression(route, keyword); };
    route.keywords.erase(std::remove_if(route.keywords.begin(), route.keywords.end(), goes), route.keywords.end());
    route.oniom_expression.clear();
}

}  // namespace

// --- Words as they stand
// --------------------------------------------------------------------------------------------------------------

void GJFEditor::add_route_keyword(const std::string& keyword) {
    touch(JobPart::Route);
    data_.control.route_keywords.push_back(keyword);
    data_.control.parsed_keywords.reset();
}

void GJFEditor::remove_route_keyword(const std::string& keyword) {
    std::vector<std::string> words = data_.control.route_keywords;
    words.erase(std::remove(words.begin(), words.end(), std::string(keyword)), words.end());
    install_control(std::move(words), std::nullopt);
}

// --- Questions
// ------------------------------------------------------------------------------------------------------------------------

std::string GJFEditor::get_method() const { return has_parsed_keywords() ? get_parsed_keywords().method : std::string(); }

std::string GJFEditor::get_basis_set() const {
    return has_parsed_keywords() ? get_parsed_keywords().basis_set : std::string();
}

std::string GJFEditor::get_output_mode() const {
    return has_parsed_keywords() ? get_parsed_keywords().print_level : std::string();
}

bool GJFEditor::has_keyword(const std::string& name) const {
    return has_parsed_keywords() && get_parsed_keywords().has_keyword(name);
}

std::vector<KeywordInfo> GJFEditor::get_keywords_by_name(const std::string& name) const {
    return has_parsed_keywords() ? get_parsed_keywords().get_keywords_by_name(name) : std::vector<KeywordInfo>();
}

std::vector<KeywordInfo> GJFEditor::get_keywords_by_category(const std::string& category) const {
    return has_parsed_keywords() ? get_parsed_keywords().get_keywords_by_category(category) : std::vector<KeywordInfo>();
}

std::optional<std::string> GJFEditor::get_keyword_variable(const std::string& keyword, const std::string& variable) const {
    return has_parsed_keywords() ? get_parsed_keywords().get_keyword_variable(keyword, variable) : std::nullopt;
}

// --- The interpreted route
// ------------------------------------------------------------------------------------------------------------

ParsedKeywords GJFEditor::interpreted_route() const {
    const ControlSection& control = data_.control;
    if (control.parsed_keywords) {
        return *control.parsed_keywords;
    }
    return control.route_keywords.empty() ? ParsedKeywords() : GJFParser::parse_keywords(control.route_keywords, {});
}

void GJFEditor::install_route(ParsedKeywords route) {
    std::vector<std::string> words = format_route(route, data_.control.route_keywords);
    install_control(std::move(words), std::move(route));
}

// Options that are given now may be told from those given before by their places alone.
void GJFEditor::install_route(ParsedKeywords route, const std::string& keyword, const std::vector<RouteOption>& given) {
    std::vector<GivenOption> all = given_options_;
    std::transform(given.begin(), given.end(), std::back_inserter(all), [&](const RouteOption& option) {
        return GivenOption{keyword, std::string(trim_view(option.name))};
    });
    install_route(std::move(route));
    given_options_.swap(all);
}

const std::vector<GivenOption>& GJFEditor::given_options() const noexcept { return given_options_; }

void GJFEditor::update_route_from_parsed_keywords() {
    if (has_parsed_keywords()) {
        install_route(get_parsed_keywords());
    }
}

void GJFEditor::set_output_mode(const std::string& mode) {
    ParsedKeywords route = interpreted_route();
    std::string level = to_lower_copy(trim_view(mode));
    route.print_level = level.empty() || level.front() != '#' ? level : level.substr(1);
    install_route(std::move(route));
}

void GJFEditor::set_method(const std::string& method) {
    ParsedKeywords route = interpreted_route();
    route.method = normalize_token(method);
    route.method_options.clear();
    clear_oniom(route);
    install_route(std::move(route));
}

void GJFEditor::clear_method() {
    ParsedKeywords route = interpreted_route();
    for (std::string* text :
         {&route.method, &route.method_options, &route.secondary_method, &route.secondary_method_options}) {
        text->clear();
    }
    clear_oniom(route);
    install_route(std::move(route));
}

void GJFEditor::set_basis_set(const std::string& basis) {
    ParsedKeywords route = interpreted_route();
    route.basis_set = normalize_token(basis);
    install_route(std::move(route));
}

void GJFEditor::clear_basis_set() {
    ParsedKeywords route = interpreted_route();
    for (std::string* text : {&route.basis_set, &route.secondary_basis_set, &route.density_fitting_basis}) {
        text->clear();
    }
    install_route(std::move(route));
}

void GJFEditor::set_model_chemistry_basis(const std::string& basis) {
    std::string token = normalize_token(basis);
    if (token.empty()) {
        throw GJFParseException("Route model-chemistry basis cannot be empty");
    }
    ParsedKeywords route = interpreted_route();
    if (!route.oniom_expression.empty() || !route.secondary_method.empty() || !route.secondary_basis_set.empty() ||
        !route.density_fitting_basis.empty()) {
        throw GJFParseException("Cannot replace the basis slot of ONIOM, dual-layer, or density-basis model chemistry");
    }
    if (route.method.empty()) {
        throw GJFParseException("Cannot replace a model-chemistry basis without a primary method");
    }
    route.basis_set = std::move(token);
    install_route(std::move(route));
}

void GJFEditor::set_model_chemistry_method(const std::string& method) {
    set_model_chemistry_method_with_options(method, {});
}

void GJFEditor::set_model_chemistry_method_with_options(const std::string& method, const std::vector<RouteOption>& options) {
    std::string token = normalize_token(method);
    if (token.empty()) {
        throw GJFParseException("Route model-chemistry method cannot be empty");
    }
    ParsedKeywords route = interpreted_route();
    route.method_options = options.empty() ? std::string() : format_keyword(token, options);
    route.method = std::move(token);
    install_route(std::move(route));
}

void GJFEditor::add_keyword(const std::string& name) { add_keyword_with_options(name, {}); }

void GJFEditor::add_keyword_with_variables(const std::string& name, const std::map<std::string, std::string>& variables) {
    add_keyword_with_options(name, options_from(variables));
}

void GJFEditor::add_keyword_with_options(const std::string& name, const std::vector<RouteOption>& options) {
    const std::string keyword = require_keyword(name);
    ParsedKeywords route = interpreted_route();
    route.keywords.push_back(make_keyword(keyword, options));
    install_route(std::move(route), keyword, options);
}

void GJFEditor::upsert_keyword(const std::string& name) { upsert_keyword_with_options(name, {}); }

void GJFEditor::upsert_keyword_with_options(const std::string& name, const std::vector<RouteOption>& options) {
    const std::string keyword = require_keyword(name);
    ParsedKeywords route = interpreted_route();
    KeywordInfo* first = find_keyword(route, keyword);
    if (first == nullptr) {
        route.keywords.push_back(make_keyword(keyword, options));
        install_route(std::move(route), keyword, options);
        return;
    }
    replace_options(route, *first, keyword, options);
    const auto rest = route.keywords.begin() + (first - route.keywords.data()) + 1;
    const auto repeats = [&](const KeywordInfo& other) { return same_keyword(other.name, keyword); };
    route.keywords.erase(std::remove_if(rest, route.keywords.end(), repeats), route.keywords.end());
    install_route(std::move(route), keyword, options);
}

void GJFEditor::ensure_keyword_option(const std::string& keyword, const RouteOption& option) {
    const std::string name = require_keyword(keyword);
    ParsedKeywords route = interpreted_route();
    store_option(route, name, option);
    install_route(std::move(route), name, {option});
}

void GJFEditor::set_keyword_variable(const std::string& keyword, const std::string& variable, const std::string& value) {
    const std::string name = require_keyword(keyword);
    ParsedKeywords route = interpreted_route();
    const KeywordInfo* found = find_keyword(route, name);
    store_option(route, name,
                 {found == nullptr ? variable : spelling_in(*found, variable),
                  value.empty() ? std::nullopt : std::optional<std::string>(value)});
    install_route(std::move(route));
}

bool GJFEditor::remove_keyword_option(const std::string& keyword, const RouteOption& option) {
    const std::string name = require_keyword(keyword);
    ParsedKeywords route = interpreted_route();
    bool removed = false;
    for (KeywordInfo& info : route.keywords) {
        if (!same_keyword(info.name, name)) {
            continue;
        }
        const auto goes = [&](const auto& entry) {
            return default_route_schema().options_equivalent(info.name, entry.first, option.name) &&
                   (!option.value || to_lower_copy(entry.second) == to_lower_copy(*option.value));
        };
        if (std::erase_if(info.options, goes) > 0) {
            write_anew(route, info);
            removed = true;
        }
    }
    if (removed) {
        install_route(std::move(route));
    }
    return removed;
}

void GJFEditor::remove_keyword_by_name(const std::string& name) {
    if (!has_parsed_keywords()) {
        return;
    }
    ParsedKeywords route = get_parsed_keywords();
    if (same_keyword(name, "oniom")) {
        route.oniom_expression.clear();
    }
    const auto matches = [&](const KeywordInfo& keyword) { return same_keyword(keyword.name, name); };
    route.keywords.erase(std::remove_if(route.keywords.begin(), route.keywords.end(), matches), route.keywords.end());
    install_route(std::move(route));
}

}  // namespace quor::input::gaussian
