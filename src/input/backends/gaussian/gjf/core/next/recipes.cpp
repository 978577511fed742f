// Reads tables of recipes, and tells which of them may cure a failure.
#include <gjf/core/next/recipes.hpp>

#include <gjf/core/editing/edit_operations.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/next/edit_names.hpp>
#include <gjf/core/route_schema_paths.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr std::array<std::string_view, 12> headings = {"id",    "kind",     "for",   "attempt", "when",      "unless",
                                                       "needs", "geometry", "edits", "says",    "certainty", "source"};
using Cells = std::array<std::string, headings.size()>;

constexpr std::array<std::string_view, 10> next_words = {"freq", "ts",  "irc",     "sp",       "td",
                                                         "nmr",  "opt", "scan-ts", "displace", "restart"};
// Those that no row of the table of failures shows, since their outputs ended normally.
constexpr std::array<std::string_view, 4> causes_of_numbers = {"imag_min", "imag_ts_many", "freq_notconv", "path_end"};

constexpr std::string_view whole_geometries[] = {"same", "last", "best", "point:max", "displaced", "checkpoint"};

[[noreturn]] void refuse(const std::string& text, const char* why) { throw std::runtime_error("'" + text + "' " + why); }

template <class List>
bool has(const List& list, std::string_view text) {
    return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

std::vector<std::string> parted(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::string_view part = trim_view(text.substr(0, text.find(separator)));
        text.remove_prefix(
            std::min(text.size(), text.find(separator) == std::string_view::npos ? text.size() : text.find(separator) + 1));
        if (!part.empty()) {
            parts.emplace_back(part);
        }
    }
    return parts;
}

// Words are parted by blanks outside of brackets and quotes.
std::vector<std::string> words_of(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    NestingTracker nesting;
    for (const char c : text) {
        const bool is_top = nesting.advance(c);
        if (is_top && c == ' ') {
            if (!word.empty()) {
                words.push_back(std::exchange(word, {}));
            }
        } else {
            word += c;
        }
    }
    if (!word.empty()) {
        words.push_back(word);
    }
    return words;
}

// A name in braces may stand where a number does, so that an operation is tried with one.
std::string with_ones(const std::string& value) {
    std::string text;
    bool is_name = false;
    for (const char c : value) {
        text += is_name || c == '{' ? (c == '}' ? "1" : "") : std::string(1, c);
        is_name = c == '{' || (is_name && c != '}');
    }
    return text;
}

std::vector<RecipeEdit> edits_of(const std::string& text) {
    std::vector<RecipeEdit> edits;
    const std::vector<std::string> words = words_of(text);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const EditOption* const option = find_edit_option(words[i]);
        if (option == nullptr) {
            refuse(words[i], "is no operation of edit");
        }
        RecipeEdit edit{words[i], {}};
        if (option->value != nullptr) {
            if (++i == words.size()) {
                refuse(edit.option, "wants a value");
            }
            edit.value = words[i];
        }
        check_edit_names(edit.value);
        read_operation(*option, with_ones(edit.value));
        edits.push_back(std::move(edit));
    }
    return edits;
}

// "displaced", "displaced:2" and "displaced:2:-0.3".
void set_geometry(Recipe& recipe, const std::string& text) {
    const std::vector<std::string> parts = parted(text, ':');
    recipe.geometry_text = text;
    const bool is_displaced = !parts.empty() && parts.front() == "displaced" && parts.size() <= 3;
    const auto found = std::find(std::begin(whole_geometries), std::end(whole_geometries),
                                 is_displaced ? std::string_view("displaced") : std::string_view(text));
    if (found == std::end(whole_geometries)) {
        refuse(text, "is no geometry");
    }
    recipe.geometry = static_cast<RecipeGeometry>(found - std::begin(whole_geometries));
    const auto read = [&](const std::string& part, auto& number) {
        const char* const end = part.data() + part.size();
        std::from_chars_result result;
        if constexpr (std::is_floating_point_v<std::remove_reference_t<decltype(number)>>) {
            result = read_number(part, number, std::chars_format::general);
        } else {
            result = std::from_chars(part.data(), end, number);
        }
        if (result.ec != std::errc() || result.ptr != end) {
            refuse(text, "is no geometry");
        }
    };
    if (is_displaced && parts.size() > 1) {
        read(parts[1], recipe.displacement.mode);
    }
    if (is_displaced && parts.size() > 2) {
        read(parts[2], recipe.displacement.amplitude);
    }
    if (recipe.displacement.mode < 1) {
        refuse(text, "is no geometry");
    }
}

void set_needs(Recipe& recipe, const std::string& text) {
    for (const std::string& need : parted(text, ',')) {
        constexpr std::pair<std::string_view, bool Recipe::*> rows[] = {{"job", &Recipe::needs_job},
                                                                        {"output", &Recipe::needs_output},
                                                                        {"checkpoint", &Recipe::needs_checkpoint},
                                                                        {"modes", &Recipe::needs_modes}};
        const auto found =
            std::find_if(std::begin(rows), std::end(rows), [&](const auto& row) { return row.first == need; });
        if (found == std::end(rows)) {
            refuse(need, "is nothing that a recipe needs");
        }
        recipe.*(found->second) = true;
    }
}

bool is_cause(const std::string& text) {
    const auto rows = failures();
    return has(causes_of_numbers, text) ||
           std::any_of(rows.begin(), rows.end(), [&](const Failure& failure) { return failure.id == text; });
}

Recipe recipe_of(const Cells& cells) {
    const auto& [id, kind, wanted_for, attempt, when, unless, needs, geometry, edits, says, certainty, source] = cells;
    Recipe recipe;
    if (id.empty() || id.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_-") != std::string::npos) {
        refuse(id, "is no id: small letters, digits, - and _");
    }
    recipe.id = id;
    if (kind != "cure" && kind != "next") {
        refuse(kind, "is neither cure nor next");
    }
    recipe.kind = kind == "cure" ? RecipeKind::Cure : RecipeKind::Next;
    if (recipe.kind == RecipeKind::Cure ? !is_cause(wanted_for) : !has(next_words, wanted_for)) {
        refuse(wanted_for, recipe.kind == RecipeKind::Cure ? "is no cause of failures" : "is no kind of next job");
    }
    recipe.wanted_for = wanted_for;
    const auto [end, error] = std::from_chars(attempt.data(), attempt.data() + attempt.size(), recipe.attempt);
    if (error != std::errc() || end != attempt.data() + attempt.size() || recipe.attempt < 1) {
        refuse(attempt, "is no number of an attempt");
    }
    recipe.when = when.empty() ? std::nullopt : std::optional<JobPredicate>(when);
    recipe.unless = unless.empty() ? std::nullopt : std::optional<JobPredicate>(unless);
    set_needs(recipe, needs);
    set_geometry(recipe, geometry);
    recipe.edits = edits_of(edits);
    if (certainty != "log" && certainty != "tool" && certainty != "text") {
        refuse(certainty, "is none of log, tool and text");
    }
    if (says.empty() || source.empty()) {
        throw std::runtime_error("what it says, or its source, is missing");
    }
    recipe.says = says;
    recipe.certainty = certainty;
    recipe.source = source;
    return recipe;
}

std::vector<std::string> cells_of(std::string_view line) {
    std::vector<std::string> cells;
    for (std::size_t begin = 0; begin != std::string_view::npos;) {
        const std::size_t end = line.find('\t', begin);
        cells.emplace_back(trim_view(line.substr(begin, end == std::string_view::npos ? end : end - begin)));
        begin = end == std::string_view::npos ? end : end + 1;
    }
    return cells;
}

// Columns may stand in any order.
std::array<std::size_t, headings.size()> places_of(const std::vector<std::string>& heading) {
    std::array<std::size_t, headings.size()> places{};
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const auto found = std::find(heading.begin(), heading.end(), headings[i]);
        if (found == heading.end()) {
            throw std::runtime_error("there is no column '" + std::string(headings[i]) + "'");
        }
        places[i] = static_cast<std::size_t>(found - heading.begin());
    }
    for (const std::string& each : heading) {
        if (!has(headings, each)) {
            refuse(each, "is no column");
        }
    }
    return places;
}

std::vector<Recipe> read_recipe_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    if (!file || text.empty()) {
        throw std::runtime_error(path + " cannot be read");
    }
    return read_recipes(text, path);
}

bool is_same_purpose(const Recipe& a, const Recipe& b) { return a.kind == b.kind && a.wanted_for == b.wanted_for; }

}  // namespace

std::vector<Recipe> read_recipes(std::string_view text, const std::string& path) {
    std::vector<Recipe> recipes;
    std::array<std::size_t, headings.size()> places{};
    std::size_t width = 0;
    std::size_t number = 0;
    for (const std::string_view line : split_lines(skip_byte_order_mark(text))) {
        ++number;
        const std::string place = path + ", line " + std::to_string(number);
        if (trim_view(line).empty() || line.front() == '#') {
            continue;
        }
        try {
            const std::vector<std::string> cells = cells_of(line);
            if (width == 0) {
                places = places_of(cells);
                width = cells.size();
                continue;
            }
            if (cells.size() != width) {
                throw std::runtime_error(std::to_string(cells.size()) + " cells below " + std::to_string(width) +
                                         " headings");
            }
            Cells row;
            std::transform(places.begin(), places.end(), row.begin(), [&](std::size_t at) { return cells[at]; });
            recipes.push_back(recipe_of(row));
            recipes.back().place = place;
        } catch (const std::exception& error) {
            throw std::runtime_error(place + ": " + bare_message(error.what()));
        }
    }
    return recipes;
}

const std::vector<Recipe>& default_recipes() {
    static const std::vector<Recipe> recipes = [] {
        const std::string folder = resolve_recipes_folder();
        std::vector<Recipe> all = read_recipe_file(folder + "/cures.tsv");
        std::vector<Recipe> next = read_recipe_file(folder + "/next.tsv");
        std::move(next.begin(), next.end(), std::back_inserter(all));
        return all;
    }();
    return recipes;
}

std::vector<Recipe> recipes_with(const std::vector<std::string>& paths) {
    std::vector<Recipe> all = default_recipes();
    for (const std::string& path : paths) {
        std::vector<Recipe> own = read_recipe_file(path);
        std::erase_if(all, [&](const Recipe& recipe) {
            return std::any_of(own.begin(), own.end(), [&](const Recipe& each) { return is_same_purpose(each, recipe); });
        });
        std::move(own.begin(), own.end(), std::back_inserter(all));
    }
    return all;
}

}  // namespace quor::input::gaussian
