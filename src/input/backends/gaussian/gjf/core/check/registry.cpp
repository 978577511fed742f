// The registry of rules: the families in the order in which they are asked, and what is said of each code.
#include <gjf/core/check/checker.hpp>

#include <gjf/core/check/rule.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <set>

namespace quor::input::gaussian {
namespace {

constexpr const Family* all_families[] = {
    &text_family,          &blank_line_family,       &link0_family,         &glued_word_family,
    &route_word_family,    &option_value_family,     &route_sense_family,   &method_family,
    &reading_family,       &later_blank_line_family, &molecule_form_family, &atom_family,
    &electron_family,      &zmatrix_family,          &layer_family,         &connectivity_family,
    &basis_section_family, &basis_element_family,    &named_block_family,   &size_family,
    &section_family,       &section_content_family,  &limit_family,         &included_file_family,
};

constexpr std::string_view fence = "```";
constexpr std::string_view says = "Gaussian says: ";

// Puts bytes in the place of \\x and two digits.
std::string unescaped(std::string_view line) {
    std::string text;
    while (!line.empty()) {
        const bool is_escape = line.size() >= 4 && line.starts_with("\\x");
        unsigned char byte = static_cast<unsigned char>(line[0]);
        if (is_escape) {
            std::from_chars(line.data() + 2, line.data() + 4, byte, 16);
        }
        text += static_cast<char>(byte);
        line.remove_prefix(is_escape ? 4 : 1);
    }
    return text;
}

// Adds a line of the text behind a code's heading; the first block is the wrong job, the next the right one.
void add_line(std::string_view line, std::size_t fences, CheckDescription& page) {
    if (fences % 2 == 1) {
        (fences == 1 ? page.wrong_job : page.right_job) += unescaped(line) + '\n';
    } else if (line.starts_with(says)) {
        page.gaussian_says = line.substr(says.size());
    } else if (fences == 0 && line != "Wrong:") {
        page.explanation += line;
        page.explanation += '\n';
    }
}

// Reads what stands below the heading of a code.
CheckDescription describe(const std::string& code) {
    CheckDescription page{code};
    const std::string_view text = check_pages();
    const std::string heading = "\n### " + code + ' ';
    const std::size_t begin = text.find(heading);
    if (begin == std::string_view::npos) {
        return page;
    }
    std::string_view rest = text.substr(begin + heading.size());
    rest = rest.substr(0, rest.find("\n##"));
    std::size_t fences = 0;
    page.title = take_line(rest);
    while (!rest.empty()) {
        const std::string_view line = take_line(rest);
        if (line == fence) {
            ++fences;
        } else {
            add_line(line, fences, page);
        }
    }
    page.explanation = trim_view(page.explanation);
    return page;
}

std::vector<CheckDescription> describe_all() {
    std::set<std::string> codes;
    for (const Family* family : all_families) {
        codes.insert(family->codes.begin(), family->codes.end());
    }
    std::vector<CheckDescription> all;
    std::transform(codes.begin(), codes.end(), std::back_inserter(all), describe);
    return all;
}

}  // namespace

std::span<const Family* const> families() noexcept { return all_families; }

bool is_of_other_files(std::string_view code) noexcept {
    return std::any_of(std::begin(all_families), std::end(all_families), [&](const Family* family) {
        return std::find(family->of_other_files.begin(), family->of_other_files.end(), code) != family->of_other_files.end();
    });
}

const std::vector<CheckDescription>& check_descriptions() {
    static const std::vector<CheckDescription> descriptions = describe_all();
    return descriptions;
}

}  // namespace quor::input::gaussian
