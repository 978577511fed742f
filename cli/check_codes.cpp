// Names, lists and explains the codes of the checker.
#include "check_codes.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

std::string indented(const std::string& lines) {
    std::istringstream stream(lines);
    std::string text;
    for (std::string line; std::getline(stream, line);) {
        text += line.empty() ? "\n" : "    " + printable(line) + '\n';
    }
    return text;
}

std::string explanation_of(const CheckDescription& description) {
    std::string text = description.code + "  " + description.title + "\n\n" + description.explanation + "\n\n";
    if (!description.gaussian_says.empty()) {
        text += "Gaussian says: " + description.gaussian_says + "\n\n";
    }
    return text + "Wrong:\n\n" + indented(description.wrong_job) + "\nRight:\n\n" + indented(description.right_job);
}

}  // namespace

void add_code_option(CLI::App& command, const char* name, std::vector<std::string>& codes, const char* description) {
    command.add_option(name, codes, description)->type_name("CODE")->delimiter(',')->allow_extra_args(false);
}

void require_codes(const char* option, const std::vector<std::string>& beginnings) {
    if (const std::string* unknown = find_unknown_code(beginnings)) {
        const std::vector<std::string> whole = {"GJF-" + *unknown};
        throw CLI::ValidationError(option, "there is no check " + *unknown + "; " +
                                               (find_unknown_code(whole) == nullptr ? "did you mean " + whole.front() + "?"
                                                                                    : "quor-gjf check --list names all"));
    }
}

void print_codes(const std::vector<std::string>& beginnings, bool json) {
    std::vector<CheckDescription> wanted = check_descriptions();
    std::erase_if(wanted,
                  [&](const auto& one) { return !beginnings.empty() && longest_beginning(one.code, beginnings) == 0; });
    const bool explains = wanted.size() == 1;
    for (const CheckDescription& one : wanted) {
        const std::string text = explains ? explanation_of(one) : one.code + "  " + one.title + '\n';
        std::fputs((json ? check_code_json(explains ? one : CheckDescription{one.code, one.title}) : text).c_str(), stdout);
    }
}

}  // namespace quor_gjf
