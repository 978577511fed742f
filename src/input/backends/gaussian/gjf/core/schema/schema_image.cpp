// Reader and writer of images share one walk over the tables, so that they cannot differ.
//
// A number is written by seven bits a byte, the lowest first, each byte but the last with its highest bit set; a text is its
// length and its bytes; a list or a table its count and its items. A list of entries names them by their place among all
// states' entries, and gives the order of their spellings.
#include <gjf/core/schema/schema_image.hpp>

#include <core/resource/resource.hpp>

#include <algorithm>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

namespace {

constexpr std::string_view first_line = "vocabulary of quor-gjf " QUOR_GJF_PROJECT_VERSION ", layout 1\n";
constexpr std::string_view image_ending = ".image";

/// Hands each member of an entry to `image`, which reads or writes it.
template <class Image, class Group>
void walk_entry(Image& image, Group& group) {
    image.list(group.forms, [&image](auto& form) { image.text(form); });
    for (auto* word : {&group.next, &group.canonical, &group.state, &group.result}) {
        image.text(*word);
    }
    image.integer(group.value);
    image.flag(group.has_action);
    image.flag(group.consume);
}

/// Hands every table to `image`.
template <class Image, class Schema>
void walk_tables(Image& image, Schema& schema) {
    const auto text = [&image](auto& value) { image.text(value); };
    const auto texts = [&](auto& values) { image.list(values, text); };
    image.flag(schema.case_sensitive);
    for (auto* name : {&schema.entry_state, &schema.procedure_state, &schema.basis_state}) {
        text(*name);
    }
    for (auto* table : {&schema.canonical_forms, &schema.functional_aliases, &schema.categories}) {
        image.table(*table, text);
    }
    for (auto* table : {&schema.state_includes, &schema.option_states}) {
        image.table(*table, texts);
    }
    for (auto* words : {&schema.exchange_components, &schema.correlation_components, &schema.functional_prefixes}) {
        image.words(*words);
    }
    const auto edge = [&](auto& value) {
        text(value.token);
        text(value.next);
        image.flag(value.null_edge);
    };
    image.table(schema.state_edges, [&](auto& edges) { image.list(edges, edge); });
    image.table(schema.state_groups, [&](auto& groups) {
        image.list(groups, [&image](auto& group) { walk_entry(image, group); });
        image.number_entries(groups);
    });
    for (auto* groups : {&schema.keyword_groups, &schema.procedure_groups, &schema.method_groups, &schema.basis_groups}) {
        image.group_list(*groups);
    }
    image.table(schema.option_groups, [&](auto& groups) { image.group_list(groups); });
}

void append_number(std::string& bytes, std::size_t value) {
    if (value > UINT32_MAX) {
        throw std::length_error("the vocabulary is too large for an image");
    }
    for (; value > 0x7F; value >>= 7) {
        bytes += static_cast<char>(0x80 | (value & 0x7F));
    }
    bytes += static_cast<char>(value);
}

class ImageWriter {
   public:
    std::string take() { return std::move(bytes_); }

    void flag(bool value) { bytes_ += value ? '\1' : '\0'; }
    void integer(std::int64_t value) {
        append_number(bytes_, static_cast<std::uint64_t>(value) & UINT32_MAX);
        append_number(bytes_, static_cast<std::uint64_t>(value) >> 32);
    }
    void text(std::string_view value) {
        append_number(bytes_, value.size());
        bytes_ += value;
    }
    template <class Items, class Write>
    void list(const Items& items, const Write& write) {
        append_number(bytes_, items.size());
        for (const auto& item : items) {
            write(item);
        }
    }
    void words(const std::set<std::string, std::less<>>& words) {
        list(words, [this](const std::string& word) { text(word); });
    }
    /// Writes a table in the order of its keys.
    template <class Value, class Write>
    void table(const TextMap<Value>& table, const Write& write) {
        std::map<std::string_view, const Value*> sorted;
        for (const auto& [key, value] : table) {
            sorted.emplace(key, &value);
        }
        list(sorted, [&](const auto& item) {
            text(item.first);
            write(*item.second);
        });
    }
    void number_entries(const std::vector<CandidateGroup>& groups) {
        for (const CandidateGroup& group : groups) {
            numbers_.emplace(&group, numbers_.size());
        }
    }
    void group_list(const GroupList& groups) {
        list(groups.groups(), [this](const CandidateGroup* group) { append_number(bytes_, numbers_.at(group)); });
        list(groups.order(), [this](std::uint32_t spelling) { append_number(bytes_, spelling); });
    }

   private:
    std::string bytes_;
    std::unordered_map<const CandidateGroup*, std::size_t> numbers_;
};

/// Reads from the front of the bytes that are left. Once a read has failed, all later ones give nothing.
class ImageReader {
   public:
    explicit ImageReader(std::string_view bytes) : place_(bytes.data()), end_(bytes.data() + bytes.size()) {}

    bool at_end() const { return ok_ && place_ == end_; }
    std::string_view rest() const { return {place_, static_cast<std::size_t>(end_ - place_)}; }

    std::string_view take(std::size_t size) {
        if (size > rest().size()) {
            fail();
            return {};
        }
        const std::string_view bytes(place_, size);
        place_ += size;
        return bytes;
    }
    std::uint32_t number() {
        if (place_ != end_ && (*place_ & 0x80) == 0) {
            return static_cast<std::uint32_t>(*place_++);  // nearly all
        }
        return long_number();
    }
    void flag(bool& value) { value = take(1) == std::string_view("\1", 1); }
    void integer(std::int64_t& value) {
        const std::uint64_t low = number();
        value = static_cast<std::int64_t>(low | std::uint64_t{number()} << 32);
    }
    void text(std::string& value) { value = std::string(take(number())); }
    template <class Item, class Read>
    void list(std::vector<Item>& items, const Read& read) {
        const std::uint32_t count = number();
        items.reserve(std::min<std::size_t>(count, trusted_count));
        for (std::uint32_t index = 0; ok_ && index < count; ++index) {
            read(items.emplace_back());
        }
    }
    void words(std::set<std::string, std::less<>>& words) {
        std::vector<std::string> list_of_words;
        list(list_of_words, [this](std::string& word) { text(word); });
        words.insert(list_of_words.begin(), list_of_words.end());
    }
    template <class Value, class Read>
    void table(TextMap<Value>& table, const Read& read) {
        const std::uint32_t count = number();
        table.reserve(std::min<std::size_t>(count, trusted_count));
        for (std::uint32_t index = 0; ok_ && index < count; ++index) {
            std::string key;
            text(key);
            const auto [place, is_new] = table.try_emplace(std::move(key));
            if (!is_new) {
                return fail();
            }
            read(place->second);
        }
    }
    void number_entries(const std::vector<CandidateGroup>& groups) {
        for (const CandidateGroup& group : groups) {
            entries_.push_back(&group);
        }
    }
    void group_list(GroupList& list_of_groups) {
        GroupList::Groups groups;
        std::size_t spellings = 0;
        list(groups, [&](const CandidateGroup*& group) {
            const std::uint32_t index = number();
            if (index >= entries_.size()) {
                return fail();
            }
            group = entries_[index];
            spellings += group->forms.size();
        });
        std::vector<std::uint32_t> order;
        list(order, [this](std::uint32_t& spelling) { spelling = number(); });
        if (ok_ && order.size() == spellings) {
            list_of_groups = GroupList(std::move(groups), std::move(order));
        } else {
            fail();
        }
    }

   private:
    static constexpr std::size_t trusted_count = 4096;  ///< as many items are made room for before they were seen

    /// Leaves nothing to be read.
    void fail() {
        ok_ = false;
        place_ = end_;
    }
    std::uint32_t long_number() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 35 && place_ != end_; shift += 7) {
            const char byte = *place_++;
            value |= std::uint64_t{static_cast<unsigned char>(byte) & 0x7FU} << shift;
            if ((byte & 0x80) == 0 && value <= UINT32_MAX) {
                return static_cast<std::uint32_t>(value);
            }
        }
        fail();
        return 0;
    }

    const char* place_;
    const char* end_;
    bool ok_ = true;
    std::vector<const CandidateGroup*> entries_;
};

/// Returns eight bytes that differ where the bytes do: for certain where one stretch of eight bytes differs, else but for
/// one case in 2^64.
std::string sum_of(std::string_view bytes) {
    std::string sum;
    std::uint64_t hash = TextHash::sum_of(bytes);
    for (unsigned byte = 0; byte < 8; ++byte, hash >>= 8) {
        sum += static_cast<char>(hash & 0xFF);
    }
    return sum;
}

}  // namespace

std::string write_schema_image(const SimpleYAMLParser::Impl& schema, std::string_view document) {
    ImageWriter image;
    walk_tables(image, schema);
    std::string content;
    append_number(content, document.size());
    content += sum_of(document) + image.take();
    return std::string(first_line) + sum_of(content) + content;
}

bool read_schema_image(std::string_view image, std::optional<std::string_view> document, SimpleYAMLParser::Impl& schema) {
    ImageReader reader(image);
    const bool is_image = reader.take(first_line.size()) == first_line;
    const std::string_view sum = reader.take(8);
    if (!is_image || sum != sum_of(reader.rest())) {
        return false;
    }
    const std::size_t document_size = reader.number();
    const std::string_view document_sum = reader.take(8);
    if (document && (document_size != document->size() || document_sum != sum_of(*document))) {
        return false;
    }
    walk_tables(reader, schema);
    if (!reader.at_end()) {
        schema.reset_schema();
        return false;
    }
    schema.loaded = true;
    schema.build_graph();
    return true;
}

std::string find_schema_image(const std::string& path) {
    std::string beside = path + std::string(image_ending);
    if (quor::core::resource::is_regular_file_path(beside)) {
        return beside;
    }
    const std::string name = beside.substr(beside.rfind('/') + 1);
    return quor::core::resource::search_file({}, {}, {name}, "", {}, 0);
}

}  // namespace quor::input::gaussian
