// Images: what is read from one, which are refused, and that one answers like the document it was made of.
#include "image_answers.hpp"

#include "../../../tools/write_schema_image/embedded_image.hpp"

#include <gjf/core/schema/embedded_schema.hpp>

#include <algorithm>
#include <memory>
#include <random>

namespace quor::input::gaussian {
namespace {

TEST(Base64, HasItsAlphabet) {
    EXPECT_EQ(decode_base64_value('A'), 0);
    EXPECT_EQ(decode_base64_value('Z'), 25);
    EXPECT_EQ(decode_base64_value('a'), 26);
    EXPECT_EQ(decode_base64_value('z'), 51);
    EXPECT_EQ(decode_base64_value('0'), 52);
    EXPECT_EQ(decode_base64_value('9'), 61);
    EXPECT_EQ(decode_base64_value('+'), 62);
    EXPECT_EQ(decode_base64_value('/'), 63);
    for (const char c : std::string("=-_ \n!@[`{\0\xFF", 12)) {
        EXPECT_EQ(decode_base64_value(c), -1) << int{c};
    }
}

TEST(Base64, DecodesTextAndLeavesWhiteSpaceOut) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"TWFu", "Man"},
        {"TWE=", "Ma"},
        {"TQ==", "M"},
        {"TWFuTWE=", "ManMa"},
        {" T W\tF\r\nu\v\f", "Man"},
        {"TWFu\nTQ\n=\n=\n", "ManM"},
        {"////", "\xFF\xFF\xFF"},
        {"AAAA", std::string(3, '\0')},
        {"TQ==TWFu", "M"},  // "=" ends the output
        {"TWE=TWFu", "Ma"},
        // refused
        {"T", ""},
        {"TW", ""},
        {"TWF", ""},
        {"TWFuTW", ""},
        {"=", ""},
        {"====", ""},
        {"T===", ""},
        {"=WFu", ""},
        {"T=Fu", ""},
        {"TW!u", ""},
        {"TWF-", ""},
        {"TWFuT$Fu", ""},
        {std::string("TWF\0", 4), ""},
        {"TWF\xE9", ""},
    };
    for (const auto& [text, bytes] : cases) {
        EXPECT_EQ(decode_base64_string(text), bytes) << text;
    }
}

TEST(Base64, DecodesWhatTheEncoderWrites) {
    std::mt19937 random(3);
    std::string bytes;
    for (std::size_t length = 0; length < 200; ++length) {
        EXPECT_EQ(decode_base64_string(encode_base64(bytes)), bytes) << length;
        bytes += static_cast<char>(random() % 256);
    }
}

TEST(EmbeddedSchemaReader, ReadsLittleEndianItems) {
    EmbeddedSchemaReader reader{std::string_view("\x01\x00\xFF\x02\x01\x00\x80\x02\x00\x00\x00hi\x00\x00\x00\x00", 17)};
    EXPECT_TRUE(reader.read_flag());
    EXPECT_FALSE(reader.read_flag());
    EXPECT_TRUE(reader.read_flag());
    EXPECT_EQ(reader.read_u32(), 0x80000102u);
    EXPECT_EQ(reader.read_string(), "hi");
    EXPECT_EQ(reader.read_string(), "");
    EXPECT_TRUE(reader.ok);
    EXPECT_TRUE(reader.at_end());
    EXPECT_FALSE(reader.read_flag());
    EXPECT_FALSE(reader.ok);
}

TEST(EmbeddedSchemaReader, FailsForGoodAtTheFirstMissingByte) {
    EmbeddedSchemaReader short_count{std::string_view("\x01\x00\x00", 3)};
    EXPECT_EQ(short_count.read_u32(), 0u);
    EXPECT_FALSE(short_count.ok);
    EXPECT_FALSE(short_count.read_flag());
    EmbeddedSchemaReader short_text{std::string_view("\x03\x00\x00\x00hi", 6)};
    EXPECT_EQ(short_text.read_string(), "");
    EXPECT_FALSE(short_text.ok);
    EmbeddedSchemaReader huge_text{std::string_view("\xFF\xFF\xFF\xFFhi", 6)};
    EXPECT_EQ(huge_text.read_string(), "");
    EXPECT_FALSE(huge_text.ok);
    for (const std::string& bytes :
         {std::string(), std::string("\xFF\xFF\xFF\xFF", 4), std::string("\x01\x00\x00\x00\x01", 5)}) {
        EmbeddedSchemaReader texts{bytes};
        std::vector<std::string> values;
        EXPECT_FALSE(read_string_vector(texts, values));
        EmbeddedSchemaReader edges{bytes};
        std::vector<GraphEdge> edge_values;
        EXPECT_FALSE(read_graph_edge_vector(edges, edge_values));
        EmbeddedSchemaReader groups{bytes};
        std::vector<CandidateGroup> group_values;
        EXPECT_FALSE(read_candidate_group_vector(groups, group_values));
    }
}

std::string u32(std::size_t value) {
    std::string bytes;
    append_u32(bytes, value);
    return bytes;
}

std::string text(std::string_view value) { return u32(value.size()) + std::string(value); }

std::string image(std::size_t version, const std::string& body) { return std::string("QUORG16\0", 8) + u32(version) + body; }

bool image_loads(const std::string& bytes) {
    SimpleYAMLParser::Impl schema;
    return load_embedded_schema_from_base64(schema, encode_base64(bytes));
}

/// A body of version 1 written by hand, item by item.
std::vector<std::string> first_version_items() {
    return {
        "\x01",
        std::string(1, '\0'),  // loaded, case_sensitive
        text("gcl"),
        text("proc"),
        text("basis"),  //
        u32(1),
        text("gcl"),
        u32(1),
        text("jobs"),  // state_includes
        u32(1),
        text("basis"),
        u32(2),  // state_edges
        text("cc-pvdz"),
        text("exi"),
        std::string(1, '\0'),
        text(""),
        text("exi"),
        "\x07",
        u32(1),
        u32(2),
        text("opt"),
        text("optimization"),
        text("gcl"),
        text("opt"),  // keyword_groups
        u32(1),
        u32(1),
        text("hf"),
        text(""),
        text("hf"),  // method_groups
        u32(0),      // basis_groups
        u32(1),
        text("opt"),
        u32(1),
        u32(1),
        text("tight"),
        text(""),
        text("tight"),  // option_groups
        u32(1),
        text("opt"),
        text("job"),  // categories
    };
}

std::vector<std::string> second_version_items() {
    return {
        u32(10),
        text("gcl"),
        text("proc"),
        text("basis"),
        text("exi"),
        text("opt"),
        text("optimization"),
        text("hf"),
        text("tight"),
        text("job"),
        text(""),
        "\x01",
        std::string(1, '\0'),  // loaded, case_sensitive
        u32(0),
        u32(1),
        u32(2),  // names
        u32(1),
        u32(0),
        u32(1),
        u32(8),  // state_includes: gcl includes "job"
        u32(1),
        u32(2),
        u32(1),
        u32(6),
        u32(3),
        std::string(1, '\0'),  // state_edges: basis reads "hf"
        u32(3),                // the table of entries
        u32(2),
        u32(4),
        u32(5),
        u32(0),
        u32(4),  //
        u32(1),
        u32(6),
        u32(9),
        u32(6),  //
        u32(1),
        u32(7),
        u32(9),
        u32(7),  //
        u32(1),
        u32(0),
        u32(2),
        u32(1),
        u32(0),
        u32(1),
        u32(1),  // keyword, method and basis lists
        u32(1),
        u32(4),
        u32(1),
        u32(2),  // option_groups
        u32(1),
        u32(4),
        u32(8),  // categories
    };
}

std::string joined(const std::vector<std::string>& items) {
    std::string bytes;
    for (const std::string& item : items) {
        bytes += item;
    }
    return bytes;
}

TEST(EmbeddedSchema, ReadsTheFirstVersion) {
    SimpleYAMLParser::Impl schema;
    schema.categories["left over"] = "from before";
    ASSERT_TRUE(load_embedded_schema_from_base64(schema, encode_base64(image(1, joined(first_version_items())))));
    EXPECT_TRUE(schema.loaded);
    EXPECT_FALSE(schema.case_sensitive);
    EXPECT_EQ(schema.entry_state, "gcl");
    EXPECT_EQ(schema.procedure_state, "proc");
    EXPECT_EQ(schema.basis_state, "basis");
    EXPECT_EQ(schema.state_includes.at("gcl"), (Words{"jobs"}));
    ASSERT_EQ(schema.state_edges.at("basis").size(), 2u);
    EXPECT_EQ(schema.state_edges.at("basis")[0].token, "cc-pvdz");
    EXPECT_FALSE(schema.state_edges.at("basis")[0].null_edge);
    EXPECT_TRUE(schema.state_edges.at("basis")[1].null_edge);
    ASSERT_EQ(schema.keyword_groups.size(), 1u);
    EXPECT_EQ(schema.keyword_groups[0].forms, (Words{"opt", "optimization"}));
    EXPECT_EQ(schema.keyword_groups[0].next, "gcl");
    EXPECT_EQ(schema.keyword_groups[0].canonical, "opt");
    EXPECT_EQ(schema.keyword_groups[0].state, "");
    EXPECT_FALSE(schema.keyword_groups[0].has_action);
    EXPECT_EQ(canonical_words(schema.method_groups), (Words{"hf"}));
    EXPECT_TRUE(schema.basis_groups.empty());
    EXPECT_EQ(schema.match_option("optim", "ti").canonical, "tight");
    EXPECT_EQ(schema.categories.size(), 1u);
    EXPECT_EQ(schema.categories.at("opt"), "job");
    EXPECT_TRUE(schema.knows_basis_exact("CC-pVDZ"));
    EXPECT_TRUE(schema.procedure_groups.empty());
    EXPECT_TRUE(schema.state_groups.empty());
    EXPECT_TRUE(schema.option_states.empty());
}

TEST(EmbeddedSchema, ReadsTheSecondVersion) {
    SimpleYAMLParser::Impl schema;
    ASSERT_TRUE(load_embedded_schema_from_base64(schema, encode_base64(image(2, joined(second_version_items())))));
    EXPECT_TRUE(schema.loaded);
    EXPECT_EQ(schema.entry_state, "gcl");
    EXPECT_EQ(schema.state_includes.at("gcl"), (Words{"job"}));
    EXPECT_TRUE(schema.knows_basis_exact("hf"));
    EXPECT_EQ(schema.keyword_groups[0].forms, (Words{"opt", "optimization"}));
    EXPECT_EQ(schema.keyword_groups[0].next, "gcl");
    EXPECT_EQ(canonical_words(schema.method_groups), (Words{"hf", "opt"}));
    EXPECT_EQ(canonical_words(schema.basis_groups), (Words{"hf"}));
    EXPECT_EQ(canonical_words(schema.option_groups.at("opt")), (Words{"tight"}));
    EXPECT_EQ(schema.categories.at("opt"), "job");
}

TEST(EmbeddedSchema, RefusesTextThatIsNoImage) {
    SimpleYAMLParser::Impl schema;
    for (const std::string base64 : {"", "  \n", "abcdef", "QUORG16", "!!!!", "UVVP", "===="}) {
        EXPECT_FALSE(load_embedded_schema_from_base64(schema, base64)) << base64;
    }
    const std::string body = joined(first_version_items());
    EXPECT_TRUE(image_loads(image(1, body)));
    for (const std::size_t version : {0u, 2u, 3u, 257u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(image_loads(image(version, body))) << version;
    }
    EXPECT_FALSE(image_loads("QUORG16"));
    EXPECT_FALSE(image_loads(std::string("QUORG16\0", 8)));
    EXPECT_FALSE(image_loads(std::string("QUORG16\0\1\0\0", 11)));
    EXPECT_FALSE(image_loads(std::string("QUORG17\0", 8) + u32(1) + body));
    EXPECT_FALSE(image_loads("QUORG16\1" + u32(1) + body));
    EXPECT_FALSE(image_loads("quorg16" + std::string(1, '\0') + u32(1) + body));
}

TEST(EmbeddedSchema, RefusesEveryImageCutShortOrTooLong) {
    const std::string images[] = {image(1, joined(first_version_items())), image(2, joined(second_version_items()))};
    for (const std::string& whole : images) {
        ASSERT_TRUE(image_loads(whole));
        for (std::size_t length = 0; length < whole.size(); ++length) {
            EXPECT_FALSE(image_loads(whole.substr(0, length))) << length;
        }
        EXPECT_FALSE(image_loads(whole + std::string(1, '\0')));
        EXPECT_FALSE(image_loads(whole + whole));
    }
}

TEST(EmbeddedSchema, RefusesIndicesBeyondTheirTables) {
    const std::vector<std::string> items = second_version_items();
    std::size_t refused = 0;
    for (std::size_t index = 11; index < items.size(); ++index) {
        for (const std::size_t beyond : {10u, 11u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
            std::vector<std::string> changed = items;
            if (changed[index].size() == 4) {  // a count or an index
                changed[index] = u32(beyond);
                EXPECT_FALSE(image_loads(image(2, joined(changed)))) << index << ' ' << beyond;
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 100u);
    // Five texts have the indices 0 to 4.
    const std::string table = u32(5) + text("a") + text("b") + text("c") + text("d") + text("e") + std::string(2, '\0');
    const std::string rest = u32(0) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0);
    EXPECT_TRUE(image_loads(image(2, table + u32(0) + u32(1) + u32(4) + rest)));
    EXPECT_FALSE(image_loads(image(2, table + u32(0) + u32(1) + u32(5) + rest)));
}

TEST(EmbeddedSchema, SurvivesEveryChangedByte) {
    std::mt19937 random(5);
    for (const std::string& whole : {image(1, joined(first_version_items())), image(2, joined(second_version_items()))}) {
        for (std::size_t index = 12; index < whole.size(); ++index) {
            for (int round = 0; round < 8; ++round) {
                std::string changed = whole;
                changed[index] = static_cast<char>(random() % 256);
                SimpleYAMLParser::Impl schema;
                if (load_embedded_schema_from_base64(schema, encode_base64(changed))) {
                    EXPECT_LE(schema.basis_completions("c").size(), 8u);
                }
            }
        }
    }
}

TEST(EmbeddedSchema, NeverTrustsACount) {
    const std::string huge = u32(0xFFFFFFFF);
    EXPECT_FALSE(image_loads(image(2, huge)));
    EXPECT_FALSE(image_loads(image(1, std::string(2, '\0') + huge)));
    EXPECT_FALSE(image_loads(image(1, std::string(2, '\0') + u32(0) + u32(0) + u32(0) + huge)));
    EXPECT_FALSE(image_loads(image(1, std::string(2, '\0') + u32(0) + u32(0) + u32(0) + u32(0) + huge)));
    EXPECT_FALSE(image_loads(image(1, std::string(2, '\0') + u32(0) + u32(0) + u32(0) + u32(0) + u32(0) + huge)));
}

TEST(EmbeddedSchema, RefusesAnImageThatNamesOneLongTextTooOften) {
    std::string body = u32(2) + text("") + text(std::string(1 << 20, 'x')) + std::string(2, '\0');
    body += u32(0) + u32(0) + u32(0);  // names
    body += u32(1) + u32(0) + u32(1 << 16);
    for (int reference = 0; reference < 1 << 16; ++reference) {
        body += u32(1);
    }
    for (int table = 0; table < 7; ++table) {
        body += u32(0);
    }
    EXPECT_FALSE(image_loads(image(2, body)));
}

TEST(EmbeddedSchema, ReadsItemsThroughTheirOwnReaders) {
    const StringTable strings = {"a", "b"};
    const std::string bytes = u32(2) + u32(1) + u32(0) + u32(0) + u32(1) + "\x01";
    EmbeddedSchemaReader reader{bytes};
    std::vector<std::string> texts;
    EXPECT_TRUE(read_string_id_vector(reader, strings, texts));
    EXPECT_EQ(texts, (Words{"b", "a"}));
    GraphEdge edge;
    EXPECT_TRUE(read_graph_edge_from_table(reader, strings, edge));
    EXPECT_EQ(edge.token, "a");
    EXPECT_EQ(edge.next, "b");
    EXPECT_TRUE(edge.null_edge);
    EXPECT_TRUE(reader.at_end());
    std::string missing;
    EXPECT_FALSE(read_string_id(reader, strings, missing));

    const std::string bad_index = u32(2) + u32(0);
    EmbeddedSchemaReader failing{bad_index};
    EXPECT_FALSE(read_string_id(failing, strings, missing));
    EXPECT_FALSE(read_string_id(failing, strings, missing));
    EXPECT_EQ(failing.position, 4u);  // nothing is read after the failure
}

/// Asks a document and its images the same questions; returns how many words and options were asked.
std::size_t compare_images(const std::shared_ptr<SimpleYAMLParser::Impl>& document) {
    std::size_t asked = 0;
    for (const unsigned version : {1u, 2u}) {
        const auto read_back = std::make_shared<SimpleYAMLParser::Impl>();
        EXPECT_TRUE(
            load_embedded_schema_from_base64(*read_back, encode_base64(SchemaImageWriter(*document, version).write())));
        EXPECT_EQ(SchemaImageWriter(*read_back, version).write(), SchemaImageWriter(*document, version).write());
        asked += compare_answers(document, read_back);
    }
    return asked;
}

TEST(SchemaImageAsText, AnswersLikeItsDocument) {
    const auto document = std::make_shared<SimpleYAMLParser::Impl>(tables_of(image_vocabulary));
    EXPECT_GT(compare_images(document), 200u);
    const auto sensitive =
        std::make_shared<SimpleYAMLParser::Impl>(tables_of(std::string("case_sensitive: true\n") + image_vocabulary));
    EXPECT_GT(compare_images(sensitive), 200u);
    EXPECT_EQ(compare_images(std::make_shared<SimpleYAMLParser::Impl>()), 0u);
}

TEST(SchemaImageAsText, OfTheShippedVocabularyAnswersLikeTheDocument) {
    const auto document = std::make_shared<SimpleYAMLParser::Impl>();
    ASSERT_TRUE(load_schema_document(QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml", *document));
    EXPECT_GT(compare_images(document), 5000u);
}

}  // namespace
}  // namespace quor::input::gaussian
