// What a route says: print level, model chemistry, keywords with their options, and warnings.
#pragma once

#include <core/export.hpp>
#include <gjf/core/route/parse_warning.hpp>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// One option of a keyword; `value` is absent when it was written without "=".
struct RouteOption {
    std::string name;
    std::optional<std::string> value;
};

/// An option as it was given to a keyword, by names.
struct GivenOption {
    std::string keyword;  ///< in lower case
    std::string option;
};

/// Reads an option as it is written in a list: "calcfc" or "maxcycles=50".
QUOR_GJF_API RouteOption read_route_option(std::string_view text);

/// One route keyword that is not part of the model chemistry.
struct KeywordInfo {
    std::string name;  ///< canonical spelling when the vocabulary knows it, else lower case as written
    std::map<std::string, std::string> options;  ///< lower-case name to value; "TRUE" for an option written without a value
    std::string category = "other";              ///< the vocabulary's category
    std::string raw;                             ///< the segment as it stood in the route, trimmed
};

/// An interpreted route. Texts are empty when unset. Names are compared through the default vocabulary, so aliases and
/// unique abbreviations count.
struct QUOR_GJF_API ParsedKeywords {
    ParsedKeywords();
    ParsedKeywords(const ParsedKeywords& other);
    ParsedKeywords(ParsedKeywords&& other) noexcept;
    ParsedKeywords& operator=(const ParsedKeywords& other);
    ParsedKeywords& operator=(ParsedKeywords&& other) noexcept;
    ~ParsedKeywords();

    std::string print_level;  ///< "n", "p", "t", "n#p", or empty for a bare "#" or no prefix
    std::string method;
    std::string basis_set;
    std::string secondary_method;  ///< of the second model chemistry in method/basis//method/basis
    std::string secondary_basis_set;
    std::string method_options;  ///< the whole method expression as written when it carries options, else empty
    std::string secondary_method_options;
    std::string density_fitting_basis;
    std::string oniom_expression;  ///< the whole ONIOM segment as written
    std::vector<KeywordInfo> keywords;
    std::vector<ParseWarning> warnings;

    /// Tells whether the primary or the secondary method is `name`.
    bool has_method(const std::string& name) const;
    bool has_keyword(const std::string& name) const;
    std::vector<KeywordInfo> get_keywords_by_name(const std::string& name) const;
    /// Returns the keywords whose category is exactly `category`, in route order.
    std::vector<KeywordInfo> get_keywords_by_category(const std::string& category) const;
    /// Returns the value of the first option equivalent to `option` of a keyword equivalent to `keyword`; absent when there
    /// is none.
    std::optional<std::string> get_keyword_variable(const std::string& keyword, const std::string& option) const;
};

}  // namespace quor::input::gaussian
