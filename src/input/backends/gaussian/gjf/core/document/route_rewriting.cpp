// Writes a changed route: words that still hold keep their spelling and place, others are changed, left out or added.
//
// The route is cut into segments; each tells what it gave to the interpretation, and that is compared with the
// interpretation that should be there. Segments that gave nothing stay.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/document/route_text.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

namespace quor::input::gaussian {
namespace {

// The options as they should be, less those that were already written.
using Options = std::map<std::string, std::string>;

std::string option_text(const std::string& name, const std::string& value) {
    return value.empty() || value == "TRUE" ? name : name + "=" + value;
}

// What becomes of the options of a keyword: the text of each that was written, or nothing when it goes, and new ones.
struct OptionChanges {
    std::vector<std::optional<std::string>> written;
    std::vector<std::string> added;
};

// Puts new options into the order, and gives them the letter case, in which they were given.
std::vector<std::string> as_given(const Options& options, const std::vector<std::string>& given) {
    std::vector<std::string> texts;
    Options left = options;
    // What was given last says where it stands.
    for (auto name = given.rbegin(); name != given.rend(); ++name) {
        if (const auto found = left.find(to_lower_copy(*name)); found != left.end()) {
            texts.insert(texts.begin(), option_text(*name, found->second));
            left.erase(found);
        }
    }
    for (const auto& [name, value] : left) {
        texts.push_back(option_text(name, value));
    }
    return texts;
}

OptionChanges option_changes(const std::string& raw, const std::vector<Span>& items, Options options,
                             const std::vector<std::string>& given) {
    OptionChanges changes;
    for (const Span place : items) {
        const std::string item(place.in(raw));
        const auto [name, value] = read_route_option(item);
        const auto wanted = options.find(to_lower_copy(name));
        std::optional<std::string>& text = changes.written.emplace_back();
        if (wanted == options.end()) {
            continue;
        }
        const std::size_t equals = item.find('=');
        text = wanted->second == value.value_or("TRUE")
                   ? item
                   : option_text(item.substr(0, item.find_last_not_of(' ', equals - 1) + 1), wanted->second);
        options.erase(wanted);
    }
    changes.added = as_given(options, given);
    return changes;
}

// Writes a keyword with other options; options that stay keep their text and place.
std::string with_options(const std::string& raw, const Options& options, const std::vector<std::string>& given) {
    const KeywordShape shape = keyword_shape(raw);
    const OptionChanges changes = option_changes(raw, shape.items, options, given);
    std::vector<std::string> items;
    for (const std::optional<std::string>& item : changes.written) {
        if (item) {
            items.push_back(*item);
        }
    }
    items.insert(items.end(), changes.added.begin(), changes.added.end());
    std::string head(shape.head.in(raw));
    if (items.empty()) {
        return head;
    }
    const std::size_t open = raw.find('(', shape.head.end());
    const bool bare_item =
        items.size() == 1 && find_top_level_char(items[0], '=') < 0 && items[0].find('(') == std::string::npos;
    if (bare_item && open == std::string::npos) {
        return head + "=" + items[0];
    }
    // "opt=(" and "opt(" keep their form; "scf=qc(…)" is written with one list.
    const bool has_item_before =
        open != std::string::npos &&
        trim_view(std::string_view(raw).substr(shape.head.end(), open - shape.head.end())).size() > 1;
    std::string text = open == std::string::npos || has_item_before ? head + "=(" : raw.substr(0, open + 1);
    for (std::size_t i = 0; i < items.size(); ++i) {
        text += (i == 0 ? "" : ",") + items[i];
    }
    return text + ")";
}

// A segment of the route as it was, and what stands before it.
struct Segment {
    const RouteTree::Segment& read;
    bool behind_oniom;  // or gives it
    bool has_basis;     // named in it or before it

    bool gives_model() const noexcept { return read.gives_method || read.gives_basis || read.gives_oniom; }
    bool gives_method() const noexcept { return read.gives_method || behind_oniom; }
};

bool same_model(const ParsedKeywords& a, const ParsedKeywords& b) {
    return a.method == b.method && a.basis_set == b.basis_set && a.method_options == b.method_options &&
           a.density_fitting_basis == b.density_fitting_basis && a.secondary_method == b.secondary_method &&
           a.secondary_basis_set == b.secondary_basis_set && a.secondary_method_options == b.secondary_method_options &&
           a.oniom_expression == b.oniom_expression;
}

std::vector<Segment> segments_of(const RouteTree& tree) {
    std::vector<Segment> segments;
    segments.reserve(tree.segments.size());
    bool oniom = false;
    bool basis = false;
    for (const RouteTree::Segment& segment : tree.segments) {
        oniom = oniom || segment.gives_oniom;
        basis = basis || segment.gives_basis;
        segments.push_back({segment, oniom, basis});
    }
    return segments;
}

std::string method_text(const ParsedKeywords& route) {
    return route.method_options.empty() ? route.method : route.method_options;
}

// Writes the first model chemistry anew.
std::string model_text(const ParsedKeywords& route) {
    const bool is_basis_alone = route.oniom_expression.empty() && route.method.empty();
    return is_basis_alone ? route.basis_set : format_model_chemistry(route);
}

// Matches the keywords that were there with those that should be; equal ones first, then those of one name.
class KeywordMatch {
   public:
    KeywordMatch(const std::vector<KeywordInfo>& before, const std::vector<KeywordInfo>& after)
        : partner(before.size(), none), taken(after.size()) {
        match(before, after, [](const KeywordInfo* a, const KeywordInfo* b) {
            return std::tie(a->name, a->options) < std::tie(b->name, b->options);
        });
        match(before, after, [](const KeywordInfo* a, const KeywordInfo* b) { return a->name < b->name; });
    }

    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> partner;  // for each keyword that was there
    std::vector<char> taken;           // for each that should be

   private:
    // Gives each keyword without a partner the first that is left of those that no order tells from it.
    template <typename Order>
    void match(const std::vector<KeywordInfo>& before, const std::vector<KeywordInfo>& after, Order order) {
        std::map<const KeywordInfo*, std::vector<std::size_t>, Order> left(order);  // the first at the back
        for (std::size_t j = after.size(); j-- > 0;) {
            if (taken[j] == 0) {
                left[&after[j]].push_back(j);
            }
        }
        for (std::size_t i = 0; i < before.size(); ++i) {
            const auto found = partner[i] == none ? left.find(&before[i]) : left.end();
            if (found != left.end() && !found->second.empty()) {
                partner[i] = found->second.back();
                taken[partner[i]] = 1;
                found->second.pop_back();
            }
        }
    }
};

// Rewrites a route segment by segment.
class RouteRewriter {
   public:
    RouteRewriter(RouteText& text, const ParsedKeywords& before, const ParsedKeywords& after,
                  const std::vector<GivenOption>& given)
        : text_(text),
          before_(before),
          after_(after),
          given_(given),
          match_(before.keywords, after.keywords),
          segments_(segments_of(text.tree())) {}

    void rewrite() {
        if (before_.print_level != after_.print_level) {
            text_.set_head("#" + after_.print_level);
        }
        model_changed_ = !same_model(before_, after_);
        for (const Segment& segment : segments_) {
            rewrite_segment(segment);
        }
        if (model_changed_ && !model_written_) {
            const std::string model = model_text(wanted_model());
            if (!model.empty()) {
                text_.insert_behind_head(model);
            }
        }
        for (std::size_t j = 0; j < after_.keywords.size(); ++j) {
            const KeywordInfo& keyword = after_.keywords[j];
            const bool is_model = !after_.oniom_expression.empty() && keyword.raw == after_.oniom_expression;
            if (match_.taken[j] == 0 && !is_model) {
                text_.append(new_keyword(keyword));
            }
        }
    }

   private:
    // Returns the names of the options that a keyword was given, however it was spelt.
    std::vector<std::string> given_to(const KeywordInfo& keyword) const {
        std::vector<std::string> names;
        for (const GivenOption& given : given_) {
            if (default_route_schema().keywords_equivalent(given.keyword, keyword.name)) {
                names.push_back(given.option);
            }
        }
        return names;
    }

    // Writes a keyword that was not there.
    std::string new_keyword(const KeywordInfo& keyword) const {
        const std::vector<std::string> given = given_to(keyword);
        const bool is_given = std::any_of(given.begin(), given.end(), [&](const std::string& name) {
            return keyword.options.count(to_lower_copy(name)) > 0;
        });
        if (!is_given && !keyword.raw.empty()) {
            return keyword.raw;
        }
        std::vector<RouteOption> options;
        for (const std::string& text : as_given(keyword.options, given)) {
            const std::size_t equals = text.find('=');
            options.push_back({text.substr(0, equals), equals == std::string::npos
                                                           ? std::nullopt
                                                           : std::optional<std::string>(text.substr(equals + 1))});
        }
        return format_keyword(keyword.name, options);
    }

    void rewrite_segment(const Segment& segment) {
        if (segment.gives_model()) {
            rewrite_model(segment);
            return;
        }
        if (segment.read.keyword_count == 0) {
            return;
        }
        std::string text;
        bool changed = false;
        const std::size_t first = segment.read.first_keyword;
        for (std::size_t i = first; i < first + segment.read.keyword_count; ++i) {
            const KeywordInfo& old = before_.keywords[i];
            const std::size_t j = match_.partner[i];
            const bool gone = j == KeywordMatch::none;
            const bool same = !gone && after_.keywords[j].options == old.options;
            changed = changed || !same;
            if (!gone) {
                const KeywordInfo& wanted = after_.keywords[j];
                text +=
                    (text.empty() ? "" : " ") + (same ? old.raw : with_options(old.raw, wanted.options, given_to(wanted)));
            }
        }
        const bool in_place = changed && segment.read.keyword_count == 1 && match_.partner[first] != KeywordMatch::none &&
                              change_list(segment.read.place, after_.keywords[match_.partner[first]]);
        if (changed && !in_place) {
            text_.replace(segment.read.place, text);
        }
    }

    // Changes options where they stand when the keyword has several stretches, so that blanks, lines and comments between
    // them stay. Returns false, and changes nothing, when it is no list in parentheses or none of its options stays.
    bool change_list(Span place, const KeywordInfo& keyword) {
        const std::string raw(place.in(text_.tree().text));
        const KeywordShape shape = keyword_shape(raw);
        const bool is_list =
            raw.back() == ')' && !shape.items.empty() && raw[raw.find_last_not_of(" \t", shape.items[0].begin - 1)] == '(';
        const OptionChanges changes = option_changes(raw, shape.items, keyword.options, given_to(keyword));
        const auto stays = [](const std::optional<std::string>& item) { return item.has_value(); };
        const auto last = std::find_if(changes.written.rbegin(), changes.written.rend(), stays);
        if (!is_list || !text_.has_several_stretches(place) || last == changes.written.rend()) {
            return false;
        }
        const auto last_kept = static_cast<std::size_t>(changes.written.rend() - last) - 1;
        const auto change = [&](std::size_t begin, std::size_t end, const std::string& text) {
            text_.replace(span_between(place.begin + begin, place.begin + end), text);
        };
        for (std::size_t i = 0; i <= last_kept; ++i) {
            const Span item = shape.items[i];
            if (!changes.written[i]) {
                change(item.begin, shape.items[i + 1].begin, {});
            } else if (const std::string& text = *changes.written[i]; text != item.in(raw)) {
                const Span value = keyword_item(raw, item).value;
                const std::size_t equals = text.find('=');
                const bool only_value = !value.empty() && equals != std::string::npos;
                change(only_value ? value.begin : item.begin, item.end(), only_value ? text.substr(equals + 1) : text);
            }
        }
        for (const std::string& added : changes.added) {
            change(shape.items[last_kept].end(), shape.items[last_kept].end(), "," + added);
        }
        if (last_kept + 1 < shape.items.size()) {
            change(shape.items[last_kept].end(), shape.items.back().end(), {});
        }
        return true;
    }

    // A segment of the model chemistry stays when all that it gave still holds.
    void rewrite_model(const Segment& segment) {
        if (!model_changed_) {
            return;
        }
        const std::string old(segment.read.place.in(text_.tree().text));
        if (!segment.gives_method()) {
            rewrite_basis_segment(segment, old);
            return;
        }
        if (model_written_) {
            text_.replace(segment.read.place, {});
            return;
        }
        model_written_ = true;
        text_.replace(segment.read.place, new_model_text(old));
    }

    void rewrite_basis_segment(const Segment& segment, const std::string& old) {
        const bool drop = after_.basis_set.empty() || basis_written_ || !after_.oniom_expression.empty();
        const std::string wanted = drop ? std::string() : after_.basis_set;
        if (drop || after_.basis_set != before_.basis_set) {
            text_.replace(segment.read.place, with_basis(old, wanted));
        }
        basis_written_ = true;
    }

    // Puts another basis set into a segment that names one: "6-31G(d)", "basis=6-31G(d)", or behind a slash and an unknown
    // word.
    static std::string with_basis(const std::string& old, const std::string& basis) {
        if (find_top_level_char(old, '/') < 0) {
            const int equals = find_top_level_char(old, '=');
            return basis.empty() ? basis : old.substr(0, static_cast<std::size_t>(equals) + 1) + basis;
        }
        std::string text;
        for (const std::string& piece : split_top_level_list(old, '/')) {
            const std::string& now = default_route_schema().knows_basis(piece) ? basis : piece;
            text += (text.empty() || now.empty() ? "" : "/") + now;
        }
        return text;
    }

    // Tells whether a segment of its own gives the basis set.
    bool basis_stands_alone() const {
        return std::any_of(segments_.begin(), segments_.end(),
                           [](const Segment& s) { return s.gives_model() && !s.gives_method() && s.has_basis; });
    }

    // The model chemistry that should be there, without a basis set that has a segment of its own.
    ParsedKeywords wanted_model() const {
        ParsedKeywords wanted = after_;
        if (basis_stands_alone()) {
            wanted.basis_set.clear();
        }
        return wanted;
    }

    // Writes the model chemistry with the old spelling of what stays.
    std::string new_model_text(const std::string& old) {
        ParsedKeywords wanted = wanted_model();
        const std::vector<std::string> pieces = split_top_level_list(old, '/');
        const bool simple = before_.oniom_expression.empty() && before_.secondary_method.empty() &&
                            wanted.oniom_expression.empty() && wanted.secondary_method.empty() && !pieces.empty() &&
                            pieces.size() <= 3;
        if (!simple) {
            return model_text(wanted);
        }
        if (method_text(before_) == method_text(wanted) && !wanted.method.empty()) {
            (wanted.method_options.empty() ? wanted.method : wanted.method_options) = pieces[0];
        }
        if (pieces.size() > 1 && before_.basis_set == wanted.basis_set) {
            wanted.basis_set = pieces[1];
        }
        if (pieces.size() > 2 && before_.density_fitting_basis == wanted.density_fitting_basis) {
            wanted.density_fitting_basis = pieces[2];
        }
        return model_text(wanted);
    }

    RouteText& text_;
    const ParsedKeywords& before_;
    const ParsedKeywords& after_;
    const std::vector<GivenOption>& given_;
    KeywordMatch match_;
    std::vector<Segment> segments_;
    bool model_changed_ = false;
    bool model_written_ = false;
    bool basis_written_ = false;
};

// Tells whether the words are those that editing an interpreted route writes: the head, blank and model chemistry, and
// keywords.
bool written_from_interpretation(const std::vector<std::string>& words, const ParsedKeywords& route) {
    const std::string model = model_text(route);
    const std::string head = "#" + route.print_level;
    return !words.empty() && (model.empty() ? words[0] == head : words[0].compare(0, head.size() + 1, head + " ") == 0);
}

}  // namespace

void rewrite_route(JobRewriting& job) {
    const ControlSection& before = job.before.job.control;
    const ControlSection& after = job.after.control;
    if (before.route_keywords == after.route_keywords) {
        return;
    }
    if (before.route_keywords.empty()) {
        throw GJFParseException("A route cannot be added to a job without one, in a document");
    }
    RouteText text(job.lines, job.before.layout, before.route_keywords);
    if (after.parsed_keywords && before.parsed_keywords &&
        written_from_interpretation(after.route_keywords, *after.parsed_keywords)) {
        RouteRewriter(text, *before.parsed_keywords, *after.parsed_keywords, job.given_options).rewrite();
    } else {
        rewrite_words(text, before.route_keywords, after.route_keywords);
    }
    text.apply(job.edits);
}

}  // namespace quor::input::gaussian
