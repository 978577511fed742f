// What an image must answer like the document that it was made of.
#pragma once

#include "vocabulary.hpp"

#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quor::input::gaussian {

inline constexpr const char* image_vocabulary = R"yaml(
metadata:
  option_states: {opt: [OptA, OptB], b3lyp: OptB, unknown: OptA}
  categories: {opt: job, hf: method, 6-31g: basis}
states:
  GCL:
    includes: [More]
    entries: [{forms: [optimization, opt]}, {forms: [optcyc]}, {forms: ["freq(", frequency]}]
  More: {entries: [{forms: [scf], next: GCL}]}
  Proc: {entries: [{forms: [b3lyp]}, {forms: [hf]}, {forms: [external], next: Extern}]}
  Basis:
    includes: [Dunning]
    entries: [{forms: [6-31g], next: Pol}, {forms: [sto-3g]}]
  Pol: {specs: [{spec: nul, next: Exi}, {spec: "*", next: Exi}, {spec: "(d)", next: Exi}]}
  Dunning: {specs: [{spec: cc-pv, next: Zeta}]}
  Zeta: {specs: [{spec: dz, next: Exi}, {spec: tz, next: Exi}]}
  OptA: {entries: [{forms: [calcfc]}, {forms: [calcall]}]}
  OptB: {entries: [{forms: [tight, verytight]}]}
)yaml";

/// All words worth asking: every prefix of every spelling, and each with something behind it.
inline std::set<std::string> questions(const SimpleYAMLParser::Impl& schema) {
    std::set<std::string> words;
    const auto add = [&words](const std::string& form) {
        for (std::size_t length = 0; length <= form.size(); ++length) {
            words.insert(form.substr(0, length));
        }
        words.insert(form + "(d)");
        words.insert(form + "x");
    };
    for (const GroupList* groups : {&schema.keyword_groups, &schema.method_groups, &schema.basis_groups}) {
        for (const CandidateGroup& group : *groups) {
            std::for_each(group.forms.begin(), group.forms.end(), add);
        }
    }
    for (const auto& [state, edges] : schema.state_edges) {
        for (const GraphEdge& edge : edges) {
            words.insert(edge.token);
        }
    }
    for (const auto& word : schema.basis_completions("6")) {
        add(word);
    }
    return words;
}

inline void expect_equal_words(const SimpleYAMLParser& a, const SimpleYAMLParser& b, const std::string& word) {
    EXPECT_EQ(a.knows_keyword(word), b.knows_keyword(word)) << word;
    EXPECT_EQ(a.knows_keyword_exact(word), b.knows_keyword_exact(word)) << word;
    EXPECT_EQ(a.knows_method(word), b.knows_method(word)) << word;
    EXPECT_EQ(a.knows_method_exact(word), b.knows_method_exact(word)) << word;
    EXPECT_EQ(a.knows_basis(word), b.knows_basis(word)) << word;
    EXPECT_EQ(a.knows_basis_exact(word), b.knows_basis_exact(word)) << word;
    EXPECT_EQ(a.normalize_keyword(word), b.normalize_keyword(word)) << word;
    EXPECT_EQ(a.normalize_basis(word), b.normalize_basis(word)) << word;
    EXPECT_EQ(a.classify(word), b.classify(word)) << word;
    EXPECT_EQ(a.keyword_completions(word), b.keyword_completions(word)) << word;
    EXPECT_EQ(a.method_completions(word), b.method_completions(word)) << word;
    EXPECT_EQ(a.basis_completions(word), b.basis_completions(word)) << word;
}

inline void expect_equal_options(const SimpleYAMLParser& a, const SimpleYAMLParser& b, const std::string& keyword,
                                 const std::string& option) {
    EXPECT_EQ(a.knows_option(keyword, option), b.knows_option(keyword, option)) << keyword << ' ' << option;
    EXPECT_EQ(a.knows_option_exact(keyword, option), b.knows_option_exact(keyword, option)) << keyword << ' ' << option;
    EXPECT_EQ(a.normalize_option(keyword, option), b.normalize_option(keyword, option)) << keyword << ' ' << option;
    EXPECT_EQ(a.option_completions(keyword, option), b.option_completions(keyword, option)) << keyword << ' ' << option;
}

/// Asks a document and an image of it the same questions; returns how many words and options were asked.
inline std::size_t compare_answers(const std::shared_ptr<SimpleYAMLParser::Impl>& document,
                                   const std::shared_ptr<SimpleYAMLParser::Impl>& image) {
    const SimpleYAMLParser from_document(document);
    const SimpleYAMLParser from_image(image);
    EXPECT_EQ(from_image.is_loaded(), from_document.is_loaded());
    std::size_t asked = 0;
    std::string previous;
    for (const std::string& word : questions(*document)) {
        expect_equal_words(from_document, from_image, word);
        EXPECT_EQ(from_document.keywords_equivalent(previous, word), from_image.keywords_equivalent(previous, word)) << word;
        previous = word;
        ++asked;
    }
    for (const auto& [keyword, options] : document->option_groups) {
        std::string last;
        for (const CandidateGroup& option : options) {
            for (const std::string& form : option.forms) {
                std::vector<std::string> asked_options = {form + "x", " " + form};
                for (std::size_t length = 0; length <= form.size(); ++length) {
                    asked_options.push_back(form.substr(0, length));
                }
                for (const std::string& asked_option : asked_options) {
                    expect_equal_options(from_document, from_image, keyword, asked_option);
                    EXPECT_EQ(from_document.options_equivalent(keyword, last, asked_option),
                              from_image.options_equivalent(keyword, last, asked_option));
                    last = asked_option;
                    ++asked;
                }
            }
        }
    }
    return asked;
}

}  // namespace quor::input::gaussian
