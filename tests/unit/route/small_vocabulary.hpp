// A small vocabulary, written for the tests of the route room.
#pragma once

#include <gjf/core/route/keyword_parser.hpp>

#include <gtest/gtest.h>

#include <string>

#include "../../support/files.hpp"

namespace quor::input::gaussian::test {

inline constexpr const char* small_vocabulary = R"(
top_level: {entry_state: GCL, procedure_state: Proc}
states:
  GCL:
    entries:
      - {forms: [opt, optimize], next: GCL}
      - {forms: [optcyc], next: GCL}
      - {forms: [freq, frequency], next: GCL}
      - {forms: [force], next: GCL}
      - {forms: [fopt], next: GCL}
      - {forms: [scf], next: GCL}
      - {forms: [scrf], next: GCL}
      - {forms: [iop], next: GCL}
      - {forms: [geom], next: GCL}
      - {forms: [mp2key], next: GCL}
      - {forms: [g1x], next: GCL}
      - {forms: [g2x], next: GCL}
      - {forms: [g3x], next: GCL}
      - {forms: [g4x], next: GCL}
      - {forms: [g5x], next: GCL}
      - {forms: [g6x], next: GCL}
      - {forms: [g7x], next: GCL}
  Proc:
    entries:
      - {forms: [hf]}
      - {forms: [b3lyp, b3-lyp]}
      - {forms: [b3p86]}
      - {forms: [mp2], action: {result: xprc, value: 100000000}}
      - {forms: [ccsd], action: {result: xprc, value: 100000000}}
      - {forms: ['ccsd(t)'], action: {result: xprc, value: 100000000}}
      - {forms: [cbs-qb3]}
      - {forms: [uff]}
      - {forms: [gvb], action: {result: xkey, value: 0}}
  Basis:
    entries:
      - {forms: [sto-3g]}
      - {forms: [6-31g, 631g]}
      - {forms: [6-31gx]}
      - {forms: [def2svp, def2sv]}
      - {forms: [def2tzvp]}
      - {forms: [auto]}
      - {forms: [gen]}
    syntax:
      transitions:
        - {forms: [6-31g], next: Suffix}
  Suffix:
    syntax:
      transitions:
        - {forms: ['(d)', '*'], next: Exi}
  OptOptions:
    entries:
      - {forms: [calcfc]}
      - {forms: [calcall]}
      - {forms: [tight]}
      - {forms: [maxcycles, maxcycle]}
  ScrfOptions:
    entries:
      - {forms: [pcm]}
      - {forms: [solvent]}
metadata:
  canonical_forms: {freq: frequency}
  option_states: {opt: OptOptions, scrf: [ScrfOptions]}
  categories: {opt: job type, mp2: method}
)";

/// Returns the small vocabulary as it is read once.
inline const SimpleYAMLParser& vocabulary() {
    static const quor::test::TemporaryFolder folder;
    static const SimpleYAMLParser schema = [] {
        SimpleYAMLParser parser;
        EXPECT_TRUE(parser.load_from_file(folder.write("vocabulary.yaml", small_vocabulary)));
        return parser;
    }();
    return schema;
}

/// Makes a parser over the small vocabulary.
inline G16KeywordParser make_parser() {
    static const quor::test::TemporaryFolder folder;
    static const std::string path = folder.write("vocabulary.yaml", small_vocabulary);
    G16KeywordParser parser;
    EXPECT_TRUE(parser.load_config(path));
    return parser;
}

/// Interprets one route with the small vocabulary.
inline ParsedKeywords parse_route(const std::string& route) {
    G16KeywordParser parser = make_parser();
    parser.parse(route);
    return parser.get_parsed_keywords();
}

/// Writes an interpreted route in one line: "keyword{option=value,…}" separated by blanks.
inline std::string keywords_of(const ParsedKeywords& route) {
    std::string text;
    for (const KeywordInfo& keyword : route.keywords) {
        text += (text.empty() ? "" : " ") + keyword.name;
        const char* separator = "{";
        for (const auto& [name, value] : keyword.options) {
            text += separator + name + "=" + value;
            separator = ",";
        }
        text += keyword.options.empty() ? "" : "}";
    }
    return text;
}

inline std::string warnings_of(const ParsedKeywords& route) {
    std::string text;
    for (const ParseWarning& warning : route.warnings) {
        text += (text.empty() ? "" : "\n") + warning.code + " " + warning.message;
    }
    return text;
}

}  // namespace quor::input::gaussian::test
