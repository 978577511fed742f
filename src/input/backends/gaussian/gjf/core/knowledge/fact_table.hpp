// One table of facts: tab-separated rows below a header line, read once. Private to the room.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Cuts off and returns what stands before the next separator, or all that is left.
std::string_view take(std::string_view& rest, char separator);
/// Returns where a file of the folder of facts is looked for.
std::string path_of_facts(std::string_view file_name);
/// Returns the text of a file; empty for one that cannot be read.
std::string read_facts(const std::string& path);

class FactTable {
   public:
    /// Reads `columns` of a table, in that order; the others are passed over. Has no row when `problem` is not empty.
    FactTable(std::string_view name, std::initializer_list<std::string_view> columns);
    FactTable(const FactTable&) = delete;
    FactTable& operator=(const FactTable&) = delete;

    /// Tells what keeps the table from being read, and where it was looked for; empty when it was read.
    const std::string& problem() const noexcept { return problem_; }
    std::size_t size() const noexcept { return columns_ == 0 ? 0 : cells_.size() / columns_; }
    /// Returns the first of the cells of a row, which stand in the order of the columns asked for.
    const std::string_view* row(std::size_t index) const noexcept { return cells_.data() + index * columns_; }

   private:
    void read(std::string_view name, std::initializer_list<std::string_view> columns);

    std::string text_;  // what the cells are views of
    std::string problem_;
    std::size_t columns_ = 0;
    std::vector<std::string_view> cells_;
};

/// Returns what keeps the first of some tables that cannot be read from being read; empty when all were.
std::string first_problem(std::initializer_list<const FactTable*> tables);

/// A table with its rows in a form of their own, which `make` gives each.
template <class Row>
struct Facts {
    FactTable table;
    std::vector<Row> rows;

    template <class Make>
    Facts(std::string_view name, std::initializer_list<std::string_view> columns, const Make& make) : table(name, columns) {
        rows.reserve(table.size());
        for (std::size_t i = 0; i < table.size(); ++i) {
            rows.push_back(make(table.row(i)));
        }
    }
};

}  // namespace quor::input::gaussian
