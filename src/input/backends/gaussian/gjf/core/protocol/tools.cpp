// What tools answer is what requests answer; of a text that they change, what differs takes its place.
#include <gjf/core/protocol/tools.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/editing/edit_operations.hpp>
#include <gjf/core/report/json.hpp>
#include <gjf/core/report/request.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

using enum ArgumentKind;

// --- What tools do

struct GivenText {
    std::string name;  // by which the answer calls it
    std::string text;
};

GivenText given_text(const Message& arguments, const ToolServerOptions& options) {
    if (arguments.contains("text")) {
        return {"-", arguments["text"].get<std::string>()};
    }
    if (!options.read) {
        throw std::runtime_error("no file is opened: the server was begun without a root");
    }
    const std::string path = arguments["path"].get<std::string>();
    return {path, options.read(path)};
}

// Answers by the request of the tool's name, whose options are all arguments but the text.
Message answer_about(const Tool& tool, const Message& arguments, const GivenText& given, std::string* changed) {
    Message wanted = arguments;
    wanted.erase("text");
    wanted.erase("path");
    if (std::string_view(tool.answer).starts_with("file:")) {
        wanted["stdin-filename"] = given.name;
    }
    return Message::parse(request_json(tool.name, given.text, message_text(wanted), changed));
}

Message run_request(const Tool& tool, const Message& arguments, const ToolServerOptions& options) {
    return answer_about(tool, arguments, given_text(arguments, options), nullptr);
}

Message run_change(const Tool& tool, const Message& arguments, const ToolServerOptions& options) {
    const GivenText given = given_text(arguments, options);
    std::string changed;
    Message answer = answer_about(tool, arguments, given, &changed);
    answer.erase("text");
    answer["diff"] = options.difference ? options.difference(given.name, given.text, changed) : changed;
    return answer;
}

Message run_explain(const Tool&, const Message& arguments, const ToolServerOptions&) {
    const std::string word = arguments["word"].get<std::string>();
    const std::vector<CheckDescription>& codes = check_descriptions();
    const auto code =
        std::find_if(codes.begin(), codes.end(), [&](const CheckDescription& each) { return each.code == word; });
    if (code == codes.end() && word.starts_with("GJF-")) {
        throw std::runtime_error("there is no check " + word);
    }
    return Message::parse(code != codes.end() ? check_code_json(*code) : word_json(default_route_schema(), word));
}

// --- What tools take

ToolArgument list(const char* name, const char* description) { return {name, Texts, description}; }
ToolArgument flag(const char* name, const char* description) { return {name, Flag, description}; }
ToolArgument condition() { return {"where", Text, "Only jobs that fit this condition, as in 'opt=ts and charge = -1'"}; }

// The arguments of a tool about a text, which is given or lies in a file, and its own.
std::vector<ToolArgument> about_text(std::vector<ToolArgument> own, const char* what = "The text of a job file") {
    own.insert(own.begin(), {{"text", Text, std::string(what) + "; this or path"},
                             {"path", Text, "A job file below the root of the server; this or text"}});
    return own;
}

std::vector<ToolArgument> edit_arguments() {
    std::vector<ToolArgument> own = {{"job", Count, "Only the job of this number, from 1 on"},
                                     condition(),
                                     flag("force", "Edit although comments would be lost"),
                                     flag("strict", "Refuse an edit that brings new findings"),
                                     flag("no-check", "Do not look for findings that are new"),
                                     flag("allow-unknown", "Take route words that the vocabulary does not know")};
    for (const EditOption& option : edit_options()) {
        const std::string form = option.value == nullptr ? "" : std::string(": ") + option.value;
        own.push_back({option.name + 2, option.value == nullptr ? Flag : TextOrTexts, option.description + form});
    }
    return about_text(std::move(own));
}

std::vector<ToolArgument> fix_arguments() {
    return about_text({flag("unsafe-fixes", "Apply fixes that are likely, not sure, too"),
                       list("select", "Only findings of these codes, whole or cut short, as GJF-R"),
                       list("ignore", "No findings of these codes"), list("fixable", "Mend findings of these codes alone"),
                       list("unfixable", "Mend no findings of these codes"), condition()});
}

constexpr const char* check_keys = "file:string errors:integer warnings:integer notes:integer findings:array";

Tool fix_tool() {
    return {
        "fix",
        "Mend job files",
        "Mend what check finds where a fix is safe. Nothing is written: the answer has a unified diff, and the "
        "findings that remain.",
        fix_arguments(),
        "file:string diff:string applied:array dropped:array errors:integer warnings:integer notes:integer findings:array",
        run_change};
}

Tool edit_tool() {
    return {"edit",
            "Edit job files",
            "Change jobs and nothing else in their text; what names atoms is renumbered. Operations are applied in the "
            "order given. Nothing is written: the answer has a unified diff, and the findings that are new.",
            edit_arguments(),
            "file:string diff:string changed:boolean refused:boolean remarks:array unreadable:array errors:integer "
            "warnings:integer notes:integer findings:array",
            run_change};
}

std::vector<Tool> listed_tools() {
    return {
        {"check", "Check job files",
         "Find what would make Gaussian 16 jobs fail, or give another result than meant. Each finding has a code, "
         "a severity (error: Gaussian stops), its place, a hint, and fixes where there are any.",
         about_text({list("select", "Only findings of these codes, whole or cut short, as GJF-R"),
                     list("ignore", "No findings of these codes"), condition()}),
         check_keys, run_request},
        {"explain",
         "Explain a word or a code",
         "Tell what a code of check means, with a wrong and a right job; or what a word means: a keyword, method or basis "
         "set, an option as keyword=option, or a Link 0 key as %mem.",
         {{"word", Text, "The code, as GJF-R001, or the word, as opt or opt=calcfc", true}},
         "",
         run_explain},
        fix_tool(),
        {"route", "Explain a route",
         "Tell what a route section means: model chemistry, keywords and options, the sections that the job then needs, and "
         "what is wrong with it.",
         about_text({}, "A route, with or without its #, or the text of a job file"),
         "text:string route:object sections:array findings:array", run_request},
        {"complete",
         "Complete a route",
         "List what may complete the last word of a route: keywords, methods, basis sets, options, values.",
         {{"text", Text, "The route up to the place to complete, as 'b3lyp/6-31g(d) opt=(cal'", true}},
         "context:string prefix:string completions:array",
         run_request},
        {"outline", "Outline job files",
         "Tell which lines of a job file hold what, which sections the route asks for and are missing, and what is "
         "left over.",
         about_text({}), "file:string jobs:array", run_request},
        {"select", "Select atoms", "Find the atoms of each job that a selection names: numbers from 1 and lines.",
         about_text({{"select", Text, "The selection, as 'C and within 3 of 12', '1-5,9' or 'layer:H'", true}}),
         "file:string jobs:array", run_request},
        edit_tool(),
    };
}

Message schema_of(ArgumentKind kind) {
    Message text = {{"type", "string"}};
    Message texts = {{"type", "array"}, {"items", text}};
    switch (kind) {
        case Text:
            return text;
        case Texts:
            return texts;
        case TextOrTexts:
            return {{"anyOf", Message::array({text, texts})}};
        case Flag:
            return {{"type", "boolean"}};
        case Count:
            break;
    }
    return {{"type", "integer"}, {"minimum", 1}};
}

bool is_texts(const Message& value) {
    return value.is_array() && std::all_of(value.begin(), value.end(), [](const Message& each) { return each.is_string(); });
}

// What a value must be; empty for one that is.
const char* wanted_of(ArgumentKind kind, const Message& value) {
    switch (kind) {
        case Text:
            return value.is_string() ? "" : "a text";
        case Texts:
            return is_texts(value) ? "" : "a list of texts";
        case TextOrTexts:
            return value.is_string() || is_texts(value) ? "" : "a text or a list of texts";
        case Flag:
            return value.is_boolean() ? "" : "true or false";
        case Count:
            break;
    }
    return value.is_number_unsigned() && value > 0U ? "" : "a whole number from 1 on";
}

[[noreturn]] void refuse(const std::string& message) { throw RequestFault(MessageError::InvalidParams, message); }

}  // namespace

const std::vector<Tool>& tools() {
    static const std::vector<Tool> all = listed_tools();
    return all;
}

const Tool& tool_named(const std::string& name) {
    const auto found = std::find_if(tools().begin(), tools().end(), [&](const Tool& each) { return each.name == name; });
    if (found == tools().end()) {
        refuse("Unknown tool: " + name);
    }
    return *found;
}

Message input_schema(const Tool& tool) {
    Message properties = Message::object();
    Message required = Message::array();
    for (const ToolArgument& argument : tool.arguments) {
        properties[argument.name] = schema_of(argument.kind);
        properties[argument.name]["description"] = argument.description;
        if (argument.required) {
            required.push_back(argument.name);
        }
    }
    return {{"type", "object"}, {"properties", properties}, {"required", required}, {"additionalProperties", false}};
}

Message output_schema(const Tool& tool) {
    Message properties = {{"version", {{"type", "integer"}}}};
    Message required = {"version"};
    for (std::string_view rest = tool.answer; !rest.empty();) {
        const std::string_view key = rest.substr(0, rest.find(' '));
        const std::string name(key.substr(0, key.find(':')));
        properties[name] = {{"type", key.substr(name.size() + 1)}};
        required.push_back(name);
        rest.remove_prefix(std::min(key.size() + 1, rest.size()));
    }
    properties["left"] = {
        {"type", "object"},
        {"description", "How many items or lines of what was too long are not in this answer, by JSON Pointers"},
        {"additionalProperties", {{"type", "integer"}}}};
    return {{"type", "object"}, {"properties", properties}, {"required", required}};
}

void require_arguments(const Tool& tool, const Message& arguments) {
    if (!arguments.is_object()) {
        refuse("the arguments are no object");
    }
    for (const auto& [name, value] : arguments.items()) {
        const auto known = std::find_if(tool.arguments.begin(), tool.arguments.end(),
                                        [name = name](const ToolArgument& each) { return each.name == name; });
        if (known == tool.arguments.end()) {
            refuse(std::string(tool.name) + " takes no argument '" + name + "'");
        }
        if (const std::string_view wanted = wanted_of(known->kind, value); !wanted.empty()) {
            refuse("argument '" + name + "' takes " + std::string(wanted));
        }
    }
    bool takes_path = false;
    for (const ToolArgument& argument : tool.arguments) {
        if (argument.required && !arguments.contains(argument.name)) {
            refuse("argument '" + argument.name + "' is missing");
        }
        takes_path = takes_path || argument.name == "path";
    }
    if (takes_path && arguments.contains("text") == arguments.contains("path")) {
        refuse(std::string(tool.name) + " takes either text or path");
    }
}

}  // namespace quor::input::gaussian
