// Reads a table of facts from the folder that lies beside the vocabulary.
#include <gjf/core/knowledge/fact_table.hpp>

#include <core/resource/resource.hpp>
#include <gjf/core/route_schema_paths.hpp>
#include <gjf/core/schema/carried_resources.hpp>

#include <algorithm>
#include <fstream>

namespace quor::input::gaussian {
namespace {

void split_cells(std::string_view line, std::vector<std::string_view>& cells) {
    cells.clear();
    for (bool more = true; more;) {
        more = line.find('\t') != std::string_view::npos;
        cells.push_back(take(line, '\t'));
    }
}

// Where all tables lie; looked for once.
const std::string& knowledge_folder() {
    static const std::string folder = resolve_knowledge_folder();
    return folder;
}

}  // namespace

std::string_view take(std::string_view& rest, char separator) {
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    return part;
}

std::string path_of_facts(std::string_view file_name) { return knowledge_folder() + "/" + std::string(file_name); }

std::string read_facts(const std::string& path) {
    if (!quor::core::resource::is_regular_file_path(path)) {
        return std::string(carried_resource(std::string_view(path).substr(path.rfind('/') + 1)));
    }
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    file.seekg(0);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

FactTable::FactTable(std::string_view name, std::initializer_list<std::string_view> columns) {
    read(name, columns);
    if (!problem_.empty()) {
        cells_.clear();
    }
}

void FactTable::read(std::string_view name, std::initializer_list<std::string_view> columns) {
    const std::string path = path_of_facts(std::string(name) + ".tsv");
    text_ = read_facts(path);
    std::string_view rest = text_;
    std::vector<std::string_view> header;
    split_cells(take(rest, '\n'), header);
    std::vector<std::size_t> places;
    for (const std::string_view column : columns) {
        const auto found = std::find(header.begin(), header.end(), column);
        if (found == header.end()) {
            problem_ = text_.empty() ? path + " cannot be read" : path + " has no column '" + std::string(column) + "'";
            return;
        }
        places.push_back(static_cast<std::size_t>(found - header.begin()));
    }
    columns_ = places.size();
    std::vector<std::string_view> cells;
    for (std::size_t line = 2; !rest.empty(); ++line) {
        split_cells(take(rest, '\n'), cells);
        if (cells.size() != header.size()) {
            problem_ = path + ", line " + std::to_string(line) + ": " + std::to_string(cells.size()) + " cells below " +
                       std::to_string(header.size()) + " headings";
            return;
        }
        for (const std::size_t place : places) {
            cells_.push_back(cells[place]);
        }
    }
}

std::string first_problem(std::initializer_list<const FactTable*> tables) {
    for (const FactTable* table : tables) {
        if (!table->problem().empty()) {
            return table->problem();
        }
    }
    return {};
}

}  // namespace quor::input::gaussian
