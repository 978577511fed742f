// quor-gjf completion: prints what the shells and the manual page know of the tool, from the very table that reads its
// arguments.
//
// The scripts know no option: they ask `quor-gjf completion words LINE =WORD` what may stand at the cursor. An answer is a
// word, with a tab and its description; ":files" stands for names of files, ":nospace" tells that a word goes on.
#include "commands.hpp"
#include "input.hpp"
#include "section_names.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;
using Words = std::vector<std::string>;

struct ShellScript {
    std::string_view shell;
    const char* text;
};

constexpr ShellScript scripts[] = {
    {"bash", R"(_quor_gjf() {
    local cur=${COMP_WORDS[COMP_CWORD]} word
    [[ $cur == [=:] ]] && cur=""
    COMPREPLY=()
    while IFS= read -r word; do
        case $word in
            :files)
                compopt -o filenames 2>/dev/null
                mapfile -t COMPREPLY < <(compgen -f -- "$cur") ;;
            :nospace) compopt -o nospace 2>/dev/null ;;
            *) COMPREPLY+=("${word%%$'\t'*}") ;;
        esac
    done < <("${COMP_WORDS[0]}" completion words "${COMP_LINE:0:COMP_POINT}" "=$cur" 2>/dev/null)
}

complete -F _quor_gjf quor-gjf
)"},
    {"zsh", R"(#compdef quor-gjf
local -a found shown
local word space=' '
for word in "${(@f)$(quor-gjf completion words "$LBUFFER" "=$PREFIX" 2>/dev/null)}"; do
    case $word in
        :files) _files ;;
        :nospace) space='' ;;
        ?*)
            found+=("${word%%$'\t'*}")
            shown+=("${word/$'\t'/  }") ;;
    esac
done
(( $#found )) && compadd -Q -U -S "$space" -l -d shown -a found
)"},
    {"fish", R"(function __quor_gjf_words
    for word in (quor-gjf completion words (commandline -cp | string collect) (commandline -ct | string replace -r '^' '=') 2>/dev/null)
        switch $word
            case ':files'
                __fish_complete_path (commandline -ct)
            case ':nospace'
            case '*'
                echo $word
        end
    end
end
complete -c quor-gjf -f -a '(__quor_gjf_words)'
)"},
};

bool is_shown(const CLI::Option& option) { return option.nonpositional() && !option.get_group().empty(); }

std::string long_name(const CLI::Option& option) {
    return option.get_lnames().empty() ? std::string() : "--" + option.get_lnames().front();
}

bool has_value(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

// --- What may stand at the cursor

/// A word that may stand at the cursor.
struct Candidate {
    std::string word;
    std::string description;
};
using Candidates = std::vector<Candidate>;

// Cuts a command line as a shell does; the last word, which may be empty, ends at the cursor.
Words words_of(const std::string& line) {
    Words words(1);
    char quote = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quote == 0 && c == ' ') {
            words.emplace_back();
        } else if (c == quote) {
            quote = 0;
        } else if (quote == 0 && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c != '\\' || quote == '\'') {
            words.back() += c;
        }
    }
    const auto end = std::prev(words.end());
    words.erase(std::remove(words.begin(), end, std::string()), end);
    return words;
}

const CLI::Option* option_named(const CLI::App& command, const std::string& name) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->nonpositional() && option->check_name(name)) {
            return option;
        }
    }
    return nullptr;
}

const CLI::App* command_named(const CLI::App& command, const std::string& name) {
    for (const CLI::App* below : command.get_subcommands({})) {
        if (below->get_name() == name) {
            return below;
        }
    }
    return nullptr;
}

Candidates codes() {
    Candidates candidates;
    for (const CheckDescription& description : check_descriptions()) {
        candidates.push_back({description.code, description.title});
    }
    return candidates;
}

// The second column of the list of kinds.
Candidates kinds() {
    Candidates candidates;
    std::istringstream lines(section_kind_list());
    std::string number;
    std::string name;
    std::string rest;
    while (lines >> number >> name && std::getline(lines, rest)) {
        candidates.push_back({name, std::string(GJFParser::trim(rest))});
    }
    return candidates;
}

Candidates settable_keys() {
    Candidates candidates;
    for (const Link0Key& key : link0_keys()) {
        candidates.push_back({std::string(key.name) + (key.form == Link0Form::Flag ? "" : "="), {}});
    }
    return candidates;
}

Candidates link0_names() {
    Candidates candidates;
    for (const Link0Key& key : link0_keys()) {
        candidates.push_back({std::string(key.name), {}});
    }
    return candidates;
}

Candidates kinds_to_set() {
    Candidates candidates = kinds();
    for (Candidate& candidate : candidates) {
        candidate.word += '=';
    }
    return candidates;
}

// Words that CLI11 writes in braces behind the type of a value: {error,warning,note}.
Candidates listed_words(const std::string& type) {
    Candidates candidates;
    const std::size_t open = type.find('{');
    const std::size_t close = type.find('}', open);
    if (open == std::string::npos || close == std::string::npos) {
        return candidates;
    }
    std::istringstream list(type.substr(open + 1, close - open - 1));
    for (std::string word; std::getline(list, word, ',');) {
        candidates.push_back({word, {}});
    }
    return candidates;
}

// What completes the end of a route, or of a part of one; `part` is what they replace.
Candidates completed(const RouteContext& context, std::string& part) {
    part = context.prefix;
    Candidates candidates;
    for (const Completion& completion : completions_of(context)) {
        candidates.push_back({completion.text, {}});
    }
    return candidates;
}

Candidates route_words(const std::string& text, std::string& part) {
    Candidates candidates = completed(context_at_end(text), part);
    candidates.insert(candidates.begin(), {":nospace", {}});
    return candidates;
}

Candidates fields() {
    Candidates candidates;
    for (const JobField& field : job_fields()) {
        candidates.push_back({field.name, field.description});
    }
    return candidates;
}

// What completes the last word of a condition: a field, its value where that is a word of a route, or a word of a route.
Candidates condition_words(const std::string& text, std::string& part) {
    part = text.substr(text.find_last_of(' ') + 1);
    part.erase(0, part.find_first_not_of('('));
    const std::size_t sign = part.find_first_of("=!~");
    const JobField* field = sign == std::string::npos ? nullptr : find_job_field(part.substr(0, sign));
    if (field != nullptr && (field->form == FieldForm::Method || field->form == FieldForm::Basis)) {
        const std::size_t value = part.find_first_not_of("=!~", sign);
        const std::string begin = value == std::string::npos ? std::string() : part.substr(value);
        return completed({field->form == FieldForm::Basis ? RouteEnd::Basis : RouteEnd::Method, {}, begin}, part);
    }
    Candidates candidates = sign == std::string::npos ? fields() : Candidates();
    const Candidates words = route_words(std::string(part), part);
    candidates.insert(candidates.end(), words.begin(), words.end());
    return candidates;
}

// Returns the values of an option that are words of a route; `part` is the part of the value that they replace.
Candidates words_of_value(std::string_view option, std::string& part) {
    if (option == "--where") {
        return condition_words(std::string(part), part);
    }
    if (option == "--fields") {
        part = part.substr(part.find_last_of(',') + 1);
        return fields();
    }
    if (option == "--method" || option == "--basis") {
        return completed({option == "--basis" ? RouteEnd::Basis : RouteEnd::Method, {}, part}, part);
    }
    constexpr std::array<std::string_view, 5> routes = {"--option", "--remove-option", "--add-keyword", "--remove-keyword",
                                                        "--route"};
    const bool is_route = std::find(routes.begin(), routes.end(), option) != routes.end();
    return is_route ? route_words(part, part) : Candidates();
}

Candidates values_of(const CLI::Option& option, std::string& part) {
    struct Source {
        std::string_view option;
        Candidates (*words)();
    };
    static constexpr std::array<Source, 9> sources = {{{"--ignore", codes},
                                                       {"--fixable", codes},
                                                       {"--unfixable", codes},
                                                       {"--explain", codes},
                                                       {"--select", codes},
                                                       {"--set", settable_keys},
                                                       {"--unset", link0_names},
                                                       {"--section", kinds_to_set},
                                                       {"--remove-section", kinds}}};
    const auto source =
        std::find_if(sources.begin(), sources.end(), [&](const Source& each) { return each.option == long_name(option); });
    if (source != sources.end()) {
        return source->words();
    }
    Candidates words = words_of_value(long_name(option), part);
    if (!words.empty()) {
        return words;
    }
    const std::string type = option.get_type_name();
    return type.starts_with("FILE") || type.starts_with("FOLDER") ? Candidates{{":files", {}}} : listed_words(type);
}

Candidates options_of(const CLI::App& command) {
    Candidates candidates;
    for (const CLI::Option* option : command.get_options()) {
        if (is_shown(*option)) {
            candidates.push_back({long_name(*option), option->get_description()});
        }
    }
    return candidates;
}

Candidates commands_of(const CLI::App& command) {
    Candidates candidates;
    for (const CLI::App* below : command.get_subcommands({})) {
        candidates.push_back({below->get_name(), below->get_description()});
    }
    return candidates;
}

std::string joined(const Words& words, std::size_t first) {
    std::string text;
    for (std::size_t i = first; i < words.size(); ++i) {
        text += (i > first ? " " : "") + words[i];
    }
    return text;
}

// Returns what may stand at the end of a line; `part` is the part of the last word that they replace.
Candidates candidates_at(const CLI::App& tool, const Words& words, std::string& part) {
    const CLI::App* command = &tool;
    const CLI::Option* waiting = nullptr;
    std::size_t first = 1;  // behind the command
    bool has_argument = false;
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        const CLI::Option* option = waiting != nullptr ? nullptr : option_named(*command, words[i]);
        waiting = option != nullptr && has_value(*option) ? option : nullptr;
        if (const CLI::App* below = command_named(*command, words[i])) {
            command = below;
            first = i + 1;
        } else if (waiting == nullptr && option == nullptr) {
            has_argument = true;
        }
    }
    part = words.back();
    const std::size_t equals = part.find('=');
    if (waiting == nullptr && part.starts_with("--") && equals != std::string::npos) {
        waiting = option_named(*command, part.substr(0, equals));
        part = part.substr(equals + 1);
    }
    if (waiting != nullptr) {
        return values_of(*waiting, part);
    }
    if (part.starts_with('-')) {
        return options_of(*command);
    }
    if (!command->get_subcommands({}).empty()) {
        return commands_of(*command);
    }
    const bool takes_route = command->get_name() == "route" || command->get_name() == "complete" ||
                             (command->get_name() == "show" && command->get_parent()->get_name() == "schema");
    if (command->get_name() == "find" && !has_argument) {
        return condition_words(std::string(part), part);
    }
    return takes_route ? route_words(joined(words, first), part) : Candidates{{":files", {}}};
}

void print_words(const CLI::App& tool, const std::string& line, const std::string& at_cursor) {
    std::string part;
    const Candidates candidates = candidates_at(tool, words_of(line), part);
    const std::string kept = at_cursor.ends_with(part) ? at_cursor.substr(0, at_cursor.size() - part.size()) : std::string();
    const std::string begin = SimpleYAMLParser::to_lower(part);
    for (const Candidate& candidate : candidates) {
        if (candidate.word.starts_with(':')) {
            std::printf("%s\n", candidate.word.c_str());
        } else if (SimpleYAMLParser::to_lower(candidate.word).starts_with(begin)) {
            std::printf("%s%s%s%s\n", kept.c_str(), candidate.word.c_str(), candidate.description.empty() ? "" : "\t",
                        candidate.description.c_str());
        }
    }
}

// --- The manual page

std::string in_manual(const std::string& text) {
    std::string result = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char c : text) {
        result += c == '-' ? "\\-" : c == '\\' ? "\\e" : c == '"' ? "\\(dq" : std::string(1, c);
    }
    return result;
}

std::string manual_entry(const CLI::Option& option) {
    std::string text = ".TP\n.BR ";
    text += option.get_snames().empty() ? std::string() : "\\-" + option.get_snames().front() + " \", \" ";
    text += in_manual(long_name(option));
    if (has_value(option)) {
        const std::string type = option.get_type_name();
        text += " \" \\fI" + in_manual(type.substr(0, type.find(':'))) + "\\fR\"";
    }
    return text + '\n' + in_manual(option.get_description()) + ".\n";
}

// Puts the options of a command in the place of each line that asks for them.
std::string manual_of(const CLI::App& tool, const std::string& pattern) {
    constexpr std::string_view mark = ".\\\" options of";
    std::string text;
    std::istringstream lines(pattern);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(mark)) {
            text += line + '\n';
            continue;
        }
        const CLI::App* command = &tool;
        std::istringstream names(line.substr(mark.size()));
        for (std::string name; command != nullptr && names >> name;) {
            command = command_named(*command, name);
        }
        if (command == nullptr) {
            throw std::runtime_error("no such command: " + line);
        }
        for (const CLI::Option* option : command->get_options()) {
            text += is_shown(*option) ? manual_entry(*option) : std::string();
        }
    }
    return text;
}

int print(const CLI::App& tool, const Words& what) {
    const auto* script = std::find_if(std::begin(scripts), std::end(scripts),
                                      [&](const ShellScript& each) { return each.shell == what.front(); });
    if (script != std::end(scripts) && what.size() == 1) {
        std::fputs(script->text, stdout);
    } else if (what.front() == "words" && what.size() == 3) {
        print_words(tool, what[1], what[2].substr(std::min<std::size_t>(what[2].size(), 1)));
    } else if (what.front() == "manual" && what.size() == 2) {
        std::fputs(manual_of(tool, read_text(what[1])).c_str(), stdout);
    } else {
        throw CLI::ValidationError("SHELL", "bash, zsh or fish is wanted");
    }
    return exit_success;
}

}  // namespace

void add_completion_command(CLI::App& command, int& exit_code) {
    const auto what = std::make_shared<Words>();
    command.add_option("SHELL", *what, "bash, zsh or fish")->required();
    command.callback([what, &command, &exit_code] { exit_code = print(*command.get_parent(), *what); });
}

}  // namespace quor_gjf
