// Writes the tables of a loaded vocabulary as a binary image, and bytes as base64 text: the reverse of what
// embedded_schema.hpp reads.
//
// Tables come in the order of their keys, so equal vocabularies give equal images.
#pragma once

#include <gjf/core/schema/schema_tables.hpp>

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace quor::input::gaussian {

inline void append_u32(std::string& bytes, std::size_t value) {
    if (value > UINT32_MAX) {
        throw std::length_error("the vocabulary is too large for an image");
    }
    for (unsigned byte = 0; byte < 4; ++byte) {
        bytes += static_cast<char>((value >> (8 * byte)) & 0xFF);
    }
}

inline void append_string(std::string& bytes, std::string_view text) {
    append_u32(bytes, text.size());
    bytes += text;
}

/// Gives each distinct value a number, counted from 0 in the order of first appearance.
template <class Value>
class Numbering {
   public:
    std::size_t number(const Value& value) {
        const auto [place, is_new] = numbers_.try_emplace(value, values_.size());
        if (is_new) {
            values_.push_back(value);
        }
        return place->second;
    }
    const std::vector<Value>& values() const { return values_; }

   private:
    std::map<Value, std::size_t> numbers_;
    std::vector<Value> values_;
};

/// Writes one image of version 1 or 2.
class SchemaImageWriter {
   public:
    SchemaImageWriter(const SimpleYAMLParser::Impl& schema, unsigned version) : schema_(schema), by_index_(version == 2) {}

    /// Returns the bytes of the image.
    std::string write() {
        const std::string names = write_names();
        const std::string graph = write_graph();
        const std::string lists = write_lists();
        const std::string groups = write_group_table();
        std::string image("QUORG16\0", 8);
        append_u32(image, by_index_ ? 2 : 1);
        if (by_index_) {
            append_u32(image, strings_.values().size());
            for (const std::string& text : strings_.values()) {
                append_string(image, text);
            }
        }
        return image + names + graph + groups + lists;
    }

   private:
    using GroupKey = std::tuple<std::vector<std::string>, std::string, std::string>;

    void append_text(std::string& bytes, const std::string& text) {
        by_index_ ? append_u32(bytes, strings_.number(text)) : append_string(bytes, text);
    }

    void append_texts(std::string& bytes, const std::vector<std::string>& texts) {
        append_u32(bytes, texts.size());
        for (const std::string& text : texts) {
            append_text(bytes, text);
        }
    }

    void append_group(std::string& bytes, const GroupKey& group) {
        append_texts(bytes, std::get<0>(group));
        append_text(bytes, std::get<1>(group));
        append_text(bytes, std::get<2>(group));
    }

    void append_groups(std::string& bytes, const GroupList& groups) {
        append_u32(bytes, groups.size());
        for (const CandidateGroup& group : groups) {
            const GroupKey key{group.forms, group.next, group.canonical};
            by_index_ ? append_u32(bytes, groups_.number(key)) : append_group(bytes, key);
        }
    }

    /// Writes a table in the order of its keys; `append` writes a value.
    template <class Value, class Append>
    void append_table(std::string& bytes, const TextMap<Value>& table, const Append& append) {
        std::map<std::string_view, const Value*> sorted;
        for (const auto& [key, value] : table) {
            sorted.emplace(key, &value);
        }
        append_u32(bytes, sorted.size());
        for (const auto& [key, value] : sorted) {
            append_text(bytes, std::string(key));
            append(*value);
        }
    }

    std::string write_names() {
        std::string bytes;
        bytes += schema_.loaded ? '\1' : '\0';
        bytes += schema_.case_sensitive ? '\1' : '\0';
        append_text(bytes, schema_.entry_state);
        append_text(bytes, schema_.procedure_state);
        append_text(bytes, schema_.basis_state);
        return bytes;
    }

    std::string write_graph() {
        std::string bytes;
        append_table(bytes, schema_.state_includes,
                     [&](const std::vector<std::string>& includes) { append_texts(bytes, includes); });
        append_table(bytes, schema_.state_edges, [&](const std::vector<GraphEdge>& edges) {
            append_u32(bytes, edges.size());
            for (const GraphEdge& edge : edges) {
                append_text(bytes, edge.token);
                append_text(bytes, edge.next);
                bytes += edge.null_edge ? '\1' : '\0';
            }
        });
        return bytes;
    }

    std::string write_lists() {
        std::string bytes;
        for (const GroupList* groups : {&schema_.keyword_groups, &schema_.method_groups, &schema_.basis_groups}) {
            append_groups(bytes, *groups);
        }
        append_table(bytes, schema_.option_groups, [&](const GroupList& groups) { append_groups(bytes, groups); });
        append_table(bytes, schema_.categories, [&](const std::string& category) { append_text(bytes, category); });
        return bytes;
    }

    /// Writes the entries that `write_lists` has numbered; nothing in version 1.
    std::string write_group_table() {
        std::string bytes;
        if (by_index_) {
            append_u32(bytes, groups_.values().size());
            for (const GroupKey& group : groups_.values()) {
                append_group(bytes, group);
            }
        }
        return bytes;
    }

    const SimpleYAMLParser::Impl& schema_;
    bool by_index_;
    Numbering<std::string> strings_;
    Numbering<GroupKey> groups_;
};

/// Encodes bytes as base64 text with padding; a line break stands after every 76 characters and at the end.
inline std::string encode_base64(std::string_view bytes) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t bytes_per_line = 57;
    std::string text;
    for (std::size_t group = 0; group < bytes.size(); group += 3) {
        const std::size_t count = bytes.size() - group < 3 ? bytes.size() - group : 3;
        std::uint32_t bits = 0;
        for (std::size_t byte = 0; byte < count; ++byte) {
            bits |= std::uint32_t{static_cast<unsigned char>(bytes[group + byte])} << (16 - 8 * byte);
        }
        for (std::size_t place = 0; place < 4; ++place) {
            text += place <= count ? alphabet[(bits >> (18 - 6 * place)) & 0x3F] : '=';
        }
        if ((group + 3) % bytes_per_line == 0 || group + 3 >= bytes.size()) {
            text += '\n';
        }
    }
    return text;
}

}  // namespace quor::input::gaussian
