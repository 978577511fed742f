// Writes changed route words into their lines.
#include <gjf/core/document/route_text.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t most_columns = 80;

// Breaks the words of a text into lines of at most 80 columns; further lines begin with a blank.
std::vector<std::string> broken(const std::string& text) {
    std::vector<std::string> lines;
    std::string line;
    std::size_t begin = 0;
    NestingTracker nesting;
    const auto take = [&](std::size_t end) {
        const std::string word = text.substr(begin, end - begin);
        if (!trim_view(line).empty() && line.size() + word.size() > most_columns) {
            lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
            line = " " + std::string(trim_view(word));
        } else {
            line += word;
        }
        begin = end;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool top = nesting.advance(text[i]);
        if (top && is_trim_character(text[i]) && i > begin && !is_trim_character(text[i - 1])) {
            take(i);
        }
    }
    take(text.size());
    lines.push_back(line);
    return lines;
}

// Returns a text that is to be written, unless it would break its line.
const std::string& within_line(const std::string& text) {
    if (text.find_first_of("\r\n") != std::string::npos) {
        throw GJFParseException("A route word cannot hold a line break");
    }
    return text;
}

}  // namespace

RouteText::RouteText(const TextLines& lines, const JobLayout& layout, const std::vector<std::string>& words)
    : lines_(lines), layout_(layout), head_length_(layout.route.head.length) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        words_.push_back({layout.route_words[i], words[i], false, 0});
    }
}

void RouteText::replace(Span place, const std::string& text) {
    // The first stretch takes the text, the others go.
    std::string given = within_line(text);
    for (const RouteWordStretch& stretch : layout_.route_map.stretches(place)) {
        Word& word = words_[stretch.word];
        const auto begin = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(stretch.part.begin) + word.shift);
        word.text.replace(begin, stretch.part.length, given);
        word.shift += static_cast<std::ptrdiff_t>(given.size()) - static_cast<std::ptrdiff_t>(stretch.part.length);
        word.changed = true;
        given.clear();
    }
}

void RouteText::replace_word(std::size_t word, const std::string& text) {
    words_[word].text = within_line(text);
    words_[word].changed = true;
}

void RouteText::set_head(const std::string& head) {
    Word& first = words_.front();
    // "#" and a word that begins with n, p or t must not become a print level.
    const bool parts = head.size() == 1 && first.text.size() > head_length_ && first.text[head_length_] != ' ';
    insert_at_front(head_length_, within_line(head) + (parts ? " " : ""));
    head_length_ = head.size();
}

void RouteText::insert_behind_head(const std::string& word) {
    const std::string& first = words_.front().text;
    const bool parts = head_length_ < first.size() && first[head_length_] != ' ';
    insert_at_front(head_length_, first.substr(0, head_length_) + " " + within_line(word) + (parts ? " " : ""));
}

// Puts a text in the place of the beginning of the first word.
void RouteText::insert_at_front(std::size_t length, const std::string& text) {
    Word& first = words_.front();
    first.text.replace(0, std::min(length, first.text.size()), text);
    first.shift += static_cast<std::ptrdiff_t>(text.size()) - static_cast<std::ptrdiff_t>(length);
    first.changed = true;
}

void RouteText::append(const std::string& word) { appended_.push_back(within_line(word)); }

std::string RouteText::new_line(std::size_t number, const std::vector<const Word*>& words, bool& empty) const {
    const std::string_view old = lines_.line(number);
    std::string line;
    std::size_t from = 0;
    bool blank = true;  // so far
    bool dropped = false;
    for (const Word* word : words) {
        std::string_view gap = old.substr(from, word->place.column - 1 - from);
        // The blanks before a word that went make way for those before the next one.
        if (dropped && !blank) {
            line.resize(line.find_last_not_of(" \t,") + 1);
            blank = line.empty();
            line += ' ';
            gap = {};
        } else if (dropped) {
            gap = {};
        }
        line += gap;
        line += word->text;
        blank = blank && trim_view(gap).empty() && trim_view(word->text).empty();
        from = word->place.column - 1 + word->place.length;
        dropped = word->changed && trim_view(word->text).empty();
    }
    std::string_view rest = old.substr(from);
    if (dropped) {
        // The commas behind a word go with it.
        line.resize(line.find_last_not_of(" \t,") + 1);
        const std::size_t kept = rest.find_first_not_of(" \t,");
        const std::size_t comma = rest.substr(0, kept).rfind(',');
        rest.remove_prefix(comma == std::string_view::npos ? 0 : comma + 1);
    }
    empty = trim_view(line).empty();
    line += rest;
    return line;
}

RouteText::NewLines RouteText::new_lines(LineEdits& edits) const {
    NewLines found{{}, words_.front().place.line};
    for (std::size_t i = 0; i < words_.size();) {
        const std::size_t number = words_[i].place.line;
        std::vector<const Word*> words;
        bool any = false;
        for (; i < words_.size() && words_[i].place.line == number; ++i) {
            words.push_back(&words_[i]);
            any = any || words_[i].changed;
        }
        bool empty = false;
        std::string line = new_line(number, words, empty);
        if (empty && trim_view(line).empty()) {
            edits.remove(number);
            continue;
        }
        found.last = empty ? found.last : number;
        if (any) {
            found.changed.emplace_back(number, std::move(line));
        }
    }
    return found;
}

void RouteText::write_line(std::size_t number, const std::string& line, bool is_last, LineEdits& edits) const {
    const std::size_t end = without_comment(line).size();
    std::string comment = line.substr(end);
    std::string text = line.substr(0, end);
    if (is_last && !appended_.empty()) {
        const std::size_t content = text.find_last_not_of(" \t") + 1;
        comment = text.substr(content) + comment;
        text.resize(content);
        for (const std::string& word : appended_) {
            text += " " + word;
        }
    }
    // A line that was long before is left so.
    const bool too_long = text.size() > most_columns && without_comment(lines_.line(number)).size() <= most_columns;
    const std::vector<std::string> lines = too_long ? broken(text) : std::vector<std::string>{text};
    edits.replace(number, lines.front() + comment);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        edits.insert_after(number, lines[i]);
    }
}

void RouteText::apply(LineEdits& edits) const {
    NewLines lines = new_lines(edits);
    const bool has_last = std::any_of(lines.changed.begin(), lines.changed.end(),
                                      [&](const auto& entry) { return entry.first == lines.last; });
    if (!appended_.empty() && !has_last) {
        lines.changed.emplace_back(lines.last, std::string(lines_.line(lines.last)));
    }
    for (const auto& [number, line] : lines.changed) {
        write_line(number, line, number == lines.last, edits);
    }
}

}  // namespace quor::input::gaussian
