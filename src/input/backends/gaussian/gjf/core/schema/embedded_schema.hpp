// Reads the binary image of a loaded vocabulary, carried as base64 text. Private to the library.
//
// An image is the magic "QUORG16" with one zero byte, a u32 version and that version's body. Version 1 writes texts in
// place; version 2 refers to a table of texts and one of entries. Integers are little-endian; a text is a u32 length and its
// bytes, a vector a u32 count and its items.
//
// Body: (2: vector of texts,) u8 loaded, u8 case_sensitive; entry, procedure and basis state; vector of {state, vector of
// included states}; vector of {state, vector of edges {token, next, u8 null_edge}}; (2: vector of entries;) the keyword,
// method and basis lists; vector of {keyword, list of options}; vector of {keyword, category}. An entry is {vector of forms,
// next, canonical}. In version 2 each text but those of the table is a u32 index into it, and a list is a vector of u32
// indices of entries.
#pragma once

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/schema/schema_tables.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A cursor over the bytes of an image. Once a read has failed, `ok` is false and every later one fails too.
struct EmbeddedSchemaReader {
    std::string_view bytes;
    std::size_t position = 0;
    bool ok = true;
    /// Bytes that texts named by their number may still take: an image can name one long text many times. A sound image
    /// takes some ten times its size.
    std::size_t text_budget = (std::size_t{1} << 20) + 100 * bytes.size();

    /// Reads one byte: true for any but zero; false at the end of the data.
    bool read_flag();
    /// Reads four bytes; 0 when fewer remain.
    std::uint32_t read_u32();
    /// Reads a length and as many bytes; empty when they are not there.
    std::string read_string();
    /// Takes `size` bytes off the text budget; fails the reader when it is used up.
    bool spend(std::size_t size);

    bool at_end() const { return position == bytes.size(); }
};

/// Returns the value of a base64 character, or -1 for any other; "=" is no such character.
int decode_base64_value(char c) noexcept;

/// Decodes base64 text, white space anywhere in it left out; empty when the text is empty, of a length that is no multiple
/// of four, or has a character outside the alphabet. "=" in the third or fourth place of a group ends the output.
std::string decode_base64_string(std::string_view text);

// Readers of the items an image is made of. Each fills its last argument and tells whether the reader is still ok; an index
// beyond its table fails at once.

using StringTable = std::vector<std::string>;
using GroupTable = std::vector<CandidateGroup>;

bool read_string_vector(EmbeddedSchemaReader& reader, std::vector<std::string>& strings);
bool read_string_table(EmbeddedSchemaReader& reader, StringTable& table);
bool read_string_id(EmbeddedSchemaReader& reader, const StringTable& table, std::string& text);
bool read_string_id_vector(EmbeddedSchemaReader& reader, const StringTable& table, std::vector<std::string>& strings);
bool read_graph_edge(EmbeddedSchemaReader& reader, GraphEdge& edge);
bool read_graph_edge_from_table(EmbeddedSchemaReader& reader, const StringTable& table, GraphEdge& edge);
bool read_graph_edge_vector(EmbeddedSchemaReader& reader, std::vector<GraphEdge>& edges);
bool read_candidate_group(EmbeddedSchemaReader& reader, CandidateGroup& group);
bool read_candidate_group_from_table(EmbeddedSchemaReader& reader, const StringTable& table, CandidateGroup& group);
bool read_candidate_group_vector(EmbeddedSchemaReader& reader, std::vector<CandidateGroup>& groups);
bool read_group_id_vector(EmbeddedSchemaReader& reader, const GroupTable& table, std::vector<CandidateGroup>& groups);

/// Fills the tables from the body of an image whose version has been read; false when the body is damaged or has bytes left
/// over, which leaves the tables partly filled.
bool load_embedded_schema_v1(SimpleYAMLParser::Impl& schema, EmbeddedSchemaReader& reader);
bool load_embedded_schema_v2(SimpleYAMLParser::Impl& schema, EmbeddedSchemaReader& reader);

/// Fills the tables from an image; false for anything that is not a whole and sound one, which leaves the tables to be
/// thrown away.
///
/// An image carries no procedure_groups, state_groups, canonical_forms, option_states and functional parts: these stay
/// empty.
bool load_embedded_schema_from_base64(SimpleYAMLParser::Impl& schema, std::string_view text);

}  // namespace quor::input::gaussian
