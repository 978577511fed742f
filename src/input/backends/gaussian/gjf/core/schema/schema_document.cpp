// Reads a vocabulary document into tables. The only file that knows the YAML library.
//
// A missing key is passed over, and so is a value of the wrong kind, with two exceptions that fail the load: looking a key
// up in a scalar, and a "case_sensitive", "consume" or "value" that does not convert.
#include <gjf/core/schema/group_collection.hpp>
#include <gjf/core/schema/schema_tables.hpp>

#include <core/resource/resource.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quor::input::gaussian {

namespace {

/// A document of more bytes is refused: the tree of nodes takes a hundred times its size.
constexpr std::streamoff document_limit = 16 << 20;

/// A document of more words is refused, so that aliases of aliases cannot fill the memory.
constexpr std::size_t word_limit = 1000000;

using Impl = SimpleYAMLParser::Impl;

bool is_present(const YAML::Node& node) { return node.IsDefined(); }
bool is_map(const YAML::Node& node) { return node.IsDefined() && node.IsMap(); }
bool is_sequence(const YAML::Node& node) { return node.IsDefined() && node.IsSequence(); }
bool is_scalar(const YAML::Node& node) { return node.IsDefined() && node.IsScalar(); }

/// Returns the value under a key; undefined when there is none. Throws when `parent` is a scalar.
YAML::Node child(const YAML::Node& parent, const char* key) {
    return parent.IsDefined() && !parent.IsNull() ? parent[key] : YAML::Node(YAML::NodeType::Undefined);
}

std::string scalar_text(const YAML::Node& node) { return is_scalar(node) ? node.Scalar() : std::string{}; }

std::int64_t integer_value(const YAML::Node& node) {
    const auto value = is_scalar(node) ? to_int64(trim_view(node.Scalar())) : std::nullopt;
    if (!value) {
        throw std::invalid_argument("not an integer");
    }
    return *value;
}

/// Fills the tables of states and metadata, key by key.
class DocumentReader {
   public:
    explicit DocumentReader(Impl& schema) : schema_(schema) {}

    /// Reads what names and states are; the entries of roles are collected afterwards.
    void read_states(const YAML::Node& root) {
        const YAML::Node top_level = child(root, "top_level");
        if (const YAML::Node name = child(top_level, "entry_state"); is_scalar(name)) {
            schema_.entry_state = schema_.normalize_state_name(name.Scalar());
        }
        if (const YAML::Node name = child(top_level, "procedure_state"); is_scalar(name)) {
            schema_.procedure_state = schema_.normalize_state_name(name.Scalar());
        }
        schema_.basis_state = schema_.normalize_state_name(schema_.basis_state);
        read_pairs(child(child(root, "metadata"), "canonical_forms"), [this](const std::string& preferred,
                                                                             const std::string& other) {
            schema_.canonical_forms.insert_or_assign(schema_.normalize_token(other), schema_.normalize_token(preferred));
        });
        const YAML::Node states = child(root, "states");
        if (!is_map(states)) {
            throw std::invalid_argument("no states");
        }
        for (const auto& state : states) {
            if (is_scalar(state.first)) {
                read_state(schema_.normalize_state_name(state.first.Scalar()), state.second);
            }
        }
    }

    /// Reads what is keyed by keyword, which takes the entries of roles to normalize.
    void read_metadata(const YAML::Node& metadata) {
        const YAML::Node option_states = child(metadata, "option_states");
        if (is_map(option_states)) {
            for (const auto& item : option_states) {
                if (is_scalar(item.first)) {
                    auto& states = schema_.option_states[schema_.normalize_keyword(item.first.Scalar())];
                    read_state_names(item.second, states);
                }
            }
        }
        const YAML::Node functionals = child(metadata, "pure_dft");
        read_words(child(functionals, "exchange_components"), schema_.exchange_components);
        read_words(child(functionals, "correlation_components"), schema_.correlation_components);
        read_words(child(functionals, "prefixes"), schema_.functional_prefixes);
        read_pairs(child(functionals, "aliases"), [this](const std::string& alias, const std::string& name) {
            schema_.functional_aliases.insert_or_assign(schema_.normalize_token(alias), schema_.normalize_token(name));
        });
        read_pairs(child(metadata, "categories"), [this](const std::string& keyword, const std::string& category) {
            schema_.categories.insert_or_assign(schema_.normalize_keyword(keyword), category);
        });
    }

   private:
    void read_state(const std::string& name, const YAML::Node& state) {
        if (const YAML::Node includes = child(state, "includes"); is_sequence(includes)) {
            read_state_names(includes, schema_.state_includes[name]);
        }
        if (const YAML::Node entries = child(state, "entries"); is_sequence(entries)) {
            for (const auto& entry : entries) {
                read_entry(name, entry);
            }
        }
        if (const YAML::Node transitions = child(child(state, "syntax"), "transitions"); is_sequence(transitions)) {
            for (const auto& transition : transitions) {
                read_transition(name, transition);
            }
        }
        if (const YAML::Node specs = child(state, "specs"); is_sequence(specs)) {
            for (const auto& spec : specs) {
                read_spec(name, spec);
            }
        }
    }

    void read_entry(const std::string& state, const YAML::Node& entry) {
        const YAML::Node forms = child(entry, "forms");
        if (!is_sequence(forms) || forms.size() == 0) {
            return;
        }
        CandidateGroup group;
        for (const auto& form : forms) {
            take_word();
            std::string word = schema_.normalize_token(scalar_text(form));
            if (!word.empty()) {
                group.forms.push_back(std::move(word));
            }
        }
        group.next = schema_.normalize_state_name(scalar_text(child(entry, "next")));
        group.canonical = schema_.choose_preferred_form(group.forms, false);
        group.state = state;
        if (const YAML::Node consume = child(entry, "consume"); is_present(consume)) {
            group.consume = consume.as<bool>();
        }
        read_action(child(entry, "action"), group);
        std::vector<GraphEdge>& edges = schema_.state_edges[state];
        for (const std::string& form : group.forms) {
            edges.push_back({form, group.next, false});
        }
        schema_.state_groups[state].push_back(std::move(group));
    }

    void read_action(const YAML::Node& action, CandidateGroup& group) {
        if (!is_map(action)) {
            return;
        }
        group.has_action = true;
        group.result = schema_.normalize_token(scalar_text(child(action, "result")));
        if (const YAML::Node value = child(action, "value"); is_present(value)) {
            group.value = integer_value(value);
        }
    }

    void read_transition(const std::string& state, const YAML::Node& transition) {
        const YAML::Node next = child(transition, "next");
        const YAML::Node forms = child(transition, "forms");
        if (!is_scalar(next) || !is_sequence(forms)) {
            return;
        }
        for (const auto& form : forms) {
            take_word();
            // A separator may be a blank: like the name of a state it then stays one.
            std::string token = schema_.normalize_state_name(scalar_text(form));
            if (!token.empty()) {
                schema_.state_edges[state].push_back({std::move(token), schema_.normalize_state_name(next.Scalar()), false});
            }
        }
    }

    void read_spec(const std::string& state, const YAML::Node& spec) {
        const YAML::Node word = child(spec, "spec");
        const YAML::Node next = child(spec, "next");
        if (!is_scalar(word) || !is_scalar(next)) {
            return;
        }
        take_word();
        std::string token = schema_.normalize_token(word.Scalar());
        if (token.empty()) {
            return;
        }
        const bool reads_nothing = schema_.normalize_token("nul") == token;
        schema_.state_edges[state].push_back(
            {reads_nothing ? std::string{} : std::move(token), schema_.normalize_state_name(next.Scalar()), reads_nothing});
    }

    /// Reads one state name or a sequence of them; elements that are no scalars are skipped.
    void read_state_names(const YAML::Node& node, std::vector<std::string>& names) {
        if (is_scalar(node)) {
            take_word();
            names.push_back(schema_.normalize_state_name(node.Scalar()));
        } else if (is_sequence(node)) {
            for (const auto& name : node) {
                if (is_scalar(name)) {
                    take_word();
                    names.push_back(schema_.normalize_state_name(name.Scalar()));
                }
            }
        }
    }

    void read_words(const YAML::Node& node, std::set<std::string, std::less<>>& words) {
        if (!is_sequence(node)) {
            return;
        }
        for (const auto& item : node) {
            take_word();
            std::string word = schema_.normalize_token(scalar_text(item));
            if (!word.empty()) {
                words.insert(std::move(word));
            }
        }
    }

    template <class Store>
    void read_pairs(const YAML::Node& node, const Store& store) {
        if (!is_map(node)) {
            return;
        }
        for (const auto& item : node) {
            take_word();
            if (is_scalar(item.first) && is_scalar(item.second)) {
                store(item.first.Scalar(), item.second.Scalar());
            }
        }
    }

    void take_word() {
        if (++words_ > word_limit) {
            throw std::length_error("too many words");
        }
    }

    Impl& schema_;
    std::size_t words_ = 0;
};

/// Reads a whole regular file; false when it cannot be read or is too long.
bool read_document(const std::string& path, std::string& text) {
    if (!quor::core::resource::is_regular_file_path(path)) {
        return false;
    }
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    if (size < 0 || size > document_limit) {
        return false;
    }
    text.resize(static_cast<std::size_t>(size));
    file.seekg(0);
    file.read(text.data(), size);
    return file.good() && file.gcount() == size;
}

}  // namespace

void SimpleYAMLParser::Impl::load_schema(const YAML::Node& root) {
    loaded = true;
    if (const YAML::Node flag = child(root, "case_sensitive"); is_present(flag)) {
        case_sensitive = flag.as<bool>();
    }
    DocumentReader reader(*this);
    reader.read_states(root);
    build_graph();
    collect_role_groups(*this);
    reader.read_metadata(child(root, "metadata"));
    collect_option_groups(*this);
}

bool load_schema_document(const std::string& path, SimpleYAMLParser::Impl& schema) {
    try {
        std::string text;
        if (!read_document(path, text)) {
            return false;
        }
        const YAML::Node root = YAML::Load(text);
        if (!is_map(root) || !is_map(root["states"])) {
            return false;
        }
        schema.load_schema(root);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace quor::input::gaussian
