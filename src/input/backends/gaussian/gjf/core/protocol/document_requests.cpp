// Answers requests about one text by the room language/.
#include <gjf/core/protocol/document_requests.hpp>

#include <gjf/core/document/aligned_text.hpp>
#include <gjf/core/language/hover.hpp>
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/language/names.hpp>
#include <gjf/core/language/offers.hpp>
#include <gjf/core/language/structure.hpp>
#include <gjf/core/protocol/code_actions.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Question = const DocumentQuestion&;

Message markdown(const std::string& text) { return {{"kind", "markdown"}, {"value", text}}; }

Message hover(Question question) {
    const std::optional<Hover> found = hover_at(question.document.file(), question.offset());
    return !found ? Message()
                  : Message{{"contents", markdown(found->markdown)}, {"range", question.document.range_json(found->place)}};
}

// CompletionItemKind of the protocol.
int number_of(OfferKind kind) {
    constexpr std::array<int, 9> numbers = {14, 3, 7, 10, 12, 5, 21, 18, 17};
    return numbers[static_cast<std::size_t>(kind)];
}

Message completion(Question question) {
    const Offers offers = offers_at(question.document.file(), question.offset());
    Message items = Message::array();
    const Message range = question.document.range_json(offers.replaced);
    std::size_t number = 0;
    for (const Offer& offer : offers.offers) {
        const std::string order = std::to_string(1000000 + 100000 * static_cast<std::size_t>(offer.rank) + number++);
        items.push_back({{"label", offer.text},
                         {"kind", number_of(offer.kind)},
                         {"sortText", order},
                         {"textEdit", {{"range", range}, {"newText", offer.text}}}});
        if (!offer.detail.empty()) {
            items.back()["detail"] = offer.detail;
        }
    }
    return {{"isIncomplete", false}, {"items", std::move(items)}};
}

Message locations(const OpenDocument& document, const std::vector<Span>& places) {
    Message list = Message::array();
    for (const Span place : places) {
        list.push_back({{"uri", document.uri()}, {"range", document.range_json(place)}});
    }
    return list;
}

Message definition(Question question) {
    return locations(question.document, occurrences_at(question.document.file(), question.offset()).definitions);
}

std::vector<Span> all_places(const Occurrences& found, bool with_definitions) {
    std::vector<Span> places = found.uses;
    if (with_definitions) {
        places.insert(places.end(), found.definitions.begin(), found.definitions.end());
    }
    std::sort(places.begin(), places.end(), [](Span a, Span b) { return a.begin < b.begin; });
    return places;
}

Message references(Question question) {
    const Occurrences found = occurrences_at(question.document.file(), question.offset());
    return locations(question.document, all_places(found, flag_member(question.parameters, "context/includeDeclaration")));
}

Message highlights(Question question) {
    Message list = Message::array();
    for (const Span place : all_places(occurrences_at(question.document.file(), question.offset()), true)) {
        list.push_back({{"range", question.document.range_json(place)}, {"kind", 1}});
    }
    return list;
}

Message prepare_rename(Question question) {
    const std::optional<Span> place = renamable_at(question.document.file(), question.offset());
    return !place ? Message()
                  : Message{{"range", question.document.range_json(*place)},
                            {"placeholder", std::string(place->in(question.document.text()))}};
}

Message rename(Question question) {
    const std::string name = text_member(question.parameters, "newName");
    try {
        return question.document.workspace_edit(rename_edits(question.document.file(), question.offset(), name));
    } catch (const RenameError& error) {
        throw RequestFault(MessageError::RequestFailed, error.what());
    }
}

// SymbolKind of the protocol.
int number_of(PartKind kind) {
    constexpr std::array<int, 7> numbers = {2, 7, 12, 15, 5, 13, 3};
    return numbers[static_cast<std::size_t>(kind)];
}

Message symbols_of(const OpenDocument& document, const std::vector<FilePart>& parts) {
    Message list = Message::array();
    for (const FilePart& part : parts) {
        const Message range = document.range_json(part.lines);
        list.push_back({{"name", part.name},
                        {"detail", part.detail},
                        {"kind", number_of(part.kind)},
                        {"range", range},
                        {"selectionRange", {{"start", range["start"]}, {"end", range["start"]}}},
                        {"children", symbols_of(document, part.parts)}});
    }
    return list;
}

Message symbols(Question question) { return symbols_of(question.document, file_parts(question.document.file())); }

void add_folds(const OpenDocument& document, const std::vector<FilePart>& parts, Message& list) {
    for (const FilePart& part : parts) {
        const Message range = document.range_json(part.lines);
        if (range["start"]["line"] < range["end"]["line"]) {
            list.push_back({{"startLine", range["start"]["line"]}, {"endLine", range["end"]["line"]}, {"kind", "region"}});
        }
        add_folds(document, part.parts, list);
    }
}

Message folds(Question question) {
    Message list = Message::array();
    add_folds(question.document, file_parts(question.document.file()), list);
    return list;
}

// A type of the protocol for each role, in the order of `TokenRole`.
constexpr std::array<std::string_view, 22> token_type_of_role = {
    "macro",      "comment",    "property", "string",   "operator", "function", "type",  "keyword",
    "parameter",  "enumMember", "",         "string",   "number",   "number",   "class", "number",
    "enumMember", "number",     "number",   "variable", "class",    "keyword"};
constexpr std::array<std::string_view, 13> all_token_types = {"macro",    "comment", "property", "string",    "operator",
                                                              "function", "type",    "keyword",  "parameter", "enumMember",
                                                              "number",   "class",   "variable"};

// Five numbers a token: lines and characters from the one before it, length, type, no modifier.
std::vector<std::uint32_t> token_numbers(const OpenDocument& document, Span stretch) {
    std::vector<std::uint32_t> numbers;
    LinePosition last;
    for (const JobToken& token : tokens_in(document.file(), stretch)) {
        const std::string_view type = token_type_of_role[static_cast<std::size_t>(token.role)];
        const LinePosition begin = document.position(token.place.begin);
        const LinePosition end = document.position(token.place.end());
        if (type.empty() || end.line != begin.line) {
            continue;
        }
        const auto number = std::find(all_token_types.begin(), all_token_types.end(), type) - all_token_types.begin();
        const std::size_t character = begin.line == last.line ? begin.character - last.character : begin.character;
        for (const std::size_t each : {begin.line - last.line, character, end.character - begin.character,
                                       static_cast<std::size_t>(number), std::size_t{0}}) {
            numbers.push_back(static_cast<std::uint32_t>(each));
        }
        last = begin;
    }
    return numbers;
}

Message tokens_of_range(Question question) { return {{"data", token_numbers(question.document, question.range())}}; }

Message all_tokens(Question question) {
    const OpenDocument& document = question.document;
    document.told_tokens = token_numbers(document, span_between(0, document.text().size()));
    return {{"resultId", std::to_string(++document.token_answers)}, {"data", document.told_tokens}};
}

// What differs from the tokens that the client has: one stretch of whole tokens.
Message changed_tokens(Question question) {
    const OpenDocument& document = question.document;
    if (member(question.parameters, "previousResultId") != std::to_string(document.token_answers)) {
        return all_tokens(question);
    }
    constexpr std::size_t numbers_of_token = 5;
    const std::vector<std::uint32_t> old_numbers =
        std::exchange(document.told_tokens, token_numbers(document, span_between(0, document.text().size())));
    const std::vector<std::uint32_t>& numbers = document.told_tokens;
    const std::size_t shorter = std::min(old_numbers.size(), numbers.size());
    const auto cut = static_cast<std::ptrdiff_t>(shorter);
    auto begin = static_cast<std::size_t>(std::mismatch(numbers.begin(), numbers.begin() + cut, old_numbers.begin()).first -
                                          numbers.begin());
    begin -= begin % numbers_of_token;
    const auto left = static_cast<std::ptrdiff_t>(shorter - begin);
    auto same = static_cast<std::size_t>(
        std::mismatch(numbers.rbegin(), numbers.rbegin() + left, old_numbers.rbegin()).first - numbers.rbegin());
    same -= same % numbers_of_token;
    Message edits = Message::array();
    if (begin + same < std::max(old_numbers.size(), numbers.size())) {
        edits.push_back({{"start", begin},
                         {"deleteCount", old_numbers.size() - same - begin},
                         {"data", std::vector<std::uint32_t>(numbers.begin() + static_cast<std::ptrdiff_t>(begin),
                                                             numbers.end() - static_cast<std::ptrdiff_t>(same))}});
    }
    return {{"resultId", std::to_string(++document.token_answers)}, {"edits", std::move(edits)}};
}

Message hints(Question question) {
    Message list = Message::array();
    const Span range = question.range();
    for (const InlayHint& hint : inlay_hints(question.document.file(), range)) {
        if (range.begin <= hint.offset && hint.offset <= range.end()) {
            list.push_back({{"position", question.document.position_json(hint.offset)},
                            {"label", hint.text},
                            {"paddingLeft", true},
                            {"paddingRight", true}});
        }
    }
    return list;
}

// The lines that alignment changes, of those that a range touches.
Message alignment(const OpenDocument& document, Span range) {
    const std::string& text = document.text();
    const std::string aligned = aligned_text(text);
    std::vector<TextEdit> edits;
    std::size_t new_begin = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::size_t new_end = std::min(aligned.find('\n', new_begin), aligned.size());
        const std::string line = aligned.substr(new_begin, new_end - new_begin);
        if (text.compare(begin, end - begin, line) != 0 && begin <= range.end() && range.begin <= end) {
            edits.push_back({begin, end, line});
        }
        begin = end + 1;
        new_begin = new_end + 1;
    }
    return document.edits_json(edits);
}

Message formatting(Question question) {
    return alignment(question.document, span_between(0, question.document.text().size()));
}
Message range_formatting(Question question) { return alignment(question.document, question.range()); }

Message links(Question question) {
    Message list = Message::array();
    const std::string& uri = question.document.uri();
    const std::string folder = uri.substr(0, uri.rfind('/') + 1);
    for (const FileLink& link : file_links(question.document.file())) {
        // Beside a text that lies nowhere, no file can be named.
        if (!link.path.empty() && (link.path.front() == '/' || !folder.empty())) {
            list.push_back(
                {{"range", question.document.range_json(link.place)},
                 {"target", link.path.front() == '/' ? "file://" + address_of(link.path) : folder + address_of(link.path)}});
        }
    }
    return list;
}

Message full_diagnostics(Question question) {
    return {{"kind", "full"},
            {"items", diagnostics_json(question.document, question.findings(), question.options.shares_files)}};
}

constexpr DocumentRequest requests[] = {
    {"textDocument/hover", hover},
    {"textDocument/completion", completion},
    {"textDocument/definition", definition},
    {"textDocument/references", references},
    {"textDocument/documentHighlight", highlights},
    {"textDocument/prepareRename", prepare_rename},
    {"textDocument/rename", rename},
    {"textDocument/documentSymbol", symbols},
    {"textDocument/foldingRange", folds},
    {"textDocument/semanticTokens/full", all_tokens},
    {"textDocument/semanticTokens/full/delta", changed_tokens},
    {"textDocument/semanticTokens/range", tokens_of_range},
    {"textDocument/inlayHint", hints},
    {"textDocument/formatting", formatting},
    {"textDocument/rangeFormatting", range_formatting},
    {"textDocument/documentLink", links},
    {"textDocument/codeAction", code_actions},
    {"textDocument/diagnostic", full_diagnostics},
};

}  // namespace

const DocumentRequest* find_document_request(std::string_view method) {
    const auto found = std::find_if(std::begin(requests), std::end(requests),
                                    [&](const DocumentRequest& each) { return each.method == method; });
    return found == std::end(requests) ? nullptr : found;
}

Message token_types() { return all_token_types; }

}  // namespace quor::input::gaussian
