// Reads the image item by item. No count is trusted: a vector grows as its items are read, and each item takes bytes of the
// image.
#include <gjf/core/schema/embedded_schema.hpp>

#include <gjf/core/text/text.hpp>

#include <utility>

namespace quor::input::gaussian {

namespace {

using Impl = SimpleYAMLParser::Impl;

constexpr std::string_view magic("QUORG16\0", 8);

/// Reads a count and as many items with `read`, a function of the item; ends at the first that fails.
template <class Item, class Read>
bool read_items(EmbeddedSchemaReader& reader, std::vector<Item>& items, const Read& read) {
    const std::uint32_t count = reader.read_u32();
    for (std::uint32_t index = 0; reader.ok && index < count; ++index) {
        items.emplace_back();
        if (!read(items.back())) {
            reader.ok = false;
        }
    }
    return reader.ok;
}

/// Reads a count and as many pairs of a key and a value; of equal keys the last stays.
template <class Value, class ReadKey, class ReadValue>
bool read_table(EmbeddedSchemaReader& reader, TextMap<Value>& table, const ReadKey& read_key, const ReadValue& read_value) {
    const std::uint32_t count = reader.read_u32();
    for (std::uint32_t index = 0; reader.ok && index < count; ++index) {
        std::string key;
        Value value;
        if (!read_key(key) || !read_value(value)) {
            reader.ok = false;
            break;
        }
        table.insert_or_assign(std::move(key), std::move(value));
    }
    return reader.ok;
}

std::size_t text_size(const CandidateGroup& group) {
    std::size_t size = sizeof group + group.next.size() + group.canonical.size();
    for (const std::string& form : group.forms) {
        size += sizeof form + form.size();
    }
    return size;
}

/// Reads an index into a table of `size` rows; fails the reader when it lies beyond.
bool read_index(EmbeddedSchemaReader& reader, std::size_t size, std::uint32_t& index) {
    index = reader.read_u32();
    reader.ok = reader.ok && index < size;
    return reader.ok;
}

/// Tells how one version of the image writes each kind of item.
struct ItemReaders {
    EmbeddedSchemaReader& reader;
    const StringTable* strings;  ///< null for version 1
    const GroupTable* groups;

    bool text(std::string& value) const {
        if (strings != nullptr) {
            return read_string_id(reader, *strings, value);
        }
        value = reader.read_string();
        return reader.ok;
    }
    bool texts(std::vector<std::string>& values) const {
        return strings != nullptr ? read_string_id_vector(reader, *strings, values) : read_string_vector(reader, values);
    }
    bool edges(std::vector<GraphEdge>& values) const {
        if (strings == nullptr) {
            return read_graph_edge_vector(reader, values);
        }
        return read_items(reader, values,
                          [this](GraphEdge& edge) { return read_graph_edge_from_table(reader, *strings, edge); });
    }
    bool group_list(GroupList& list) const {
        std::vector<CandidateGroup> values;
        const bool ok =
            groups != nullptr ? read_group_id_vector(reader, *groups, values) : read_candidate_group_vector(reader, values);
        list = GroupList(std::move(values));
        return ok;
    }
};

bool read_names(const ItemReaders& items, Impl& schema) {
    schema.loaded = items.reader.read_flag();
    schema.case_sensitive = items.reader.read_flag();
    return items.text(schema.entry_state) && items.text(schema.procedure_state) && items.text(schema.basis_state);
}

bool read_graph(const ItemReaders& items, Impl& schema) {
    const auto text = [&items](std::string& value) { return items.text(value); };
    return read_table(items.reader, schema.state_includes, text,
                      [&items](std::vector<std::string>& value) { return items.texts(value); }) &&
           read_table(items.reader, schema.state_edges, text,
                      [&items](std::vector<GraphEdge>& value) { return items.edges(value); });
}

/// Reads the lists by role and the rest; answers whether the image ends there.
bool read_lists(const ItemReaders& items, Impl& schema) {
    const auto text = [&items](std::string& value) { return items.text(value); };
    const bool complete = items.group_list(schema.keyword_groups) && items.group_list(schema.method_groups) &&
                          items.group_list(schema.basis_groups) &&
                          read_table(items.reader, schema.option_groups, text,
                                     [&items](GroupList& value) { return items.group_list(value); }) &&
                          read_table(items.reader, schema.categories, text, text);
    schema.build_graph();
    return complete && items.reader.at_end();
}

}  // namespace

bool EmbeddedSchemaReader::read_flag() {
    ok = ok && position < bytes.size();
    return ok && bytes[position++] != '\0';
}

std::uint32_t EmbeddedSchemaReader::read_u32() {
    if (!ok || bytes.size() - position < 4) {
        ok = false;
        return 0;
    }
    std::uint32_t value = 0;
    for (unsigned byte = 0; byte < 4; ++byte) {
        value |= std::uint32_t{static_cast<unsigned char>(bytes[position++])} << (8 * byte);
    }
    return value;
}

std::string EmbeddedSchemaReader::read_string() {
    const std::uint32_t length = read_u32();
    if (!ok || bytes.size() - position < length) {
        ok = false;
        return {};
    }
    const std::string_view text = bytes.substr(position, length);
    position += length;
    return std::string(text);
}

bool EmbeddedSchemaReader::spend(std::size_t size) {
    ok = ok && size <= text_budget;
    text_budget -= ok ? size : 0;
    return ok;
}

int decode_base64_value(char c) noexcept {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t value = alphabet.find(c);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

std::string decode_base64_string(std::string_view text) {
    std::string digits;
    digits.reserve(text.size());
    for (const char c : text) {
        if (!is_white_space(c)) {
            digits += c;
        }
    }
    if (digits.size() % 4 != 0) {
        return {};
    }
    std::string bytes;
    bytes.reserve(digits.size() / 4 * 3);
    for (std::size_t group = 0; group < digits.size(); group += 4) {
        std::uint32_t bits = 0;
        std::size_t place = 0;
        for (; place < 4 && (place < 2 || digits[group + place] != '='); ++place) {
            const int value = decode_base64_value(digits[group + place]);
            if (value < 0) {
                return {};
            }
            bits |= static_cast<std::uint32_t>(value) << (18 - 6 * place);
        }
        for (std::size_t byte = 0; byte + 1 < place; ++byte) {
            bytes += static_cast<char>((bits >> (16 - 8 * byte)) & 0xFF);
        }
        if (place < 4) {
            break;
        }
    }
    return bytes;
}

bool read_string_vector(EmbeddedSchemaReader& reader, std::vector<std::string>& strings) {
    return read_items(reader, strings, [&reader](std::string& text) {
        text = reader.read_string();
        return reader.ok;
    });
}

bool read_string_table(EmbeddedSchemaReader& reader, StringTable& table) { return read_string_vector(reader, table); }

bool read_string_id(EmbeddedSchemaReader& reader, const StringTable& table, std::string& text) {
    std::uint32_t index = 0;
    if (!read_index(reader, table.size(), index) || !reader.spend(sizeof text + table[index].size())) {
        return false;
    }
    text = table[index];
    return true;
}

bool read_string_id_vector(EmbeddedSchemaReader& reader, const StringTable& table, std::vector<std::string>& strings) {
    return read_items(reader, strings, [&](std::string& text) { return read_string_id(reader, table, text); });
}

bool read_graph_edge(EmbeddedSchemaReader& reader, GraphEdge& edge) {
    edge.token = reader.read_string();
    edge.next = reader.read_string();
    edge.null_edge = reader.read_flag();
    return reader.ok;
}

bool read_graph_edge_from_table(EmbeddedSchemaReader& reader, const StringTable& table, GraphEdge& edge) {
    if (!read_string_id(reader, table, edge.token) || !read_string_id(reader, table, edge.next)) {
        return false;
    }
    edge.null_edge = reader.read_flag();
    return reader.ok;
}

bool read_graph_edge_vector(EmbeddedSchemaReader& reader, std::vector<GraphEdge>& edges) {
    return read_items(reader, edges, [&reader](GraphEdge& edge) { return read_graph_edge(reader, edge); });
}

bool read_candidate_group(EmbeddedSchemaReader& reader, CandidateGroup& group) {
    if (!read_string_vector(reader, group.forms)) {
        return false;
    }
    group.next = reader.read_string();
    group.canonical = reader.read_string();
    return reader.ok;
}

bool read_candidate_group_from_table(EmbeddedSchemaReader& reader, const StringTable& table, CandidateGroup& group) {
    return read_string_id_vector(reader, table, group.forms) && read_string_id(reader, table, group.next) &&
           read_string_id(reader, table, group.canonical);
}

bool read_candidate_group_vector(EmbeddedSchemaReader& reader, std::vector<CandidateGroup>& groups) {
    return read_items(reader, groups, [&reader](CandidateGroup& group) { return read_candidate_group(reader, group); });
}

bool read_group_id_vector(EmbeddedSchemaReader& reader, const GroupTable& table, std::vector<CandidateGroup>& groups) {
    return read_items(reader, groups, [&](CandidateGroup& group) {
        std::uint32_t index = 0;
        if (!read_index(reader, table.size(), index) || !reader.spend(text_size(table[index]))) {
            return false;
        }
        group = table[index];
        return true;
    });
}

bool load_embedded_schema_v1(SimpleYAMLParser::Impl& schema, EmbeddedSchemaReader& reader) {
    schema.reset_schema();
    const ItemReaders items{reader, nullptr, nullptr};
    return read_names(items, schema) && read_graph(items, schema) && read_lists(items, schema);
}

bool load_embedded_schema_v2(SimpleYAMLParser::Impl& schema, EmbeddedSchemaReader& reader) {
    schema.reset_schema();
    StringTable strings;
    GroupTable groups;
    const ItemReaders items{reader, &strings, &groups};
    const auto read_group = [&](CandidateGroup& group) { return read_candidate_group_from_table(reader, strings, group); };
    return read_string_table(reader, strings) && read_names(items, schema) && read_graph(items, schema) &&
           read_items(reader, groups, read_group) && read_lists(items, schema);
}

bool load_embedded_schema_from_base64(SimpleYAMLParser::Impl& schema, std::string_view text) {
    const std::string image = decode_base64_string(text);
    if (image.substr(0, magic.size()) != magic) {
        return false;
    }
    EmbeddedSchemaReader reader{image, magic.size()};
    const std::uint32_t version = reader.read_u32();
    if (!reader.ok || (version != 1 && version != 2)) {
        return false;
    }
    return version == 1 ? load_embedded_schema_v1(schema, reader) : load_embedded_schema_v2(schema, reader);
}

}  // namespace quor::input::gaussian
