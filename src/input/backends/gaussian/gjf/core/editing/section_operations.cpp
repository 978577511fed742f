// The operations on extra input sections.
#include <gjf/core/editing/operation_rows.hpp>

#include <gjf/core/reader/section_name.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quor::input::gaussian {
namespace {

ExtraInputSectionKind kind_named(const std::string& name) {
    const std::optional<ExtraInputSectionKind> kind = find_extra_input_kind(name);
    if (!kind) {
        throw std::runtime_error("'" + name + "' is no kind of section; quor-gjf edit --list-kinds names all");
    }
    return *kind;
}

// Sections are kept with line feeds alone, and without the blank line that ends them.
std::string section_text(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    text.erase(
        std::find_if_not(text.rbegin(), text.rend(), [](char c) { return c == '\n' || c == ' ' || c == '\t'; }).base(),
        text.end());
    text.erase(0, std::min(text.find_first_not_of('\n'), text.size()));
    if (text.empty()) {
        throw std::runtime_error("the section is empty; --remove-section takes one out");
    }
    return text;
}

// In a text on the command line, "\\n" is a line end and "\\\\" a backslash.
std::string with_line_ends(const std::string& value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char next = value[i] == '\\' && i + 1 < value.size() ? value[i + 1] : '\0';
        const bool is_escape = next == 'n' || next == '\\';
        text += !is_escape ? value[i] : next == 'n' ? '\n' : next;
        i += is_escape ? 1 : 0;
    }
    return text;
}

// "@FILE" stands for what is in the file; "@@" begins a text with a "@".
std::string text_meant(const std::string& value, const TextSource& files) {
    if (!value.starts_with('@')) {
        return with_line_ends(value);
    }
    const std::string rest = value.substr(1);
    if (rest.starts_with('@')) {
        return with_line_ends(rest);
    }
    if (!files) {
        throw std::runtime_error("'" + value + "' would be read from a file, and none is opened here");
    }
    return files(rest);
}

Edit read_section(const std::string& value, const TextSource& files) {
    const std::size_t equals = value.find('=');
    if (equals == std::string::npos) {
        throw std::runtime_error("KIND=TEXT or KIND=@FILE is wanted, not '" + value + "'");
    }
    const ExtraInputSectionKind kind = kind_named(value.substr(0, equals));
    if (kind == ExtraInputSectionKind::Unknown) {
        throw std::runtime_error("a section of no known kind cannot be set");
    }
    return [kind, text = section_text(text_meant(value.substr(equals + 1), files))](GJFEditor& job, EditContext&) {
        job.upsert_extra_input_section(kind, text, false);
        return true;
    };
}

Edit read_remove_section(const std::string& value) {
    return [kind = kind_named(value)](GJFEditor& job, EditContext&) {
        const std::size_t sections = job.get_data().extra_inputs.size();
        job.remove_extra_inputs_by_kind({kind});
        return job.get_data().extra_inputs.size() < sections;
    };
}

}  // namespace

std::vector<EditOption> section_edit_options() {
    return {
        {"--section", "KIND=TEXT",
         "Set an extra input section, \\n between its lines; KIND=@FILE takes its text from a file", EditTarget::Head,
         nullptr, nullptr, read_section},
        {"--remove-section", "KIND", "Take out the extra input sections of a kind", EditTarget::Head, read_remove_section},
    };
}

}  // namespace quor::input::gaussian
