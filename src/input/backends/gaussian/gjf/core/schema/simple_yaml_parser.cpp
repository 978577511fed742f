// The handle over a loaded vocabulary: each query is a few look-ups in the shared tables.
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/schema_tables.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <new>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::vector<std::string> sorted_once(std::vector<std::string> words) {
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

std::vector<std::string> spellings_of(const GroupList& groups) {
    std::vector<std::string> words;
    for (const CandidateGroup& group : groups) {
        words.insert(words.end(), group.forms.begin(), group.forms.end());
    }
    return sorted_once(std::move(words));
}

}  // namespace

SimpleYAMLParser::SimpleYAMLParser() : impl_(std::make_shared<Impl>()) {}
SimpleYAMLParser::SimpleYAMLParser(std::shared_ptr<Impl> tables) : impl_(std::move(tables)) {}
SimpleYAMLParser::SimpleYAMLParser(const SimpleYAMLParser& other) = default;
SimpleYAMLParser::SimpleYAMLParser(SimpleYAMLParser&& other) noexcept = default;
SimpleYAMLParser& SimpleYAMLParser::operator=(const SimpleYAMLParser& other) = default;
SimpleYAMLParser& SimpleYAMLParser::operator=(SimpleYAMLParser&& other) noexcept = default;
SimpleYAMLParser::~SimpleYAMLParser() = default;

bool SimpleYAMLParser::load_from_file(const std::string& path) {
    try {
        impl_ = std::make_shared<Impl>();
        auto fresh = std::make_shared<Impl>();
        if (!load_schema_document(path, *fresh)) {
            return false;
        }
        impl_ = std::move(fresh);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool SimpleYAMLParser::load_embedded_default() {
    impl_ = std::make_shared<Impl>();
    return false;
}

bool SimpleYAMLParser::is_loaded() const noexcept { return impl_->loaded; }

bool SimpleYAMLParser::knows_keyword(const std::string& token) const {
    std::string buffer;
    const std::string_view word = impl_->normalized(token, buffer);
    const GroupHit keyword = impl_->keyword_groups.match(word);
    if (!keyword.found() || keyword.exact) {
        return keyword.exact;
    }
    return !impl_->method_groups.match_exact(word).found() && !impl_->knows_basis_exact(word);
}

bool SimpleYAMLParser::knows_keyword_exact(const std::string& token) const {
    std::string buffer;
    return impl_->keyword_groups.match_exact(impl_->normalized(token, buffer)).found();
}

bool SimpleYAMLParser::knows_method(const std::string& token) const {
    std::string buffer;
    return impl_->method_groups.match(impl_->normalized(token, buffer)).found();
}

bool SimpleYAMLParser::knows_method_exact(const std::string& token) const {
    std::string buffer;
    return impl_->method_groups.match_exact(impl_->normalized(token, buffer)).found();
}

bool SimpleYAMLParser::knows_basis(const std::string& token) const { return impl_->match_basis(token).found(); }

bool SimpleYAMLParser::knows_basis_exact(const std::string& token) const { return impl_->knows_basis_exact(token); }

bool SimpleYAMLParser::knows_option(const std::string& keyword, const std::string& option) const {
    return impl_->match_option(keyword, option).found();
}

bool SimpleYAMLParser::knows_option_exact(const std::string& keyword, const std::string& option) const {
    return impl_->match_option(keyword, option).exact;
}

std::string SimpleYAMLParser::normalize_keyword(const std::string& token) const { return impl_->normalize_keyword(token); }

std::string SimpleYAMLParser::normalize_basis(const std::string& token) const {
    std::string buffer;
    const std::string_view word = impl_->normalized(token, buffer);
    const GroupHit entry = impl_->basis_groups.match(word);
    const bool taken = entry.found() && (entry.exact || !impl_->knows_basis_exact(word));
    return std::string(taken ? entry.canonical : word);
}

std::string SimpleYAMLParser::normalize_option(const std::string& keyword, const std::string& option) const {
    MatchResult match = impl_->match_option(keyword, option);
    return match.found() ? std::move(match.canonical) : impl_->normalize_token(option);
}

bool SimpleYAMLParser::keywords_equivalent(const std::string& a, const std::string& b) const {
    std::string buffer_a;
    std::string buffer_b;
    const std::string_view word_a = impl_->normalized(a, buffer_a);
    const std::string_view word_b = impl_->normalized(b, buffer_b);
    if (word_a == word_b) {
        return true;  // equal words match equally in every list
    }
    for (const GroupList* groups : {&impl_->keyword_groups, &impl_->method_groups}) {
        const GroupHit hit_a = groups->match(word_a);
        const GroupHit hit_b = hit_a.found() ? groups->match(word_b) : GroupHit{};
        if (hit_b.found()) {
            return hit_a.group == hit_b.group;
        }
    }
    return false;
}

KeywordIdentity SimpleYAMLParser::identify_keyword(const std::string& word) const {
    std::string buffer;
    const std::string_view normalized = impl_->normalized(word, buffer);
    return {std::string(normalized), impl_->keyword_groups.match(normalized).group,
            impl_->method_groups.match(normalized).group};
}

bool SimpleYAMLParser::equivalent(const KeywordIdentity& a, const KeywordIdentity& b) noexcept {
    if (a.keyword != nullptr && b.keyword != nullptr) {
        return a.keyword == b.keyword;  // as for equal words
    }
    return (a.method != nullptr && a.method == b.method) || a.word == b.word;
}

OptionIdentity SimpleYAMLParser::identify_option(const std::string& keyword, const std::string& option) const {
    std::string buffer;
    const std::string_view normalized = impl_->normalized(option, buffer);
    const GroupList* options = impl_->find_option_groups(keyword);
    return {std::string(normalized), options == nullptr ? nullptr : options->match(normalized).group};
}

bool SimpleYAMLParser::equivalent(const OptionIdentity& a, const OptionIdentity& b) noexcept {
    return a.word == b.word || (a.option != nullptr && a.option == b.option);
}

bool SimpleYAMLParser::options_equivalent(const std::string& keyword, const std::string& a, const std::string& b) const {
    std::string buffer_a;
    std::string buffer_b;
    const std::string_view word_a = impl_->normalized(a, buffer_a);
    const std::string_view word_b = impl_->normalized(b, buffer_b);
    if (word_a == word_b) {
        return true;
    }
    const GroupList* options = impl_->find_option_groups(keyword);
    const GroupHit hit_a = options == nullptr ? GroupHit{} : options->match(word_a);
    return hit_a.found() && options->match(word_b).group == hit_a.group;
}

std::string SimpleYAMLParser::classify(const std::string& token) const {
    std::string buffer;
    const std::string_view word = impl_->normalized(token, buffer);
    if (word.empty() || !impl_->loaded) {
        return "other";
    }
    const GroupHit keyword = impl_->keyword_groups.match_exact(word);
    const std::string* const category = keyword.found() ? find_value(impl_->categories, keyword.canonical)
                                                        : find_value(impl_->categories, impl_->normalize_keyword(word));
    if (category != nullptr) {
        return *category;
    }
    if (keyword.found()) {
        return "other";
    }
    if (impl_->method_groups.match_exact(word).found()) {
        return "method";
    }
    return impl_->knows_basis_exact(word) ? "basis" : "other";
}

std::vector<std::string> SimpleYAMLParser::keyword_completions(const std::string& prefix) const {
    return impl_->collect_group_completions(prefix, impl_->keyword_groups);
}

std::vector<std::string> SimpleYAMLParser::method_completions(const std::string& prefix) const {
    return impl_->collect_group_completions(prefix, impl_->method_groups);
}

std::vector<std::string> SimpleYAMLParser::basis_completions(const std::string& prefix) const {
    return impl_->basis_completions(prefix);
}

std::vector<std::string> SimpleYAMLParser::option_completions(const std::string& keyword, const std::string& prefix) const {
    return impl_->option_completions(keyword, prefix);
}

std::vector<std::string> SimpleYAMLParser::options_of(const std::string& keyword) const {
    std::vector<std::string> names;
    if (const GroupList* options = impl_->find_option_groups(keyword)) {
        for (const CandidateGroup& option : *options) {
            names.push_back(option.canonical);
        }
    }
    return sorted_once(std::move(names));
}

std::vector<std::string> SimpleYAMLParser::keyword_spellings() const { return spellings_of(impl_->keyword_groups); }
std::vector<std::string> SimpleYAMLParser::method_spellings() const { return spellings_of(impl_->method_groups); }
std::vector<std::string> SimpleYAMLParser::basis_spellings() const { return spellings_of(impl_->basis_groups); }

std::string SimpleYAMLParser::to_lower(const std::string& text) { return to_lower_copy(text); }

std::string SimpleYAMLParser::trim(const std::string& text) { return std::string(trim_view(text)); }

}  // namespace quor::input::gaussian
