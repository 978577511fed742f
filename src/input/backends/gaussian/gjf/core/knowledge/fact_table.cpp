// Reads a table of facts from the folder that lies beside the vocabulary.
#include <gjf/core/knowledge/fact_table.hpp>

#include <gjf/core/route_schema_paths.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace quor::input::gaussian {
namespace {

std::vector<std::string_view> cells_of(std::string_view line) {
    std::vector<std::string_view> cells;
    for (bool more = true; more;) {
        more = line.find('\t') != std::string_view::npos;
        cells.push_back(take(line, '\t'));
    }
    return cells;
}

}  // namespace

std::string_view take(std::string_view& rest, char separator) {
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    return part;
}

FactTable::FactTable(std::string_view name, std::initializer_list<std::string_view> columns) {
    read(name, columns);
    if (!problem_.empty()) {
        cells_.clear();
    }
}

void FactTable::read(std::string_view name, std::initializer_list<std::string_view> columns) {
    const std::string path = resolve_knowledge_folder() + "/" + std::string(name) + ".tsv";
    std::ifstream file(path, std::ios::binary);
    text_.assign(std::istreambuf_iterator<char>(file), {});
    std::string_view rest = text_;
    const std::vector<std::string_view> header = cells_of(take(rest, '\n'));
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
    for (std::size_t line = 2; !rest.empty(); ++line) {
        const std::vector<std::string_view> cells = cells_of(take(rest, '\n'));
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

}  // namespace quor::input::gaussian
