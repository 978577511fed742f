// Builds the tree of a route while the route is interpreted.
#include <gjf/core/route/route_tree.hpp>

#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/route/route_recorder.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

Span span_at(std::size_t begin, Span part) noexcept { return span_between(begin + part.begin, begin + part.end()); }

RouteMatch match_of(bool exact, bool known, std::string_view written, std::string_view canonical, std::size_t candidates) {
    if (exact) {
        return equals_folded(written, canonical) ? RouteMatch::Exact : RouteMatch::Alias;
    }
    return known ? RouteMatch::Abbreviation : candidates > 1 ? RouteMatch::Ambiguous : RouteMatch::Unknown;
}

RouteMatch match_keyword(const SimpleYAMLParser& schema, const std::string& written, const std::string& name) {
    const bool exact = schema.knows_keyword_exact(written) || schema.knows_method_exact(written);
    const bool known = exact || schema.knows_keyword(name) || schema.knows_method(name);
    const std::size_t candidates = known ? 1
                                         : schema.keyword_completions(written).size() +
                                               schema.method_completions(written).size() +
                                               schema.basis_completions(written).size();
    return match_of(exact, known, written, name, candidates);
}

RouteMatch match_option(const SimpleYAMLParser& schema, const std::string& keyword, const std::string& written,
                        const std::string& canonical) {
    const bool exact = schema.knows_option_exact(keyword, written);
    const bool known = exact || schema.knows_option(keyword, written);
    return match_of(exact, known, written, canonical, known ? 1 : schema.option_completions(keyword, written).size());
}

}  // namespace

const RouteTree::Option* RouteTree::Keyword::find_option(std::string_view wanted) const noexcept {
    const auto found =
        std::find_if(options.begin(), options.end(), [&](const Option& option) { return option.canonical == wanted; });
    return found == options.end() ? nullptr : &*found;
}

void RouteRecorder::begin_segment(const ParsedKeywords& before, Span place) {
    had_method_ = !before.method.empty();
    basis_before_ = before.basis_set;
    oniom_before_ = before.oniom_expression;
    RouteTree::Segment& begun = tree_.segments.emplace_back();
    begun.place = place;
    begun.first_keyword = before.keywords.size();
    piece_ = next_ = place.begin;
}

void RouteRecorder::end_segment(const ParsedKeywords& after) {
    RouteTree::Segment& ended = segment();
    ended.gives_method = !had_method_ && !after.method.empty();
    ended.gives_basis = after.basis_set != basis_before_;
    ended.gives_oniom = after.oniom_expression != oniom_before_;
    ended.keyword_count = after.keywords.size() - ended.first_keyword;
    if (!had_method_ && basis_before_.empty()) {
        take_names(after);
    } else if (!ended.is_oniom && !is_plain_keyword()) {
        ended.keywords.clear();
        ended.is_assignment = false;
        piece_ = next_ = ended.place.begin;
        alone_.reset();
        alone_.recorder_ = this;
        alone_.parse_segment_schema_driven(std::string(ended.place.in(tree_.text)), std::nullopt);
        take_names(alone_.result_);
    }
}

// Tells whether the segment is one keyword, which means the same wherever it stands.
bool RouteRecorder::is_plain_keyword() const {
    const RouteTree::Segment& read = tree_.segments.back();
    const std::string text(read.place.in(tree_.text));
    if (read.keywords.size() != 1 || read.gives_method || read.gives_basis || find_top_level_char(text, '/') >= 0) {
        return false;
    }
    const std::string head(read.keywords[0].head.in(tree_.text));
    return schema_.knows_keyword_exact(head) && !schema_.knows_method_exact(head);
}

void RouteRecorder::take_names(const ParsedKeywords& meaning) {
    RouteTree::Segment& read = segment();
    read.method = meaning.method;
    read.basis = meaning.basis_set;
    read.secondary_method = meaning.secondary_method;
    if (!meaning.method_options.empty()) {
        piece_ = std::min(tree_.text.find(meaning.method_options, read.place.begin), tree_.text.size());
        add_keyword(meaning.method, meaning.method_options, true);
        std::rotate(read.keywords.begin(), read.keywords.end() - 1, read.keywords.end());
    }
}

void RouteRecorder::enter_piece(const std::string& piece) {
    piece_ = std::min(tree_.text.find(piece, next_), tree_.text.size());
    next_ = piece_ + piece.size();
}

void RouteRecorder::take_assignment(std::size_t equals) {
    segment().is_assignment = true;
    segment().assigned = span_at(piece_, trimmed_span(std::string_view(tree_.text).substr(piece_), span_between(0, equals)));
}

void RouteRecorder::add_keyword(const std::string& name, const std::string& raw, bool is_method) {
    const KeywordShape shape = segment().is_oniom ? oniom_shape(raw) : keyword_shape(raw, is_method);
    RouteTree::Keyword& keyword = segment().keywords.emplace_back();
    keyword.place = span_between(piece_, piece_ + raw.size());
    keyword.head = span_at(piece_, shape.head);
    keyword.name = name;
    keyword.is_method = is_method;
    keyword.match = match_keyword(schema_, std::string(shape.head.in(raw)), name);
    for (const Span item : shape.items) {
        const KeywordItem parts = keyword_item(raw, item);
        RouteTree::Option& option = keyword.options.emplace_back();
        option.place = span_at(piece_, item);
        option.name = span_at(piece_, parts.name);
        option.value = span_at(piece_, parts.value);
        const std::string written(parts.name.in(raw));
        option.canonical = schema_.normalize_option(name, written);
        option.match = match_option(schema_, name, written, option.canonical);
    }
}

RouteReading read_route(std::string text, const SimpleYAMLParser& schema) {
    RouteReading reading;
    reading.tree.text = std::move(text);
    RouteRecorder recorder(reading.tree, schema);
    G16KeywordParser parser(schema);
    parser.recorder_ = &recorder;
    parser.parse(reading.tree.text);
    reading.meaning = std::move(parser.result_);
    return reading;
}

}  // namespace quor::input::gaussian
