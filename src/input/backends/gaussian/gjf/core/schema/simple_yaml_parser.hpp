// A cheap handle over one loaded route vocabulary, and every question it answers.
#pragma once

#include <core/export.hpp>

#include <memory>
#include <string>
#include <vector>

namespace quor::input::gaussian {

struct CandidateGroup;

/// What `keywords_equivalent` compares of a word, looked up once. Valid as long as a handle shares its vocabulary.
struct KeywordIdentity {
    std::string word;                         ///< normalized
    const CandidateGroup* keyword = nullptr;  ///< null when the word is no keyword
    const CandidateGroup* method = nullptr;
};

/// What `options_equivalent` compares of an option of one keyword, looked up once.
struct OptionIdentity {
    std::string word;                        ///< normalized
    const CandidateGroup* option = nullptr;  ///< null when the word is no option of the keyword
};

/// Shares one loaded route vocabulary; copies see the same one.
///
/// Words are compared after trimming and, unless the document is case-sensitive, lower-casing. A word may be abbreviated to
/// any prefix that is unique among its kind. No query throws for a bad word. Queries may run in several threads at once;
/// loading through a handle must not overlap with queries through the same handle. A moved-from handle may only be assigned
/// to or destroyed.
class QUOR_GJF_API SimpleYAMLParser {
   public:
    struct Impl;

    /// Makes a handle over an empty vocabulary.
    SimpleYAMLParser();
    /// Makes a handle over tables that were filled by other means than a document (an image); they must not be null.
    explicit SimpleYAMLParser(std::shared_ptr<Impl> tables);
    SimpleYAMLParser(const SimpleYAMLParser& other);
    SimpleYAMLParser(SimpleYAMLParser&& other) noexcept;
    SimpleYAMLParser& operator=(const SimpleYAMLParser& other);
    SimpleYAMLParser& operator=(SimpleYAMLParser&& other) noexcept;
    ~SimpleYAMLParser();

    /// Loads a vocabulary document; false when it cannot be read, which leaves this handle with an empty vocabulary. Copies
    /// made before keep theirs.
    bool load_from_file(const std::string& path);

    /// Empties this handle's vocabulary and returns false: none is compiled into the library.
    bool load_embedded_default();

    /// Tells whether this handle holds a vocabulary; an empty one knows no word.
    bool is_loaded() const noexcept;

    /// Tells whether the token is a keyword: exactly, or by a unique abbreviation that is neither an exact method nor an
    /// exact basis.
    bool knows_keyword(const std::string& token) const;
    bool knows_keyword_exact(const std::string& token) const;
    /// The same for the other roles; those named `exact` take no abbreviation. Options are those of a keyword.
    bool knows_method(const std::string& token) const;
    bool knows_method_exact(const std::string& token) const;
    bool knows_basis(const std::string& token) const;
    bool knows_basis_exact(const std::string& token) const;
    bool knows_option(const std::string& keyword, const std::string& option) const;
    bool knows_option_exact(const std::string& keyword, const std::string& option) const;

    /// Returns the canonical spelling of a word: as exact keyword, method, basis, then as abbreviated keyword, method,
    /// basis; the normalized word when none applies.
    std::string normalize_keyword(const std::string& token) const;

    /// Returns the canonical spelling of the basis set that the whole token names or abbreviates; the normalized token when
    /// it is spelled out along the basis graph, or not known.
    std::string normalize_basis(const std::string& token) const;

    /// Returns the canonical spelling of an option of `keyword`, or the normalized option when it is not known.
    std::string normalize_option(const std::string& keyword, const std::string& option) const;

    /// Tells whether two words name the same keyword or the same method; words the vocabulary does not know are equal when
    /// their normalized spellings are.
    bool keywords_equivalent(const std::string& a, const std::string& b) const;
    /// Looks a word up for `equivalent`, which tells of two words of one vocabulary what `keywords_equivalent` would.
    KeywordIdentity identify_keyword(const std::string& word) const;
    static bool equivalent(const KeywordIdentity& a, const KeywordIdentity& b) noexcept;
    /// Looks an option of a keyword up; two of the same keyword are compared as `options_equivalent` would.
    OptionIdentity identify_option(const std::string& keyword, const std::string& option) const;
    static bool equivalent(const OptionIdentity& a, const OptionIdentity& b) noexcept;
    /// Tells whether two words name the same option of a keyword.
    bool options_equivalent(const std::string& keyword, const std::string& a, const std::string& b) const;

    /// Returns the category of a word: the vocabulary's own, or "method", "basis" or "other".
    std::string classify(const std::string& token) const;

    /// Returns the canonical words that a prefix may stand for, sorted, each once; none for an empty prefix.
    std::vector<std::string> keyword_completions(const std::string& prefix) const;
    std::vector<std::string> method_completions(const std::string& prefix) const;
    std::vector<std::string> basis_completions(const std::string& prefix) const;
    std::vector<std::string> option_completions(const std::string& keyword, const std::string& prefix) const;

    /// Returns the canonical spellings of all options of a keyword, sorted, each once; none for an unknown keyword.
    std::vector<std::string> options_of(const std::string& keyword) const;

    /// Returns every spelling of the keywords, of the methods, of the basis sets (but those spelled out along the basis
    /// graph), sorted, each once.
    std::vector<std::string> keyword_spellings() const;
    std::vector<std::string> method_spellings() const;
    std::vector<std::string> basis_spellings() const;

    static std::string to_lower(const std::string& text);
    static std::string trim(const std::string& text);

   private:
    std::shared_ptr<Impl> impl_;
};

}  // namespace quor::input::gaussian
