// Compares what was typed with the names of options: its beginning, or a letter or two apart.
#include "near_options.hpp"

#include <gjf/core/schema/simple_yaml_parser.hpp>
#include <gjf/core/text/steps_between.hpp>

#include <algorithm>

namespace quor_gjf {
namespace {

constexpr std::size_t most_names = 3;

// Without the dashes before it; "_" is what people type for "-".
std::string bare(const std::string& option) {
    std::string name = quor::input::gaussian::SimpleYAMLParser::to_lower(
        option.substr(std::min(option.find_first_not_of('-'), option.size())));
    std::replace(name.begin(), name.end(), '_', '-');
    return name;
}

}  // namespace

std::vector<std::string> near_options(const std::string& word, const std::vector<std::string>& options) {
    constexpr std::size_t shortest = 3;  // a shorter one may mean anything
    const std::string wanted = bare(word);
    const bool is_one = std::find(options.begin(), options.end(), word) != options.end();
    if (is_one || wanted.size() < shortest || wanted.find_first_of("0123456789. ") == 0) {
        return {};
    }
    const auto collect = [&](const auto& fits) {
        std::vector<std::string> found;
        for (const std::string& option : options) {
            if (fits(bare(option)) && std::find(found.begin(), found.end(), option) == found.end()) {
                found.push_back(option);
            }
        }
        found.resize(std::min(found.size(), most_names));
        return found;
    };
    std::vector<std::string> found = collect([&](const std::string& name) { return name.starts_with(wanted); });
    for (std::size_t apart = 1; found.empty() && apart <= (wanted.size() < 6 ? 1 : 2); ++apart) {
        found =
            collect([&](const std::string& name) { return quor::input::gaussian::steps_between(wanted, name) == apart; });
    }
    return found;
}

std::string alternatives(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + names[i];
    }
    return text;
}

}  // namespace quor_gjf
