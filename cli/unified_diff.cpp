// Finds the lines two texts share: first those at both ends, then those that each text holds once, as far as their order
// agrees; the short stretches between them are compared line by line.
#include "unified_diff.hpp"

#include "terminal.hpp"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

constexpr std::size_t context_lines = 3;
// Stretches with more pairs of lines than this are not compared line by line.
constexpr std::size_t most_pairs = 250'000;

using Lines = std::vector<std::string_view>;

// Lines end in their line feeds; the last one may lack it.
Lines whole_lines_of(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

// Lines [a, a_end) of the one text and [b, b_end) of the other.
struct Stretch {
    std::size_t a = 0;
    std::size_t a_end = 0;
    std::size_t b = 0;
    std::size_t b_end = 0;
};

using LinePair = std::pair<std::size_t, std::size_t>;

// Pairs the lines that two texts share, in ascending order.
class CommonLines {
   public:
    CommonLines(const Lines& a, const Lines& b) : a_(a), b_(b) {}

    std::vector<LinePair> find() {
        Stretch rest{0, a_.size(), 0, b_.size()};
        const std::size_t tail = take_ends(rest);
        Stretch gap = rest;
        for (const LinePair& anchor : anchors_in(rest)) {
            gap.a_end = anchor.first;
            gap.b_end = anchor.second;
            compare(gap);
            pairs_.push_back(anchor);
            gap = {anchor.first + 1, rest.a_end, anchor.second + 1, rest.b_end};
        }
        compare(gap);
        add_run(rest.a_end, rest.b_end, tail);
        return std::move(pairs_);
    }

   private:
    void add_run(std::size_t a, std::size_t b, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            pairs_.emplace_back(a + i, b + i);
        }
    }

    // Pairs the equal lines at the beginning and narrows the stretch at both ends; returns how many are equal at its end.
    std::size_t take_ends(Stretch& stretch) {
        while (stretch.a < stretch.a_end && stretch.b < stretch.b_end && a_[stretch.a] == b_[stretch.b]) {
            pairs_.emplace_back(stretch.a++, stretch.b++);
        }
        std::size_t tail = 0;
        while (stretch.a < stretch.a_end && stretch.b < stretch.b_end && a_[stretch.a_end - 1] == b_[stretch.b_end - 1]) {
            --stretch.a_end;
            --stretch.b_end;
            ++tail;
        }
        return tail;
    }

    // Pairs the lines that stand once in each text.
    std::vector<LinePair> unique_pairs(const Stretch& stretch) const {
        struct Counts {
            std::size_t in_a = 0;
            std::size_t in_b = 0;
            std::size_t place_in_b = 0;
        };
        std::unordered_map<std::string_view, Counts> counts;
        for (std::size_t i = stretch.a; i < stretch.a_end; ++i) {
            ++counts[a_[i]].in_a;
        }
        for (std::size_t j = stretch.b; j < stretch.b_end; ++j) {
            Counts& count = counts[b_[j]];
            ++count.in_b;
            count.place_in_b = j;
        }
        std::vector<LinePair> pairs;
        for (std::size_t i = stretch.a; i < stretch.a_end; ++i) {
            const Counts& count = counts[a_[i]];
            if (count.in_a == 1 && count.in_b == 1) {
                pairs.emplace_back(i, count.place_in_b);
            }
        }
        return pairs;
    }

    // Returns the longest list of pairs of lines, each once in its text, that ascends in both.
    std::vector<LinePair> anchors_in(const Stretch& stretch) const {
        constexpr auto none = static_cast<std::size_t>(-1);
        const std::vector<LinePair> pairs = unique_pairs(stretch);
        std::vector<std::size_t> last_of_length;  // the pair that ends the best list of each length
        std::vector<std::size_t> before(pairs.size(), none);
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const auto place =
                std::lower_bound(last_of_length.begin(), last_of_length.end(), pairs[i].second,
                                 [&](std::size_t pair, std::size_t line) { return pairs[pair].second < line; });
            before[i] = place == last_of_length.begin() ? none : *std::prev(place);
            if (place == last_of_length.end()) {
                last_of_length.push_back(i);
            } else {
                *place = i;
            }
        }
        std::vector<LinePair> anchors;
        for (std::size_t i = last_of_length.empty() ? none : last_of_length.back(); i != none; i = before[i]) {
            anchors.push_back(pairs[i]);
        }
        std::reverse(anchors.begin(), anchors.end());
        return anchors;
    }

    // Pairs the longest list of lines that a short stretch shares.
    void compare(Stretch stretch) {
        const std::size_t tail = take_ends(stretch);
        const std::size_t rows = stretch.a_end - stretch.a;
        const std::size_t columns = stretch.b_end - stretch.b;
        if (rows != 0 && columns != 0 && columns <= most_pairs / rows) {
            std::vector<std::vector<unsigned>> length(rows + 1, std::vector<unsigned>(columns + 1));
            for (std::size_t i = rows; i-- > 0;) {
                for (std::size_t j = columns; j-- > 0;) {
                    length[i][j] = a_[stretch.a + i] == b_[stretch.b + j] ? length[i + 1][j + 1] + 1
                                                                          : std::max(length[i + 1][j], length[i][j + 1]);
                }
            }
            add_longest(stretch, length);
        }
        add_run(stretch.a_end, stretch.b_end, tail);
    }

    void add_longest(const Stretch& stretch, const std::vector<std::vector<unsigned>>& length) {
        for (std::size_t i = 0, j = 0; i + 1 < length.size() && j + 1 < length[i].size();) {
            if (a_[stretch.a + i] == b_[stretch.b + j]) {
                pairs_.emplace_back(stretch.a + i++, stretch.b + j++);
            } else if (length[i + 1][j] >= length[i][j + 1]) {
                ++i;
            } else {
                ++j;
            }
        }
    }

    const Lines& a_;
    const Lines& b_;
    std::vector<LinePair> pairs_;
};

// Returns the stretches without a common line, in their order.
std::vector<Stretch> changes_between(const Lines& a, const Lines& b) {
    std::vector<LinePair> pairs = CommonLines(a, b).find();
    pairs.emplace_back(a.size(), b.size());
    std::vector<Stretch> changes;
    LinePair next{0, 0};
    for (const auto& [i, j] : pairs) {
        if (i != next.first || j != next.second) {
            changes.push_back({next.first, i, next.second, j});
        }
        next = {i + 1, j + 1};
    }
    return changes;
}

class DiffText {
   public:
    DiffText(const Lines& a, const Lines& b, bool for_terminal) : a_(a), b_(b), for_terminal_(for_terminal) {}

    void add_names(const std::string& name) {
        // A tab ends a name with blanks in it.
        const std::string shown = printable(name) + (name.find(' ') == std::string::npos ? "" : "\t");
        add_coloured("\033[1m", "--- " + shown);
        add_coloured("\033[1m", "+++ " + shown);
    }

    // Adds changes [first, last) as one hunk.
    void add_hunk(const Stretch* first, const Stretch* last) {
        const std::size_t lead = std::min(first->a, context_lines);
        const std::size_t trail = std::min(a_.size() - last[-1].a_end, context_lines);
        const Stretch whole{first->a - lead, last[-1].a_end + trail, first->b - lead, last[-1].b_end + trail};
        add_coloured("\033[36m", "@@ -" + range(whole.a, whole.a_end) + " +" + range(whole.b, whole.b_end) + " @@");
        std::size_t at = whole.a;
        for (const Stretch* change = first; change != last; ++change) {
            add_lines(' ', a_, at, change->a);
            add_lines('-', a_, change->a, change->a_end);
            add_lines('+', b_, change->b, change->b_end);
            at = change->a_end;
        }
        add_lines(' ', a_, at, whole.a_end);
    }

    std::string take() { return std::move(text_); }

   private:
    // Lines count from 1; an empty range names the line before it.
    static std::string range(std::size_t begin, std::size_t end) {
        const std::size_t count = end - begin;
        const std::string first = std::to_string(count == 0 ? begin : begin + 1);
        return count == 1 ? first : first + ',' + std::to_string(count);
    }

    void add_coloured(std::string_view colour, const std::string& line) {
        text_ += for_terminal_ && !colour.empty() ? std::string(colour) + line + "\033[0m" : line;
        text_ += '\n';
    }

    void add_lines(char mark, const Lines& lines, std::size_t begin, std::size_t end) {
        const std::string_view colour = mark == '-' ? "\033[31m" : mark == '+' ? "\033[32m" : "";
        for (std::size_t i = begin; i < end; ++i) {
            std::string_view line = lines[i];
            const bool ends = line.ends_with('\n');
            line.remove_suffix(ends ? 1 : 0);
            line.remove_suffix(for_terminal_ && line.ends_with('\r') ? 1 : 0);
            add_coloured(colour, mark + (for_terminal_ ? printable(line) : std::string(line)));
            text_ += ends ? "" : "\\ No newline at end of file\n";
        }
    }

    const Lines& a_;
    const Lines& b_;
    bool for_terminal_;
    std::string text_;
};

}  // namespace

std::string unified_diff(const std::string& name, std::string_view before, std::string_view after, bool for_terminal) {
    const Lines a = whole_lines_of(before);
    const Lines b = whole_lines_of(after);
    const std::vector<Stretch> changes = changes_between(a, b);
    if (changes.empty()) {
        return {};
    }
    DiffText text(a, b, for_terminal);
    text.add_names(name);
    const Stretch* const end = changes.data() + changes.size();
    for (const Stretch* first = changes.data(); first != end;) {
        const Stretch* last = first + 1;
        while (last != end && last->a - last[-1].a_end <= 2 * context_lines) {
            ++last;
        }
        text.add_hunk(first, last);
        first = last;
    }
    return text.take();
}

}  // namespace quor_gjf
