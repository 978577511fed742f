// The image of a vocabulary: all tables of a loaded document in one file, which is read in a tenth of the document's time.
// Private to the library.
//
// It holds the size and a sum of the document's bytes, so that it serves that document alone, and a sum over all that
// follows, so that what was damaged is known. It lies beside its document, or beside the library, under the document's name
// with ".image" behind.
#pragma once

#include <gjf/core/schema/schema_tables.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Writes the image of a vocabulary that was loaded from `document`. Equal documents give equal images.
std::string write_schema_image(const SimpleYAMLParser::Impl& schema, std::string_view document);

/// Fills empty tables from an image; false, with the tables empty, when it is damaged, of another version of the library or
/// of another document; without one it serves for the document that it was made of. Every number in it is looked at before
/// it is used. Throws std::bad_alloc alone.
bool read_schema_image(std::string_view image, std::optional<std::string_view> document, SimpleYAMLParser::Impl& schema);

/// Returns the path of the image for the document at `path`; empty when there is none.
std::string find_schema_image(const std::string& path);

}  // namespace quor::input::gaussian
