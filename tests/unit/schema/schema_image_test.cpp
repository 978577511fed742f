// The image beside a document: it holds all tables, answers like the document, and serves that document alone; damaged it is
// passed over.
#include "image_answers.hpp"

#include <gjf/core/schema/schema_image.hpp>

#include <filesystem>
#include <random>

namespace quor::input::gaussian {
namespace {

using Tables = SimpleYAMLParser::Impl;

std::shared_ptr<Tables> tables_from_text(const std::string& document) {
    auto tables = std::make_shared<Tables>();
    EXPECT_TRUE(load_schema_text(document, *tables)) << document.substr(0, 80);
    return tables;
}

std::string image_of(const std::string& document) { return write_schema_image(*tables_from_text(document), document); }

/// The first line of every image, behind which the sum stands.
std::string first_line() {
    const std::string image = image_of(with_opt);
    return image.substr(0, image.find('\n') + 1);
}

std::string behind_first_line(const std::string& image) { return image.substr(first_line().size()); }

/// Puts the right sum before changed content.
std::string with_sum(const std::string& content) {
    std::string sum;
    const std::uint64_t hash = TextHash()(content);
    for (unsigned byte = 0; byte < 8; ++byte) {
        sum += static_cast<char>((hash >> (8 * byte)) & 0xFF);
    }
    return first_line() + sum + content;
}

/// The image of a document with the tables of another one.
std::string image_with_tables_of(const std::string& other, const std::string& document) {
    return write_schema_image(*tables_from_text(other), document);
}

void expect_empty(const Tables& tables) {
    EXPECT_FALSE(tables.loaded);
    EXPECT_TRUE(tables.state_groups.empty());
    EXPECT_TRUE(tables.state_edges.empty());
    EXPECT_TRUE(tables.keyword_groups.empty());
    EXPECT_EQ(tables.entry_state, "GCL");
}

void expect_refused(const std::string& image, const std::string& document) {
    Tables tables;
    EXPECT_FALSE(read_schema_image(image, document, tables));
    expect_empty(tables);
}

std::string shipped_document() { return test::bytes_of(QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml"); }

std::size_t compare_with_image(const std::string& document) {
    const auto from_document = tables_from_text(document);
    const std::string image = write_schema_image(*from_document, document);
    const auto from_image = std::make_shared<Tables>();
    EXPECT_TRUE(read_schema_image(image, document, *from_image));
    EXPECT_EQ(write_schema_image(*from_image, document), image);
    return compare_answers(from_document, from_image);
}

TEST(SchemaImage, AnswersLikeItsDocument) {
    EXPECT_GT(compare_with_image(image_vocabulary), 100U);
    EXPECT_GT(compare_with_image(std::string("case_sensitive: true\n") + image_vocabulary), 100U);
    EXPECT_EQ(compare_with_image("states: {}\n"), 0U);
}

TEST(SchemaImage, OfTheShippedVocabularyAnswersLikeTheDocument) {
    EXPECT_GT(compare_with_image(shipped_document()), 20000U);
}

TEST(SchemaImage, HoldsWhatNoQuestionReaches) {
    const std::string document = R"yaml(
top_level: {entry_state: Start, procedure_state: Methods}
metadata:
  canonical_forms: {freq: frequency}
  option_states: {opt: [Options, More]}
  pure_dft: {exchange_components: [b, pbe], correlation_components: [lyp], prefixes: [lc-], aliases: {b3lypx: b3lyp}}
states:
  Start: {entries: [{forms: [opt], consume: true}, {forms: [frequency]}]}
  Methods: {entries: [{forms: [hf], action: {result: XPrc, value: -3000000000}}, {forms: [act], action: {}}]}
)yaml";
    Tables tables;
    ASSERT_TRUE(read_schema_image(image_of(document), document, tables));
    EXPECT_EQ(tables.entry_state, "start");
    EXPECT_EQ(tables.procedure_state, "methods");
    EXPECT_EQ(tables.canonical_forms.at("frequency"), "freq");
    EXPECT_EQ(tables.option_states.at("opt"), (Words{"options", "more"}));
    EXPECT_EQ(tables.exchange_components, (std::set<std::string, std::less<>>{"b", "pbe"}));
    EXPECT_EQ(tables.correlation_components.count("lyp"), 1U);
    EXPECT_EQ(tables.functional_prefixes.count("lc-"), 1U);
    EXPECT_EQ(tables.functional_aliases.at("b3lypx"), "b3lyp");
    EXPECT_EQ(canonical_words(tables.procedure_groups), (Words{"hf", "act"}));
    const CandidateGroup& opt = tables.state_groups.at("start").front();
    EXPECT_TRUE(opt.consume);
    EXPECT_FALSE(opt.has_action);
    EXPECT_EQ(opt.state, "start");
    const CandidateGroup& hf = tables.state_groups.at("methods").front();
    EXPECT_TRUE(hf.has_action);
    EXPECT_EQ(hf.result, "xprc");
    EXPECT_EQ(hf.value, -3000000000);
}

TEST(SchemaImage, ServesItsOwnDocumentAlone) {
    const std::string image = image_with_tables_of(with_irc, with_opt);
    Tables tables;
    EXPECT_TRUE(read_schema_image(image, with_opt, tables));
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"irc"}));
    expect_refused(image, with_irc);
    expect_refused(image, "");
    expect_refused(image, with_opt.substr(0, with_opt.size() - 1));
    expect_refused(image, with_opt + " ");
}

TEST(SchemaImage, RefusesEveryChangedByteAndEveryOtherLength) {
    const std::string image = image_of(with_opt);
    for (std::size_t place = 0; place < image.size(); ++place) {
        for (const char change : {'\x01', '\x20', '\x80'}) {
            std::string changed = image;
            changed[place] = static_cast<char>(changed[place] ^ change);
            expect_refused(changed, with_opt);
        }
        expect_refused(image.substr(0, place), with_opt);
    }
    expect_refused(image + '\0', with_opt);
    expect_refused(image + image, with_opt);
}

TEST(SchemaImage, SurvivesAnyNumberUnderARightSum) {
    const std::string document = image_vocabulary;
    const std::string image = image_of(document);
    const std::size_t begin = first_line().size() + 8;
    const std::string content = image.substr(begin);
    constexpr std::size_t identity = 2 + 8;  // size and sum of the document
    std::mt19937 random(5);
    std::size_t refused = 0;
    for (std::size_t place = identity; place < content.size(); ++place) {
        std::string changed = content;
        changed[place] = static_cast<char>(random() % 3 == 0 ? 0xFF : random() % 256);
        const auto tables = std::make_shared<Tables>();
        if (!read_schema_image(with_sum(changed), document, *tables)) {
            expect_empty(*tables);
            ++refused;
            continue;
        }
        const SimpleYAMLParser schema(tables);
        for (const char* word : {"opt", "op", "freq", "6-31g(d)", "cc-pvdz", "hf", "b"}) {
            schema.knows_keyword(word);
            schema.knows_basis(word);
            schema.basis_completions(word);
            schema.option_completions(word, "t");
        }
        expect_refused(with_sum(content.substr(0, place)), document);
    }
    EXPECT_GT(refused, content.size() / 4);
}

TEST(SchemaImage, NeverTrustsACount) {
    const std::string identity = behind_first_line(image_of("states: {}\n")).substr(8, 1 + 8);
    const std::string flag_and_names(4, '\0');
    std::string content = identity + flag_and_names;
    for (std::size_t table = 0; table < 16; ++table) {
        for (const char* huge : {"\xFF\xFF\xFF\xFF\x0F", "\xFF\xFF\xFF\xFF\x7F", "\xFF\xFF\xFF\xFF\xFF\x01", "\x80"}) {
            expect_refused(with_sum(content + huge), "states: {}\n");
        }
        content += '\0';
    }
}

TEST(SchemaImage, BesideItsDocumentIsReadForIt) {
    const TemporaryFolder folder;
    const std::string path = folder.write("v.yaml", with_opt);
    folder.write("v.yaml.image", image_with_tables_of(with_irc, with_opt));
    EXPECT_EQ(find_schema_image(path), path + ".image");
    SimpleYAMLParser parser;
    ASSERT_TRUE(parser.load_from_file(path));
    EXPECT_TRUE(parser.knows_keyword_exact("irc"));
    EXPECT_FALSE(parser.knows_keyword_exact("opt"));
}

TEST(SchemaImage, ServesNoLongerWhereOneByteOfTheDocumentChanged) {
    const TemporaryFolder folder;
    const std::string path = folder.write("v.yaml", with_opt);
    folder.write("v.yaml.image", image_of(with_opt));
    const auto time = std::filesystem::last_write_time(path);
    std::string changed = with_opt;
    changed[changed.find("opt")] = 'a';
    folder.write("v.yaml", changed);
    std::filesystem::last_write_time(path, time);
    SimpleYAMLParser parser;
    ASSERT_TRUE(parser.load_from_file(path));
    EXPECT_TRUE(parser.knows_keyword_exact("apt"));
    EXPECT_FALSE(parser.knows_keyword_exact("opt"));
}

TEST(SchemaImage, LeavesTheDocumentToServeWhereItIsOfNoUse) {
    const std::string image = image_of(with_opt);
    const std::string useless[] = {"", "vocabulary", with_opt, image.substr(0, image.size() / 2),
                                   std::string(image).replace(3, 1, "x")};
    for (const std::string& content : useless) {
        const TemporaryFolder folder;
        const std::string path = folder.write("v.yaml", with_opt);
        folder.write("v.yaml.image", content);
        SimpleYAMLParser parser;
        EXPECT_TRUE(parser.load_from_file(path));
        EXPECT_TRUE(parser.knows_keyword_exact("opt"));
    }
    const TemporaryFolder folder;
    const std::string path = folder.write("v.yaml", with_opt);
    std::filesystem::create_directory(folder / "v.yaml.image");
    EXPECT_EQ(find_schema_image(path), "");
    SimpleYAMLParser parser;
    EXPECT_TRUE(parser.load_from_file(path));
    EXPECT_FALSE(parser.load_from_file((folder / "v.yaml.image").string()));
}

TEST(SchemaImage, DoesNotMakeUpForADocumentThatIsGone) {
    const TemporaryFolder folder;
    folder.write("v.yaml.image", image_of(with_opt));
    SimpleYAMLParser parser;
    EXPECT_FALSE(parser.load_from_file((folder / "v.yaml").string()));
    EXPECT_FALSE(parser.is_loaded());
}

}  // namespace
}  // namespace quor::input::gaussian
