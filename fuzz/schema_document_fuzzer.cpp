// Loads any text as a vocabulary document: it loads or it does not, and when it loads, words are matched as the plain rules
// say, and an image made of it answers alike.
#include "fuzzers.hpp"
#include "properties.hpp"

#include "../tests/unit/schema/linear_rules.hpp"
#include "../tools/write_schema_image/embedded_image.hpp"

#include <gjf/core/schema/embedded_schema.hpp>
#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/schema_validation.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;
using Impl = SimpleYAMLParser::Impl;

/// A file in memory, with a path while it lives.
class MemoryFile {
   public:
    explicit MemoryFile(const std::string& text) : descriptor_(::memfd_create("document", 0)) {
        hold(descriptor_ >= 0 && ::write(descriptor_, text.data(), text.size()) == static_cast<ssize_t>(text.size()),
             "a file in memory can be written");
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

   private:
    int descriptor_;
};

// Some words of the document, whole, cut short and made longer.
std::vector<std::string> some_words(const Impl& schema) {
    std::vector<std::string> words = {"opt", "b3lyp", "6-31g(d)", ""};
    for (const GroupList* groups : {&schema.keyword_groups, &schema.method_groups, &schema.basis_groups}) {
        for (std::size_t i = 0; i < std::min<std::size_t>(groups->size(), 6); ++i) {
            for (const std::string& form : (*groups)[i].forms) {
                words.push_back(form);
                words.push_back(form.substr(0, form.size() / 2 + 1));
            }
        }
    }
    words.resize(std::min<std::size_t>(words.size(), 40));
    return words;
}

void hold_linear_rules(const Impl& schema, const std::string& word, const GroupList& groups) {
    const linear::Spellings spellings(groups);
    const std::string token = schema.normalize_token(word);
    const linear::Answer expected = linear::ask(token, spellings);
    const MatchResult match = schema.match_group(word, groups);
    hold(match.exact == expected.match.exact && match.canonical == expected.match.canonical,
         "matching follows the plain rules");
    const std::vector<std::string> completions = schema.collect_group_completions(word, groups);
    hold(std::equal(completions.begin(), completions.end(), expected.completions.begin(), expected.completions.end()),
         "completions follow the plain rules");
}

void hold_same_answers(const SimpleYAMLParser& a, const SimpleYAMLParser& b, const std::string& word) {
    hold(a.knows_keyword(word) == b.knows_keyword(word) && a.knows_method(word) == b.knows_method(word) &&
             a.knows_basis(word) == b.knows_basis(word) && a.knows_option(word, word) == b.knows_option(word, word),
         "an image knows the words of its document");
    hold(a.normalize_keyword(word) == b.normalize_keyword(word) && a.classify(word) == b.classify(word) &&
             a.basis_completions(word) == b.basis_completions(word),
         "an image answers like its document");
}

}  // namespace

int schema_document(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(std::string(reinterpret_cast<const char*>(data), size));
    const std::vector<SchemaProblem> problems = validate_route_schema(file.path());
    const auto in_order = [](const SchemaProblem& a, const SchemaProblem& b) { return a.line < b.line; };
    hold(std::is_sorted(problems.begin(), problems.end(), in_order), "problems come in the order of lines");
    SimpleYAMLParser schema;
    const bool loaded = schema.load_from_file(file.path());
    hold(loaded == schema.is_loaded(), "a document that does not load leaves an empty vocabulary");
    hold(loaded || !problems.empty(), "a document that does not load has a problem");
    if (!loaded) {
        return 0;
    }
    const auto tables = std::make_shared<Impl>();
    hold(load_schema_document(file.path(), *tables), "a document that loads loads again");
    const auto from_image = std::make_shared<Impl>();
    const std::string image = SchemaImageWriter(*tables, size % 2 == 0 ? 1 : 2).write();
    hold(load_embedded_schema_from_base64(*from_image, encode_base64(image)), "an image of a document loads");
    const SimpleYAMLParser image_schema(from_image);
    for (const std::string& word : some_words(*tables)) {
        hold_linear_rules(*tables, word, tables->keyword_groups);
        hold_linear_rules(*tables, word, tables->basis_groups);
        hold_same_answers(schema, image_schema, word);
    }
    return 0;
}

}  // namespace quor::fuzz
