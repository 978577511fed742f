// The operations on routes.
#include <gjf/core/editing/operation_rows.hpp>

#include <gjf/core/check/change_checks.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/route_lines.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/route/route_tree.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

// A keyword is looked up in a route that is whole without it.
constexpr const char* keyword_route = "# hf/sto-3g ";

struct Keyword {
    std::string name;
    std::vector<RouteOption> options;
};

// Reads "opt", "opt=ts", "opt=(ts,calcfc)" and "iop(3/33=1)".
Keyword keyword_of(const std::string& text) {
    // Without a vocabulary, every word is read as a keyword.
    const RouteTree tree = read_route(text, SimpleYAMLParser()).tree;
    if (tree.segments.size() != 1) {
        throw std::runtime_error("one keyword is wanted, not '" + text + "'");
    }
    const auto text_at = [&](Span place) { return std::string(place.in(tree.text)); };
    const std::vector<RouteTree::Keyword>& keywords = tree.segments[0].keywords;
    Keyword keyword{keywords.size() == 1 ? text_at(keywords[0].head) : std::string(), {}};
    const bool has_sign = text.find_first_of("=(") != std::string::npos;
    const auto is_broken_list = [&] { return text_at(keywords[0].options[0].place).starts_with('('); };
    if (keyword.name.empty() || keyword.name.find_first_of("=()") != std::string::npos ||
        (has_sign && (keywords[0].options.empty() || is_broken_list()))) {
        throw std::runtime_error("'" + text + "' is no keyword with options");
    }
    for (const RouteTree::Option& option : keywords[0].options) {
        const bool has_value = option.name.end() < option.place.end();
        keyword.options.push_back(
            {text_at(option.name), has_value ? std::optional<std::string>(text_at(option.value)) : std::nullopt});
        if (option.name.empty() || (has_value && option.value.empty())) {
            throw std::runtime_error("an option of '" + text + "' is not complete");
        }
    }
    return keyword;
}

// One word, so that nothing else comes into the route with it.
std::string word_of(const std::string& text, const char* what) {
    if (split_route_segments_preserving_nesting(text).size() != 1) {
        throw std::runtime_error(std::string("one ") + what + " is wanted, not '" + text + "'");
    }
    return GJFParser::trim(text);
}

// Returns u, ro or r where it stands before the name of a method, else nothing.
std::string spin_prefix(const std::string& method) {
    const SimpleYAMLParser& schema = default_route_schema();
    const std::string name = SimpleYAMLParser::to_lower(method.substr(0, method.find('(')));
    for (const std::string_view prefix : {"u", "ro", "r"}) {
        if (name.starts_with(prefix) && name.size() > prefix.size() && schema.knows_method_exact(name) &&
            schema.knows_method_exact(name.substr(prefix.size()))) {
            return std::string(prefix);
        }
    }
    return {};
}

// Gives a method the prefix of the one that stands there, where it has none and can have it.
std::string with_prefix_of(const std::string& old, const std::string& method) {
    const std::string prefix = spin_prefix(old);
    const bool can_have_it = !prefix.empty() && spin_prefix(method).empty() &&
                             default_route_schema().knows_method_exact(prefix + method.substr(0, method.find('(')));
    return can_have_it ? prefix + method : method;
}

// Tells whether a word that nobody knows is a method or a basis set misspelt: it stands on its side of a slash, or is near
// to one.
bool is_misspelt(const std::string& name, bool is_method, const std::vector<std::string>& words) {
    const SimpleYAMLParser& schema = default_route_schema();
    if (schema.knows_keyword_exact(name) || schema.knows_method_exact(name)) {
        return false;
    }
    const bool has_slash = std::any_of(words.begin(), words.end(), [&](const std::string& each) {
        const std::string word = SimpleYAMLParser::to_lower(each);
        return is_method ? word.starts_with(name + '/') : word.ends_with('/' + name);
    });
    const std::vector<Finding> found = unknown_route_words((is_method ? "# " : "# hf/") + name);
    return has_slash || std::any_of(found.begin(), found.end(), [&](const Finding& finding) {
               return std::any_of(finding.fixes.begin(), finding.fixes.end(), [&](const Fix& fix) {
                   const std::string& meant = fix.edits.front().text;
                   return is_method ? schema.knows_method_exact(meant) : schema.knows_basis_exact(meant);
               });
           });
}

// Finds a word of the route that nobody knows and that is a method or a basis set misspelt; none where the route has one.
std::string misspelt_word(GJFEditor& job, bool is_method) {
    if (!job.has_parsed_keywords() || !(is_method ? job.get_method() : job.get_basis_set()).empty()) {
        return {};
    }
    const std::vector<std::string>& words = job.get_data().control.route_keywords;
    const std::vector<KeywordInfo>& keywords = job.get_parsed_keywords().keywords;
    const auto found = std::find_if(keywords.begin(), keywords.end(), [&](const KeywordInfo& keyword) {
        return keyword.options.empty() && is_misspelt(keyword.name, is_method, words);
    });
    return found == keywords.end() ? std::string() : found->name;
}

// Puts a method in the place of a misspelt one; tells whether there was one.
bool replace_misspelt_method(GJFEditor& job, const std::string& method, EditContext& context) {
    const std::string misspelt = misspelt_word(job, true);
    if (misspelt.empty()) {
        return false;
    }
    std::vector<std::string> words = job.get_data().control.route_keywords;
    for (std::string& word : words) {
        const std::string name = SimpleYAMLParser::to_lower(word.substr(0, word.find('/')));
        if (name == misspelt) {
            word.replace(0, name.size(), method);
            job.set_route_section(words);
            context.remarks.push_back("set in the place of '" + misspelt + "'");
            return true;
        }
    }
    return false;
}

Edit read_method(const std::string& value) {
    const std::string method = word_of(value, "method");
    if (find_top_level_char(method, '/') >= 0) {
        throw std::runtime_error("'" + value + "' holds more than a method; --basis sets the basis set");
    }
    return [method](GJFEditor& job, EditContext& context) {
        job.ensure_parsed_keywords();
        if (job.has_parsed_keywords() && !job.get_parsed_keywords().oniom_expression.empty()) {
            throw std::runtime_error("the method of an ONIOM job stands in its oniom(...) and cannot be set");
        }
        if (replace_misspelt_method(job, method, context)) {
            return true;
        }
        const std::string wanted = with_prefix_of(job.get_method(), method);
        if (wanted != method) {
            context.remarks.push_back("set as " + wanted + ", with the prefix of " + job.get_method());
        }
        job.set_method(wanted);
        return true;
    };
}

Edit read_basis(const std::string& value) {
    const std::string basis = word_of(value, "basis set");
    if (find_top_level_char(basis, '/') >= 0) {
        throw std::runtime_error("'" + value + "' holds more than a basis set");
    }
    return [basis](GJFEditor& job, EditContext& context) {
        job.ensure_parsed_keywords();
        if (const std::string misspelt = misspelt_word(job, false); !misspelt.empty()) {
            job.remove_keyword_by_name(misspelt);
            context.remarks.push_back("set in the place of '" + misspelt + "'");
        }
        const bool has_model =
            !job.get_method().empty() || (job.has_parsed_keywords() && !job.get_parsed_keywords().oniom_expression.empty());
        if (has_model) {
            job.set_model_chemistry_basis(basis);
        } else {
            job.set_basis_set(basis);
        }
        return true;
    };
}

// Adds options to the keyword where it is there, else adds it with them.
Edit add_to_keyword(Keyword keyword) {
    return [keyword = std::move(keyword)](GJFEditor& job, EditContext&) {
        job.ensure_parsed_keywords();
        if (!job.has_keyword(keyword.name)) {
            job.add_keyword_with_options(keyword.name, keyword.options);
            return true;
        }
        for (const RouteOption& option : keyword.options) {
            job.ensure_keyword_option(keyword.name, option);
        }
        return true;
    };
}

Edit read_add_keyword(const std::string& value) { return add_to_keyword(keyword_of(value)); }

Edit read_option(const std::string& value) {
    Keyword keyword = keyword_of(value);
    if (keyword.options.empty()) {
        throw std::runtime_error("KEYWORD=OPTION is wanted, not '" + value + "'");
    }
    return add_to_keyword(std::move(keyword));
}

Edit read_remove_option(const std::string& value) {
    Keyword keyword = keyword_of(value);
    if (keyword.options.empty()) {
        throw std::runtime_error("KEYWORD=OPTION is wanted, not '" + value + "'");
    }
    return [keyword = std::move(keyword)](GJFEditor& job, EditContext&) {
        bool found = false;
        for (const RouteOption& option : keyword.options) {
            found = job.remove_keyword_option(keyword.name, option) || found;
        }
        return found;
    };
}

Edit read_route(const std::string& value) {
    std::vector<std::string> words = route_words_of(value);
    if (words.empty()) {
        throw std::runtime_error("a route is wanted, not '" + value + "'");
    }
    if (value.find('!') != std::string::npos) {
        throw std::runtime_error("a route is wanted without a comment");
    }
    return [words = std::move(words)](GJFEditor& job, EditContext&) {
        job.set_route_section(words);
        return true;
    };
}

Edit read_print_level(const std::string& value) {
    const std::string level = SimpleYAMLParser::to_lower(value.starts_with('#') ? value.substr(1) : value);
    if (!level.empty() && level != "n" && level != "p" && level != "t") {
        throw std::runtime_error("'" + value + "' is none of the print levels n, p, t and #");
    }
    return [level](GJFEditor& job, EditContext&) {
        job.set_output_mode(level);
        return true;
    };
}

// Takes out the words that begin with a name and are no keyword that the route's interpretation keeps; tells whether there
// are any.
bool remove_words(GJFEditor& job, const std::string& name) {
    const std::vector<std::string> words = job.get_data().control.route_keywords;
    for (const std::string& word : words) {
        if (SimpleYAMLParser::to_lower(word.substr(0, word.find_first_of("=("))) == SimpleYAMLParser::to_lower(name)) {
            job.remove_route_keyword(word);
        }
    }
    return job.get_data().control.route_keywords.size() < words.size();
}

Edit read_remove_keyword(const std::string& value) {
    const Keyword keyword = keyword_of(value);
    if (!keyword.options.empty()) {
        throw std::runtime_error("a keyword without options is wanted, not '" + value + "'");
    }
    return [name = keyword.name](GJFEditor& job, EditContext&) {
        job.ensure_parsed_keywords();
        if (!job.has_keyword(name)) {
            return remove_words(job, name);
        }
        job.remove_keyword_by_name(name);
        return true;
    };
}

}  // namespace

std::vector<EditOption> route_edit_options() {
    return {
        {"--method", "METHOD", "Set the method", EditTarget::Head, read_method, "# "},
        {"--basis", "BASIS", "Set the basis set", EditTarget::Head, read_basis, "# hf/"},
        {"--add-keyword", "KEYWORD", "Add a keyword, or its options to the one that is there", EditTarget::Head,
         read_add_keyword, keyword_route},
        {"--remove-keyword", "NAME", "Take out a keyword with its options", EditTarget::Head, read_remove_keyword},
        {"--route", "ROUTE", "Put another route in the place of the job's", EditTarget::Head, read_route, ""},
        {"--print-level", "LEVEL", "Set the print level: n, p, t, or # for none", EditTarget::Head, read_print_level},
        {"--remove-option", "KEYWORD=OPTION", "Take an option, or several in parentheses, from a keyword", EditTarget::Head,
         read_remove_option},
        {"--option", "KEYWORD=OPTION", "Give a keyword an option, or several in parentheses", EditTarget::Head, read_option,
         keyword_route},
    };
}

}  // namespace quor::input::gaussian
