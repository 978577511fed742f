// Tells the names of a model chemistry apart, which the tree of a route keeps by segment alone.
#include <gjf/core/language/route_tokens.hpp>

#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <algorithm>
#include <string>

namespace quor::input::gaussian {
namespace {

class RouteWalk {
   public:
    explicit RouteWalk(const RouteTree& route) : route_(route), schema_(default_route_schema()) {}

    std::vector<RouteToken> walk() {
        add(route_.head, TokenRole::RouteHead);
        for (const RouteTree::Segment& segment : route_.segments) {
            add_segment(segment);
        }
        return std::move(tokens_);
    }

   private:
    void add(Span place, TokenRole role) {
        if (!place.empty()) {
            tokens_.push_back({place, role});
        }
    }

    void add_segment(const RouteTree::Segment& segment) {
        if (segment.is_oniom) {
            add_oniom(segment);
        } else if (segment.is_assignment) {
            add(segment.assigned, TokenRole::Keyword);
            add_names(span_between(route_.text.find('=', segment.assigned.end()) + 1, segment.place.end()));
        } else {
            add_names(segment.place);
        }
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            if (!segment.is_oniom) {
                add_keyword(keyword);
            }
        }
    }

    void add_keyword(const RouteTree::Keyword& keyword) {
        const std::string head(keyword.head.in(route_.text));
        const bool is_method = keyword.is_method || (schema_.knows_method(head) && !schema_.knows_keyword_exact(head));
        // What else was taken for a name there goes.
        std::erase_if(tokens_, [&](const RouteToken& token) {
            return token.place.begin < keyword.place.end() && keyword.place.begin < token.place.end();
        });
        add(keyword.head, is_method ? TokenRole::Method : keyword.known() ? TokenRole::Keyword : role_of_name(head));
        for (const RouteTree::Option& option : keyword.options) {
            add(option.name, TokenRole::Option);
            add(option.value, TokenRole::OptionValue);
        }
    }

    TokenRole role_of_name(const std::string& name) const {
        return schema_.knows_method(name)    ? TokenRole::Method
               : schema_.knows_basis(name)   ? TokenRole::BasisSet
               : schema_.knows_keyword(name) ? TokenRole::Keyword
                                             : TokenRole::RouteWord;
    }

    // Methods and basis sets around slashes; behind the first of these a name is that of a basis set where it is one.
    void add_names(Span stretch) {
        bool is_first = true;
        for (const Span name : cut_list(route_.text, stretch, '/')) {
            const std::string written(name.in(route_.text));
            const bool is_basis = !is_first && schema_.knows_basis(written);
            add(name, is_basis ? TokenRole::BasisSet : role_of_name(written));
            is_first = false;
        }
    }

    void add_oniom(const RouteTree::Segment& segment) {
        const std::string text(segment.place.in(route_.text));
        const KeywordShape shape = oniom_shape(text);
        const auto in_route = [&](Span part) { return Span{segment.place.begin + part.begin, part.length}; };
        add(in_route(shape.head), TokenRole::Keyword);
        for (const Span item : shape.items) {
            if (schema_.knows_option("oniom", std::string(item.in(text)))) {
                add(in_route(item), TokenRole::Option);
                continue;
            }
            for (const Span level : cut_list(text, item, ':')) {
                add_names(in_route(level));
            }
        }
    }

    const RouteTree& route_;
    const SimpleYAMLParser& schema_;
    std::vector<RouteToken> tokens_;
};

}  // namespace

std::vector<Span> route_spans(const JobReading& reading, Span of_route_text) {
    std::vector<Span> places;
    for (const RouteWordStretch& stretch : reading.layout.route_map.stretches(of_route_text)) {
        places.push_back({reading.places.route_words[stretch.word].begin + stretch.part.begin, stretch.part.length});
    }
    return places;
}

std::vector<RouteToken> route_tokens(const RouteTree& route) { return RouteWalk(route).walk(); }

}  // namespace quor::input::gaussian
