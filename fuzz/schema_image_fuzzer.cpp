// Loads any bytes as the binary image of a vocabulary: what loads answers every question and is written as an image again
// that loads and is written alike. Bytes that do not begin as an image does are taken as base64 text.
#include "fuzzers.hpp"
#include "properties.hpp"

#include "../tools/write_schema_image/embedded_image.hpp"

#include <gjf/core/schema/embedded_schema.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;
using Impl = SimpleYAMLParser::Impl;

void ask(const SimpleYAMLParser& schema, const std::string& word) {
    const std::vector<std::string> completions = schema.basis_completions(word);
    hold(std::is_sorted(completions.begin(), completions.end()), "completions are sorted");
    hold(!schema.knows_basis_exact(word) || schema.knows_basis(word), "what is known exactly is known");
    hold(schema.keywords_equivalent(word, word), "a word equals itself");
    const std::string category = schema.classify(word);
    hold(schema.is_loaded() || category == "other", "an empty vocabulary classifies nothing");
    schema.normalize_keyword(word);
    schema.option_completions(word, word);
}

void ask_words(const std::shared_ptr<Impl>& tables) {
    const SimpleYAMLParser schema(tables);
    for (const GroupList* groups : {&tables->keyword_groups, &tables->method_groups, &tables->basis_groups}) {
        for (std::size_t i = 0; i < std::min<std::size_t>(groups->size(), 4); ++i) {
            for (std::size_t form = 0; form < std::min<std::size_t>((*groups)[i].forms.size(), 4); ++form) {
                ask(schema, (*groups)[i].forms[form].substr(0, 200));
            }
        }
    }
    for (const char* word : {"", "opt", "6-31g(d)", "a"}) {
        ask(schema, word);
    }
}

}  // namespace

int schema_image(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    if (text.substr(0, 4) == "QUOR") {
        text = encode_base64(text);
    }
    const auto tables = std::make_shared<Impl>();
    if (!load_embedded_schema_from_base64(*tables, text)) {
        return 0;
    }
    ask_words(tables);
    const unsigned version = size % 2 == 0 ? 1 : 2;
    const std::string image = SchemaImageWriter(*tables, version).write();
    Impl again;
    hold(load_embedded_schema_from_base64(again, encode_base64(image)), "an image of what an image holds loads");
    hold(SchemaImageWriter(again, version).write() == image, "an image is written, read and written alike");
    return 0;
}

}  // namespace quor::fuzz
