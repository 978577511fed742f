// Tables of jobs: chosen fields, a row a job, as CSV, Markdown, or text with tabs.
#pragma once

#include <gjf/gjf.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor_gjf {

using Fields = std::vector<quor::input::gaussian::JobField>;

enum class TableForm { Text, Csv, Markdown };

/// Returns the fields of the names, or those that a table has when none is named; throws `std::runtime_error` for a name
/// that is none.
Fields fields_named(const std::vector<std::string>& names);

/// Returns the lines above the rows; none for text.
std::string table_head(const Fields& fields, TableForm form);

/// Returns the rows of jobs, counted from 0. What is not known, or not there, leaves its cell empty.
std::string table_rows(const quor::input::gaussian::JobFile& file, const std::vector<std::size_t>& jobs,
                       const Fields& fields, TableForm form);

}  // namespace quor_gjf
