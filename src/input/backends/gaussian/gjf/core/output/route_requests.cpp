// Finds keywords and options in a printed route.
#include <gjf/core/output/route_requests.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr bool is_word_character(char c) noexcept { return is_letter(c) || is_digit(c) || c == '-'; }

// Where the list of options that begins at `begin` ends: at the bracket that closes it, or at the blank behind a bare
// option.
std::string_view list_at(std::string_view text, std::size_t begin) {
    if (begin < text.size() && text[begin] != '(') {
        return text.substr(begin, text.find_first_of(" ,)", begin) - begin);
    }
    std::size_t depth = 0;
    for (std::size_t i = begin; i < text.size(); ++i) {
        depth += text[i] == '(' ? 1U : 0U;
        depth -= text[i] == ')' ? 1U : 0U;
        if (depth == 0) {
            return text.substr(begin + 1, i - begin - 1);
        }
    }
    return text.substr(std::min(begin + 1, text.size()));
}

}  // namespace

std::optional<std::string> options_in(std::string_view route, std::string_view keyword) {
    const std::string lower = to_lower_copy(route);
    std::size_t depth = 0;
    for (std::size_t i = 0; i < lower.size(); ++i) {
        depth += lower[i] == '(' ? 1U : 0U;
        depth -= lower[i] == ')' && depth > 0 ? 1U : 0U;
        const bool begins =
            depth == 0 && (i == 0 || !is_word_character(lower[i - 1])) && lower.compare(i, keyword.size(), keyword) == 0;
        std::size_t end = i + keyword.size();
        if (!begins || (end < lower.size() && is_word_character(lower[end]))) {
            continue;
        }
        end = std::min(lower.find_first_not_of(' ', end), lower.size());
        const bool has_equals = end < lower.size() && lower[end] == '=';
        if (has_equals) {
            end = std::min(lower.find_first_not_of(' ', end + 1), lower.size());
        }
        const bool has_list = has_equals || (end < lower.size() && lower[end] == '(');
        return has_list ? std::string(list_at(lower, end)) : std::string();
    }
    return std::nullopt;
}

bool has_any_option(std::string_view options, std::string_view words) {
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(words.size(), word.size() + 1));
        for (std::size_t found = options.find(word); found != std::string_view::npos;
             found = options.find(word, found + 1)) {
            const std::size_t end = found + word.size();
            if ((found == 0 || !is_word_character(options[found - 1])) &&
                (end == options.size() || !is_word_character(options[end]))) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace quor::input::gaussian
