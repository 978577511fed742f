// Writes tables of jobs.
#include "field_table.hpp"

#include "near_options.hpp"
#include "terminal.hpp"

#include <stdexcept>
#include <string_view>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

// Quotes as RFC 4180 says; blanks at an end are quoted too, since some readers take them off.
std::string csv_cell(const std::string& text) {
    if (text.find_first_of("\",;\t\r\n") == std::string::npos && !text.starts_with(' ') && !text.ends_with(' ')) {
        return text;
    }
    std::string cell = "\"";
    for (const char c : text) {
        cell += c == '"' ? "\"\"" : std::string(1, c);
    }
    return cell + '"';
}

std::string markdown_cell(const std::string& text) {
    std::string cell;
    for (const char c : text) {
        constexpr std::string_view special = "\\|*_`<[";
        if (c == '\n') {
            cell += "<br>";
            continue;
        }
        cell += special.find(c) == std::string_view::npos ? "" : "\\";
        cell += c;
    }
    return cell;
}

std::string text_cell(std::string text) {
    for (char& c : text) {
        c = c == '\t' || c == '\n' ? ' ' : c;
    }
    return printable(text);
}

std::string cell_of(const std::string& text, TableForm form) {
    return form == TableForm::Csv ? csv_cell(text) : form == TableForm::Markdown ? markdown_cell(text) : text_cell(text);
}

std::string row_of(const std::vector<std::string>& texts, TableForm form) {
    std::string row = form == TableForm::Markdown ? "| " : "";
    const char* between = form == TableForm::Markdown ? " | " : form == TableForm::Csv ? "," : "\t";
    for (std::size_t i = 0; i < texts.size(); ++i) {
        row += (i == 0 ? "" : between) + cell_of(texts[i], form);
    }
    return row + (form == TableForm::Markdown ? " |\n" : "\n");
}

std::string joined_texts(const FieldValue& value) {
    std::string text;
    for (const std::string& each : value.texts) {
        text += (text.empty() ? "" : "; ") + each;
    }
    return text;
}

}  // namespace

Fields fields_named(const std::vector<std::string>& names) {
    static const std::vector<std::string> usual = {"file",  "job",    "title",        "method",
                                                   "basis", "charge", "multiplicity", "atoms"};
    Fields fields;
    for (const std::string& name : names.empty() ? usual : names) {
        const JobField* field = find_job_field(name);
        if (field == nullptr) {
            std::vector<std::string> known;
            for (const JobField& each : job_fields()) {
                known.emplace_back(each.name);
            }
            const std::vector<std::string> near = near_options(name, known);
            throw std::runtime_error(
                "'" + name + "' is no field; " +
                (near.empty() ? "quor-gjf find --fields lists them" : "did you mean " + alternatives(near) + "?"));
        }
        fields.push_back(*field);
    }
    return fields;
}

std::string table_head(const Fields& fields, TableForm form) {
    std::vector<std::string> names;
    std::string rule = "|";
    for (const JobField& field : fields) {
        names.emplace_back(field.name);
        rule += field.is_number() ? " ---: |" : " --- |";
    }
    return form == TableForm::Text ? "" : row_of(names, form) + (form == TableForm::Markdown ? rule + '\n' : "");
}

std::string table_rows(const JobFile& file, const std::vector<std::size_t>& jobs, const Fields& fields, TableForm form) {
    std::string rows;
    for (const std::size_t job : jobs) {
        std::vector<std::string> texts;
        for (const JobField& field : fields) {
            texts.push_back(joined_texts(field_value(file, job, field)));
        }
        rows += row_of(texts, form);
    }
    return rows;
}

}  // namespace quor_gjf
