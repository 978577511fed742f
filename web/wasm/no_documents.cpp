// The vocabulary's document is not read in WebAssembly, where its image is carried: so the YAML library stays out. Stands in
// the place of schema_document.cpp.
#include <gjf/core/schema/schema_document.hpp>

#include <stdexcept>

namespace quor::input::gaussian {

bool read_document_tree(const std::string&, DocumentTree&) { return false; }

std::optional<SchemaProblem> read_document_or_problem(const std::string&, DocumentTree&) {
    return SchemaProblem{0, "documents are not read here"};
}

bool convert_boolean(std::string_view) { throw std::logic_error("documents are not read here"); }

bool load_schema_text(std::string, SimpleYAMLParser::Impl&) { return false; }

bool load_schema_document(const std::string&, SimpleYAMLParser::Impl&) { return false; }

}  // namespace quor::input::gaussian
