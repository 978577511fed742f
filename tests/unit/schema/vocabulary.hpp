// Vocabularies made from text, in a temporary folder that goes with its owner.
#pragma once

#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../../support/files.hpp"

namespace quor::input::gaussian {

using quor::test::TemporaryFolder;

inline const std::string with_opt = "states: {GCL: {entries: [{forms: [opt]}]}}\n";
inline const std::string with_irc = "states: {GCL: {entries: [{forms: [irc]}]}}\n";

/// Loads a document given as text; returns whether that succeeded.
inline bool load_tables(const std::string& document, SimpleYAMLParser::Impl& tables) {
    const TemporaryFolder folder;
    return load_schema_document(folder.write("vocabulary.yaml", document), tables);
}

/// Loads a document that must be good.
inline SimpleYAMLParser::Impl tables_of(const std::string& document) {
    SimpleYAMLParser::Impl tables;
    EXPECT_TRUE(load_tables(document, tables)) << document;
    return tables;
}

inline SimpleYAMLParser parser_of(const std::string& document) {
    const TemporaryFolder folder;
    SimpleYAMLParser parser;
    EXPECT_TRUE(parser.load_from_file(folder.write("vocabulary.yaml", document))) << document;
    return parser;
}

inline bool document_loads(const std::string& document) {
    SimpleYAMLParser::Impl tables;
    return load_tables(document, tables);
}

inline std::vector<std::string> canonical_words(const GroupList& groups) {
    std::vector<std::string> words;
    for (const CandidateGroup& group : groups) {
        words.push_back(group.canonical);
    }
    return words;
}

using Words = std::vector<std::string>;

}  // namespace quor::input::gaussian
