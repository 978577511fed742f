// Cuts routes that stand alone.
#include <gjf/core/reader/route_lines.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/text/text.hpp>

#include <utility>

namespace quor::input::gaussian {
namespace {

// A head that stands alone says nothing.
bool is_lone_head(const std::vector<std::string>& words) {
    const std::string word = words.size() == 1 ? to_lower_copy(words[0]) : std::string();
    return word == "#" || word == "#n" || word == "#p" || word == "#t";
}

}  // namespace

std::vector<std::string> cut_route(const std::string& text) {
    std::vector<std::string> words;
    for (const std::string& line : GJFParser::split_string(text, '\n')) {
        for (std::string& word : GJFParser::parse_keywords_from_line(line, {})) {
            words.push_back(std::move(word));
        }
    }
    if (words.empty() || words[0][0] != '#') {
        words.insert(words.begin(), "#");
    }
    return words;
}

std::vector<std::string> route_words_of(const std::string& text) {
    std::vector<std::string> words = cut_route(text);
    return is_lone_head(words) ? std::vector<std::string>() : words;
}

}  // namespace quor::input::gaussian
