// Joins the words of a route to the text that is interpreted.
#include <gjf/core/route/joined_route.hpp>

#include <gjf/core/route/route_segments.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

bool is_route_head(std::string_view word) noexcept {
    return word == "#" || (word.size() == 2 && word.front() == '#' &&
                           std::string_view("npt").find(to_lower_ascii(word[1])) != std::string_view::npos);
}

constexpr bool is_one_of(char c, std::string_view signs) noexcept { return signs.find(c) != std::string_view::npos; }

bool ends_word(char c) noexcept { return is_letter(c) || is_digit(c) || c == '='; }

// What a blank becomes, by the characters around it.
enum class Blank { Stays, Goes, IsComma };

class RouteJoiner {
   public:
    RouteJoiner(bool only_blanks, std::size_t head_length) noexcept : only_blanks_(only_blanks), segment_(head_length) {}

    void add(std::size_t index, std::string_view word, std::size_t from) {
        if (!joined_.text.empty()) {
            put(blank_before(from < word.size() ? word[from] : ' '), " ");
        }
        std::size_t begin = from;  // of what is not yet written
        const auto write_up_to = [&](std::size_t end) {
            if (end > begin) {
                joined_.map.add(joined_.text.size(), {index, span_of(word, word.substr(begin, end - begin))});
                joined_.text += word.substr(begin, end - begin);
            }
            begin = end;
        };
        for (std::size_t i = from; i < word.size();) {
            std::size_t next = i;
            while (next < word.size() && is_white_space(word[next])) {
                ++next;
            }
            if (i > from && next > i && next < word.size()) {
                write_up_to(i);
                begin = next;
                if (const Blank blank = blank_before(word[next]); blank != Blank::Stays) {
                    put(blank, {});
                } else {
                    begin = i;
                    write_up_to(next);
                    begins_segment();
                }
            }
            if (next < word.size()) {
                nesting_.advance(word[next]);
            }
            i = next + 1;
        }
        write_up_to(word.size());
    }

    bool is_closed() const noexcept { return nesting_.at_top_level(); }
    JoinedRoute take() noexcept { return std::move(joined_); }

   private:
    // Tells what a blank between the text so far and a character becomes.
    Blank blank_before(char after) const noexcept {
        const std::string& text = joined_.text;
        if (only_blanks_ || nesting_.in_quotes()) {
            return Blank::Stays;
        }
        const char before = text.back();
        if (!nesting_.at_top_level()) {
            const bool between_options = !is_one_of(before, "([{,=:/ ") && !is_one_of(after, ")]},=:/( ");
            return between_options ? Blank::IsComma : Blank::Stays;
        }
        if (text.size() <= segment_ + (is_one_of(before, "=/") ? 1 : 0)) {
            return Blank::Stays;  // nothing stands before it that could go on
        }
        // What has a slash is a model chemistry, to which nothing is assigned.
        const bool may_be_assigned = text.find('/', segment_) == std::string::npos;
        const bool joins = is_one_of(before, "=/") || after == '/' || (after == '=' && may_be_assigned) ||
                           (after == '(' && ends_word(before));
        return joins ? Blank::Goes : Blank::Stays;
    }

    void put(Blank blank, std::string_view as_it_is) {
        joined_.text += blank == Blank::IsComma ? "," : blank == Blank::Stays ? as_it_is : "";
        if (blank == Blank::IsComma) {
            nesting_.advance(',');
        } else if (blank == Blank::Stays) {
            begins_segment();
        }
    }

    void begins_segment() noexcept { segment_ = nesting_.at_top_level() ? joined_.text.size() : segment_; }

    bool only_blanks_;
    std::size_t segment_;  // where the segment that is being joined begins
    JoinedRoute joined_;
    NestingTracker nesting_;
};

JoinedRoute joined(const std::vector<std::string>& words, bool only_blanks, bool& closed) {
    std::string_view first = words.empty() ? std::string_view() : std::string_view(words[0]);
    take_route_head(first);
    RouteJoiner joiner(only_blanks, words.empty() ? 0 : words[0].size() - first.size());
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i == 0 || !is_route_head(words[i])) {
            joiner.add(i, words[i], i > 0 && words[i].compare(0, 1, "#") == 0 ? 1 : 0);
        }
    }
    closed = joiner.is_closed();
    return joiner.take();
}

}  // namespace

void RouteMap::add(std::size_t begin, const RouteWordStretch& stretch) {
    if (!pieces_.empty()) {
        Piece& last = pieces_.back();
        const bool goes_on = last.stretch.word == stretch.word && last.stretch.part.end() == stretch.part.begin &&
                             last.begin + last.stretch.part.length == begin;
        if (goes_on) {
            last.stretch.part.length += stretch.part.length;
            return;
        }
    }
    pieces_.push_back({begin, stretch});
}

std::vector<RouteWordStretch> RouteMap::stretches(Span of_text) const {
    std::vector<RouteWordStretch> found;
    auto piece = std::upper_bound(pieces_.begin(), pieces_.end(), of_text.begin,
                                  [](std::size_t at, const Piece& next) { return at < next.begin; });
    piece -= piece == pieces_.begin() ? 0 : 1;
    for (; piece != pieces_.end() && (piece->begin < of_text.end() || (of_text.empty() && found.empty())); ++piece) {
        const Span part = piece->stretch.part;
        const auto skipped = static_cast<std::uint32_t>(
            std::min<std::size_t>(of_text.begin > piece->begin ? of_text.begin - piece->begin : 0, part.length));
        const auto end = static_cast<std::uint32_t>(
            std::min<std::size_t>(of_text.end() > piece->begin ? of_text.end() - piece->begin : 0, part.length));
        if (end > skipped || of_text.empty()) {
            found.push_back({piece->stretch.word, {part.begin + skipped, end - skipped}});
        }
    }
    return found;
}

JoinedRoute join_route_words(const std::vector<std::string>& words) {
    bool closed = false;
    JoinedRoute route = joined(words, false, closed);
    return closed ? route : joined(words, true, closed);
}

}  // namespace quor::input::gaussian
