// Fills the tables of a vocabulary from its document.
//
// A missing key is passed over, and so is a value of the wrong kind, with two exceptions that fail the load: a scalar where
// a map is needed, and a "case_sensitive", "consume" or "value" that does not convert.
#include <gjf/core/schema/group_collection.hpp>
#include <gjf/core/schema/schema_document.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quor::input::gaussian {

namespace {

/// A document of more words is refused, so that aliases of aliases cannot fill the memory.
constexpr std::size_t word_limit = 500000;

bool boolean_value(DocumentNode node) {
    if (!node.is_scalar()) {
        throw std::invalid_argument("not a boolean");
    }
    return convert_boolean(node.text());
}

std::int64_t integer_value(DocumentNode node) {
    const auto value = node.is_scalar() ? to_int64(trim_view(node.text())) : std::nullopt;
    if (!value) {
        throw std::invalid_argument("not an integer");
    }
    return *value;
}

class TableReader {
   public:
    explicit TableReader(SimpleYAMLParser::Impl& schema) : schema_(schema) {}

    /// Reads all that needs no knowledge of which entries are keywords.
    void read_states(DocumentNode root) {
        const DocumentNode top_level = root.find("top_level");
        read_state_name(top_level.find("entry_state"), schema_.entry_state);
        read_state_name(top_level.find("procedure_state"), schema_.procedure_state);
        for (std::string* name : {&schema_.entry_state, &schema_.procedure_state, &schema_.basis_state}) {
            *name = schema_.normalize_state_name(*name);
        }
        read_pairs(
            root.find("metadata").find("canonical_forms"), [this](std::string_view preferred, std::string_view other) {
                schema_.canonical_forms.insert_or_assign(schema_.normalize_token(other), schema_.normalize_token(preferred));
            });
        const DocumentNode states = root.find("states");
        for (std::size_t index = 0; index < states.size(); ++index) {
            if (states.key(index).is_scalar()) {
                read_state(schema_.normalize_state_name(states.key(index).text()), states.value(index));
            }
        }
    }

    /// Reads what is keyed by keyword, which takes the entries of all roles to normalize.
    void read_metadata(DocumentNode metadata) {
        const DocumentNode option_states = metadata.find("option_states");
        for (std::size_t index = 0; option_states.is_map() && index < option_states.size(); ++index) {
            if (option_states.key(index).is_scalar()) {
                auto& states = schema_.option_states[schema_.normalize_keyword(option_states.key(index).text())];
                read_state_names(option_states.value(index), states);
            }
        }
        const DocumentNode functionals = metadata.find("pure_dft");
        read_words(functionals.find("exchange_components"), schema_.exchange_components);
        read_words(functionals.find("correlation_components"), schema_.correlation_components);
        read_words(functionals.find("prefixes"), schema_.functional_prefixes);
        read_pairs(functionals.find("aliases"), [this](std::string_view alias, std::string_view name) {
            schema_.functional_aliases.insert_or_assign(schema_.normalize_token(alias), schema_.normalize_token(name));
        });
        read_pairs(metadata.find("categories"), [this](std::string_view keyword, std::string_view category) {
            schema_.categories.insert_or_assign(schema_.normalize_keyword(keyword), std::string(category));
        });
    }

   private:
    void read_state(const std::string& name, DocumentNode state) {
        if (const DocumentNode includes = state.find("includes"); includes.is_sequence()) {
            read_state_names(includes, schema_.state_includes[name]);
        }
        read_items(state.find("entries"), &TableReader::read_entry, name);
        read_items(state.find("syntax").find("transitions"), &TableReader::read_transition, name);
        read_items(state.find("specs"), &TableReader::read_spec, name);
    }

    void read_items(DocumentNode items, void (TableReader::*read)(const std::string&, DocumentNode),
                    const std::string& state) {
        for (std::size_t index = 0; items.is_sequence() && index < items.size(); ++index) {
            (this->*read)(state, items.element(index));
        }
    }

    void read_entry(const std::string& state, DocumentNode entry) {
        const DocumentNode forms = entry.find("forms");
        if (!forms.is_sequence() || forms.size() == 0) {
            return;
        }
        CandidateGroup group;
        group.forms.reserve(forms.size());
        for (std::size_t index = 0; index < forms.size(); ++index) {
            add_word(forms.element(index), group.forms);
        }
        group.next = schema_.normalize_state_name(entry.find("next").text());
        group.canonical = schema_.choose_preferred_form(group.forms, false);
        group.state = state;
        if (const DocumentNode consume = entry.find("consume"); consume.is_present()) {
            group.consume = boolean_value(consume);
        }
        if (const DocumentNode action = entry.find("action"); action.is_map()) {
            read_action(action, group);
        }
        std::vector<GraphEdge>& edges = schema_.state_edges[state];
        for (const std::string& form : group.forms) {
            edges.push_back({form, group.next, false});
        }
        schema_.state_groups[state].push_back(std::move(group));
    }

    void read_action(DocumentNode action, CandidateGroup& group) {
        group.has_action = true;
        group.result = schema_.normalize_token(action.find("result").text());
        if (const DocumentNode value = action.find("value"); value.is_present()) {
            group.value = integer_value(value);
        }
    }

    void read_transition(const std::string& state, DocumentNode transition) {
        const DocumentNode next = transition.find("next");
        const DocumentNode forms = transition.find("forms");
        if (!next.is_scalar() || !forms.is_sequence()) {
            return;
        }
        for (std::size_t index = 0; index < forms.size(); ++index) {
            take_word();
            // A separator may be one blank, which stays one as it does in the name of a state.
            std::string token = schema_.normalize_state_name(forms.element(index).text());
            if (!token.empty()) {
                schema_.state_edges[state].push_back({std::move(token), schema_.normalize_state_name(next.text()), false});
            }
        }
    }

    void read_spec(const std::string& state, DocumentNode spec) {
        const DocumentNode word = spec.find("spec");
        const DocumentNode next = spec.find("next");
        take_word();
        std::string token = schema_.normalize_token(word.text());
        if (token.empty() || !next.is_scalar()) {
            return;
        }
        const bool reads_nothing = token == "nul";
        schema_.state_edges[state].push_back(
            {reads_nothing ? std::string{} : std::move(token), schema_.normalize_state_name(next.text()), reads_nothing});
    }

    void read_state_name(DocumentNode node, std::string& name) {
        if (node.is_scalar()) {
            name = std::string(node.text());
        }
    }

    /// Reads one state name or a sequence of them; elements that are no scalars are skipped.
    void read_state_names(DocumentNode node, std::vector<std::string>& names) {
        const std::size_t count = node.is_sequence() ? node.size() : std::size_t{node.is_scalar()};
        for (std::size_t index = 0; index < count; ++index) {
            const DocumentNode name = node.is_sequence() ? node.element(index) : node;
            take_word();
            if (name.is_scalar()) {
                names.push_back(schema_.normalize_state_name(name.text()));
            }
        }
    }

    void read_words(DocumentNode node, std::set<std::string, std::less<>>& words) {
        std::vector<std::string> list;
        for (std::size_t index = 0; node.is_sequence() && index < node.size(); ++index) {
            add_word(node.element(index), list);
        }
        words.insert(list.begin(), list.end());
    }

    /// Adds a normalized word; what is no scalar and what is empty is left out.
    void add_word(DocumentNode node, std::vector<std::string>& words) {
        take_word();
        std::string word = schema_.normalize_token(node.text());
        if (!word.empty()) {
            words.push_back(std::move(word));
        }
    }

    /// Hands every pair of scalars in a map to `store`.
    template <class Store>
    void read_pairs(DocumentNode node, const Store& store) {
        for (std::size_t index = 0; node.is_map() && index < node.size(); ++index) {
            take_word();
            if (node.key(index).is_scalar() && node.value(index).is_scalar()) {
                store(node.key(index).text(), node.value(index).text());
            }
        }
    }

    void take_word() {
        if (++words_ > word_limit) {
            throw std::length_error("too many words");
        }
    }

    SimpleYAMLParser::Impl& schema_;
    std::size_t words_ = 0;
};

}  // namespace

void SimpleYAMLParser::Impl::load_schema(const DocumentNode& root) {
    loaded = true;
    if (const DocumentNode flag = root.find("case_sensitive"); flag.is_present()) {
        case_sensitive = boolean_value(flag);
    }
    TableReader reader(*this);
    reader.read_states(root);
    build_graph();
    collect_role_groups(*this);
    reader.read_metadata(root.find("metadata"));
    collect_option_groups(*this);
}

}  // namespace quor::input::gaussian
