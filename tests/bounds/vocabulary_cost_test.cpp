// What vocabularies may cost, as documents and as images.
#include <gjf/gjf.hpp>

#include <gjf/core/schema/embedded_schema.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "../../tools/write_schema_image/embedded_image.hpp"
#include "../support/files.hpp"
#include "cost.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

/// A vocabulary document in a file, which is loaded, examined and asked.
void load_and_ask(const std::string& text) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("vocabulary.yaml", text);
    SimpleYAMLParser schema;
    schema.load_from_file(path);
    validate_route_schema(path);
    for (const char* word : {"a", "ab", "aaaaaaaaaaaaaaaa", "b", "1", "s1", "zz"}) {
        schema.basis_completions(word);
        schema.knows_basis(word);
        schema.normalize_keyword(word);
        schema.option_completions(word, word);
    }
}

// A graph of about so many edges in which each state leads to each other one by the edges `edge`, where "@" is the number of
// the state it leads to; the last state ends a word when `ends`.
std::string dense_graph(std::size_t edges, const std::string& edge, bool ends) {
    std::size_t count = 1;
    while (count * count < edges) {
        ++count;
    }
    std::string text = "states:\n  Basis: {includes: [s1]}\n";
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string last = ends && i == count ? "{spec: nul, next: Exi}" : "";
        text += "  s" + std::to_string(i) + ": {specs: [" + numbered(edge + ", ", count) + last + "]}\n";
    }
    return text;
}

// States s1 to sn, each made by `state`, in which "@" is its number and "^" that of the next; the last is followed by the
// first.
std::string ring(std::size_t count, const std::string& state) {
    std::string text;
    for (std::size_t i = 1; i <= count; ++i) {
        for (const char c : state) {
            text += c == '@' ? std::to_string(i) : c == '^' ? std::to_string(i % count + 1) : std::string(1, c);
        }
    }
    return text;
}

const std::vector<Input>& schema_inputs() {
    static const std::vector<Input> all = {
        {"schema entries", 40,
         [](std::size_t n) { return "states: {GCL: {entries: [" + numbered("{forms: [a@, b@]}, ", n) + "]}}"; },
         load_and_ask},
        {"forms of one entry", 80,
         [](std::size_t n) { return "states: {GCL: {entries: [{forms: [x" + numbered(", a@", n) + "]}]}}"; }, load_and_ask},
        {"schema states", 40,
         [](std::size_t n) {
             return "states:\n" + ring(n, "  s@: {includes: [GCL], entries: [{forms: [a@], next: s^}]}\n");
         },
         load_and_ask},
        {"a ring of includes", 40,
         [](std::size_t n) {
             return "states:\n  GCL: {includes: [s1]}\n  Basis: {includes: [s1]}\n" + ring(n, "  s@: {includes: [s^]}\n");
         },
         load_and_ask},
        {"a ring that reads nothing", 40,
         [](std::size_t n) {
             return "states:\n  Basis: {includes: [s1]}\n" + ring(n, "  s@: {specs: [{spec: nul, next: s^}]}\n");
         },
         load_and_ask},
        {"a ring of one letter", 40,
         [](std::size_t n) {
             return "states:\n  Basis: {includes: [s1]}\n" +
                    ring(n, "  s@: {specs: [{spec: a, next: s^}, {spec: b, next: Exi}]}\n");
         },
         load_and_ask},
        {"keywords that share a chain of includes", 12,
         [](std::size_t n) {
             return "states:\n  GCL: {entries: [" + numbered("{forms: [a@]}, ", n) + "]}\n" +
                    ring(n, "  s@: {includes: [s^]}\n") + "metadata:\n  option_states:\n" + numbered("    a@: s1\n", n);
         },
         load_and_ask},
        {"a dense graph that reads nothing", 40, [](std::size_t n) { return dense_graph(n, "{spec: nul, next: s@}", true); },
         load_and_ask},
        {"a dense graph of one letter", 40, [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}", true); },
         load_and_ask},
        {"a dense graph of two letters", 40,
         [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}, {spec: b, next: s@}", true); }, load_and_ask},
        {"a dense graph of letters and doubles", 40,
         [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}, {spec: aa, next: s@}", true); }, load_and_ask},
        {"a dense graph of many words", 40, [](std::size_t n) { return dense_graph(n, "{spec: a@, next: s@}", true); },
         load_and_ask},
        {"a dense graph that never ends", 40, [](std::size_t n) { return dense_graph(n, "{spec: a, next: s@}", false); },
         load_and_ask},
        {"one map named by many aliases", 50,
         [](std::size_t n) {
             return "x: &m {" + numbered("k@: 1, ", n) + "}\nstates: {GCL: {entries: [" + repeated("*m, ", n) + "]}}";
         },
         load_and_ask},
        {"one list named by many aliases", 50,
         [](std::size_t n) {
             return "x: &l [" + repeated("~, ", n) + "]\nstates: {" + numbered("s@: {entries: *l}, ", n) + "}";
         },
         load_and_ask},
        {"a list of entries named by many aliases", 50,
         [](std::size_t n) {
             return "x: &l [" + repeated("{forms: []}, ", n) + "]\nstates: {" + numbered("s@: {entries: *l}, ", n) + "}";
         },
         load_and_ask},
        {"a map that is its own entry", 50,
         [](std::size_t n) {
             return "states: {GCL: &s {" + numbered("k@: 1, ", n) + "entries: [" + repeated("*s, ", n) + "]}}";
         },
         load_and_ask},
        {"nested lists", 20, [](std::size_t n) { return repeated("[", n) + repeated("]", n); }, load_and_ask},
        {"keys that stand twice", 80, [](std::size_t n) { return "states: {" + repeated("GCL: {}, ", n) + "}"; },
         load_and_ask},
    };
    return all;
}

// An image that names one long text many times.
std::string image_of_one_text(std::size_t size, unsigned version) {
    SimpleYAMLParser::Impl tables;
    for (std::size_t i = 0; i < size; ++i) {
        tables.categories.insert_or_assign(std::to_string(i), std::string(version == 2 ? size : 1, 'x'));
    }
    return encode_base64(SchemaImageWriter(tables, version).write());
}

void load_image(const std::string& text) {
    SimpleYAMLParser::Impl tables;
    load_embedded_schema_from_base64(tables, text);
}

const std::vector<Input>& image_inputs() {
    static const std::vector<Input> all = {
        {"an image of many texts", 100, [](std::size_t n) { return image_of_one_text(n, 1); }, load_image},
        {"base64 that is no image", 1000, [](std::size_t n) { return repeated("QUJD\n", n); }, load_image},
    };
    return all;
}

TEST(Cost, OfAnImageThatNamesOneTextManyTimesIsBoundedByItsSize) {
    for (const std::size_t size : {300u, 3000u, 30'000u}) {
        const std::string text = image_of_one_text(size, 2);
        restart_peak();
        const std::size_t before = live_bytes();
        load_image(text);
        EXPECT_LT(peak_bytes() - before, 2'000'000 + 110 * text.size()) << size;
    }
}

TEST(Cost, OfImagesIsLinear) { std::for_each(image_inputs().begin(), image_inputs().end(), expect_linear); }

TEST(Cost, OfVocabulariesIsLinear) { std::for_each(schema_inputs().begin(), schema_inputs().end(), expect_linear); }

}  // namespace
}  // namespace quor::test
