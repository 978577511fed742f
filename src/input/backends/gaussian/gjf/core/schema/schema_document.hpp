// From a vocabulary file to its tree, and on to its tables. Private to the library.
#pragma once

#include <gjf/core/schema/document_tree.hpp>
#include <gjf/core/schema/schema_tables.hpp>
#include <gjf/core/schema/schema_validation.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Reads the file's first document; false when the file is no regular file, cannot be read, is too long or holds no
/// document. Throws what the YAML library throws for a syntax error.
bool read_document_tree(const std::string& path, DocumentTree& tree);

/// Reads the file's first document as `read_document_tree` does; returns what is wrong when that fails.
std::optional<SchemaProblem> read_document_or_problem(const std::string& path, DocumentTree& tree);

/// Converts "true", "yes", "on", "false" and the like as YAML does; throws for any other text.
bool convert_boolean(std::string_view text);

/// Reads a vocabulary document, given as text, into empty tables; false, with the tables in any state, when that fails.
/// Throws std::bad_alloc alone.
bool load_schema_text(std::string document, SimpleYAMLParser::Impl& schema);

/// Reads the vocabulary document at `path`, or its image where one serves, into empty tables; false, with the tables in any
/// state, when that fails. Throws std::bad_alloc alone.
bool load_schema_document(const std::string& path, SimpleYAMLParser::Impl& schema);

}  // namespace quor::input::gaussian
