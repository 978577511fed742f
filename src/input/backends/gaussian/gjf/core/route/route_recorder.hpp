// Builds the tree of a route while the route is interpreted. Private to the room.
#pragma once

#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/route/route_tree.hpp>

#include <string>

namespace quor::input::gaussian {

/// Is told by a parser what it takes, segment by segment. A segment that may say more by itself than it gave to the
/// interpretation, as a second method does, is read once more as if it stood alone.
class RouteRecorder {
   public:
    RouteRecorder(RouteTree& tree, const SimpleYAMLParser& schema) : tree_(tree), schema_(schema), alone_(schema) {}

    void begin_segment(const ParsedKeywords& before, Span place);
    void end_segment(const ParsedKeywords& after);
    void take_head(Span head) noexcept { tree_.head = head; }

    /// The parser goes on with the next piece of a segment that is cut at slashes.
    void enter_piece(const std::string& piece);
    void take_keyword(const std::string& name, const std::string& raw) { add_keyword(name, raw, false); }
    void take_oniom() noexcept { segment().is_oniom = true; }
    /// The piece is read as the assignment of a basis set: `equals` is where its sign stands.
    void take_assignment(std::size_t equals);

   private:
    RouteTree::Segment& segment() noexcept { return tree_.segments.back(); }
    void add_keyword(const std::string& name, const std::string& raw, bool is_method);
    bool is_plain_keyword() const;
    void take_names(const ParsedKeywords& meaning);

    RouteTree& tree_;
    const SimpleYAMLParser& schema_;
    G16KeywordParser alone_;  // reads segments by themselves
    std::size_t piece_ = 0;   // where the piece that is being read begins
    std::size_t next_ = 0;    // where the next one may begin
    bool had_method_ = false;
    std::string basis_before_;
    std::string oniom_before_;
};

}  // namespace quor::input::gaussian
