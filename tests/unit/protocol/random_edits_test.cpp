// Texts edited at random: what is left is what a plain model of the protocol makes of them, and what opening it anew gives.
#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/protocol/open_document.hpp>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace quor::input::gaussian;
using Json = nlohmann::json;

constexpr int sequences = 10000;
constexpr int sequences_for_each_answer = 100;

using Choices = std::mt19937;

std::size_t below(Choices& choices, std::size_t limit) { return choices() % limit; }

// A piece of text: line ends of every kind, characters of one to four bytes, and words that mean something.
std::string piece(Choices& choices) {
    static const std::vector<std::string> pieces = {"a",
                                                    "\r",
                                                    "\n",
                                                    "\r\n",
                                                    "\r\r\n",
                                                    "\xC3\xA9",
                                                    "\xE2\x82\xAC",
                                                    "\xF0\x9F\x98\x80",
                                                    "0 1\n",
                                                    "H 0 0 0.7\n",
                                                    "\n\n",
                                                    "# hf opt\n",
                                                    "%mem=1",
                                                    "\xEF\xBF\xBD",
                                                    "(",
                                                    ""};
    std::string text;
    for (std::size_t count = below(choices, 5); count > 0; --count) {
        text += pieces[below(choices, pieces.size())];
    }
    return text;
}

// The model: characters one after another, nothing kept.
std::size_t length_at(const std::string& text, std::size_t at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

std::size_t model_offset(const std::string& text, std::size_t line, std::size_t character, ColumnUnit unit) {
    std::size_t at = 0;
    for (; line > 0; --line) {
        while (at < text.size() && text[at] != '\n' && text[at] != '\r') {
            ++at;
        }
        if (at == text.size()) {
            return at;
        }
        at += text.compare(at, 2, "\r\n") == 0 ? 2 : 1;
    }
    while (at < text.size() && text[at] != '\n' && text[at] != '\r') {
        const std::size_t bytes = length_at(text, at);
        const std::size_t units = unit == ColumnUnit::Bytes ? bytes : unit == ColumnUnit::Utf16 && bytes == 4 ? 2 : 1;
        if (units > character) {
            break;
        }
        character -= units;
        at += bytes;
    }
    return at;
}

Json random_position(Choices& choices) {
    const std::size_t far = below(choices, 20) == 0 ? 4000000000U : 0;
    return {{"line", below(choices, 8) + far}, {"character", below(choices, 12) + far}};
}

// Makes the changes of a message, and in the model what they mean.
Json random_changes(Choices& choices, ColumnUnit unit, std::string& text) {
    Json changes = Json::array();
    for (std::size_t count = 1 + below(choices, 3); count > 0; --count) {
        std::string put = piece(choices);
        if (below(choices, 12) == 0) {
            text = put;
            changes.push_back({{"text", put}});
            continue;
        }
        const Json start = random_position(choices);
        const Json end = below(choices, 3) == 0 ? start : random_position(choices);
        std::size_t begin = model_offset(text, start["line"], start["character"], unit);
        std::size_t behind = model_offset(text, end["line"], end["character"], unit);
        if (behind < begin) {
            std::swap(begin, behind);
        }
        text.replace(begin, behind - begin, put);
        changes.push_back({{"range", {{"start", start}, {"end", end}}}, {"text", put}});
    }
    return changes;
}

void expect_same_places(const OpenDocument& edited, const OpenDocument& anew) {
    for (std::size_t offset = 0; offset <= anew.text().size(); ++offset) {
        ASSERT_EQ(edited.position(offset), anew.position(offset)) << offset << " of " << anew.text();
    }
    for (std::size_t line = 1; line < 12; ++line) {
        ASSERT_EQ(edited.offset_of_line(line), anew.offset_of_line(line)) << line << " of " << anew.text();
    }
}

class Asked {
   public:
    explicit Asked(const char* encoding) {
        ask("initialize", {{"capabilities", {{"general", {{"positionEncodings", Json::array({encoding})}}}}}});
        tell("initialized", Json::object());
    }

    std::vector<std::string> tell(const std::string& method, const Json& parameters) {
        return server.receive(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", parameters}}.dump());
    }
    std::string ask(const std::string& method, const Json& parameters) {
        return server.receive(Json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}, {"params", parameters}}.dump()).at(0);
    }
    void open(const std::string& text) {
        tell("textDocument/didOpen",
             {{"textDocument", {{"uri", "file:///a.gjf"}, {"version", 7}, {"languageId", "gaussian"}, {"text", text}}}});
    }
    // Everything that is told about a text as a whole.
    std::string answers() {
        const Json about = {{"textDocument", {{"uri", "file:///a.gjf"}}}};
        std::string all =
            ask("textDocument/semanticTokens/range",
                {{"textDocument", about["textDocument"]},
                 {"range", {{"start", {{"line", 0}, {"character", 0}}}, {"end", {{"line", 999}, {"character", 0}}}}}});
        all += ask("textDocument/documentSymbol", about) + ask("textDocument/foldingRange", about) +
               ask("textDocument/formatting", about);
        while (server.has_work()) {
            for (const std::string& sent : server.work()) {
                all += sent;
            }
        }
        return all;
    }

    LanguageServer server;
};

TEST(RandomEdits, LeaveWhatOpeningAnewGives) {
    const std::pair<const char*, ColumnUnit> encodings[] = {
        {"utf-16", ColumnUnit::Utf16}, {"utf-8", ColumnUnit::Bytes}, {"utf-32", ColumnUnit::CodePoints}};
    Choices choices(16);
    for (int number = 0; number < sequences; ++number) {
        const auto [encoding, unit] = encodings[number % 3];
        std::string model = piece(choices) + piece(choices);
        OpenDocument edited("file:///a.gjf", 1, model, unit);
        const bool asks = number % sequences_for_each_answer == 0;
        std::optional<Asked> client;
        if (asks) {
            client.emplace(encoding).open(model);
        }
        for (std::size_t message = 1 + below(choices, 6); message > 0; --message) {
            const Json changes = random_changes(choices, unit, model);
            edited.change(changes, 7);
            if (asks) {
                const Json text = {{"uri", "file:///a.gjf"}, {"version", 7}};
                EXPECT_TRUE(
                    client->tell("textDocument/didChange", {{"textDocument", text}, {"contentChanges", changes}}).empty());
                const Json other = {{"uri", "file:///other.gjf"}, {"version", 7}};
                EXPECT_EQ(
                    client->tell("textDocument/didChange", {{"textDocument", other}, {"contentChanges", changes}}).size(),
                    1U);
            }
            ASSERT_EQ(edited.text(), model) << changes;
        }
        expect_same_places(edited, OpenDocument("file:///a.gjf", 1, model, unit));
        if (asks) {
            Asked anew(encoding);
            anew.open(model);
            ASSERT_EQ(client->answers(), anew.answers()) << model;
        }
    }
}

TEST(RandomEdits, OfTokensAreToldAsWhatChanged) {
    Choices choices(17);
    for (int number = 0; number < 100; ++number) {
        std::string model = "%mem=1GB\n# hf/sto-3g opt\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\n";
        Asked client("utf-16");
        client.open(model);
        const Json about = {{"textDocument", {{"uri", "file:///a.gjf"}}}};
        const Json first = Json::parse(client.ask("textDocument/semanticTokens/full", about))["result"];
        std::vector<int> numbers = first["data"];
        const Json changes = random_changes(choices, ColumnUnit::Utf16, model);
        client.tell("textDocument/didChange",
                    {{"textDocument", {{"uri", "file:///a.gjf"}, {"version", 2}}}, {"contentChanges", changes}});
        Json since = about;
        since["previousResultId"] = first["resultId"];
        const Json changed = Json::parse(client.ask("textDocument/semanticTokens/full/delta", since))["result"];
        for (const Json& edit : changed["edits"]) {
            const auto begin = numbers.begin() + edit["start"].get<int>();
            const auto at = numbers.erase(begin, begin + edit["deleteCount"].get<int>());
            const std::vector<int> put = edit["data"];
            numbers.insert(at, put.begin(), put.end());
        }
        const Json all = Json::parse(client.ask("textDocument/semanticTokens/full", about))["result"];
        EXPECT_EQ(Json(numbers), all["data"]) << model;
        since["previousResultId"] = "no such answer";
        EXPECT_EQ(Json::parse(client.ask("textDocument/semanticTokens/full/delta", since))["result"]["data"], all["data"]);
    }
}

}  // namespace
