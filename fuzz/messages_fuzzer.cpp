// Sends a language server any bytes, and edits and questions made of them: each request is answered once, and a text that
// was edited is told of as one that is opened anew.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/protocol/open_document.hpp>

#include <iterator>
#include <string>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

constexpr const char* address = "file:///a.gjf";
constexpr const char* methods[] = {"hover",
                                   "completion",
                                   "definition",
                                   "references",
                                   "documentHighlight",
                                   "prepareRename",
                                   "rename",
                                   "codeAction",
                                   "inlayHint",
                                   "rangeFormatting",
                                   "formatting",
                                   "documentSymbol",
                                   "foldingRange",
                                   "diagnostic",
                                   "documentLink",
                                   "semanticTokens/range",
                                   "semanticTokens/full",
                                   "semanticTokens/full/delta"};

Message about_text() { return {{"textDocument", {{"uri", address}, {"version", 1}}}}; }

Message position(Choices& choices) {
    return {{"line", choices.below(12)}, {"character", choices.below(8) == 0 ? 4294967295U : choices.below(40)}};
}

Message range(Choices& choices) { return {{"start", position(choices)}, {"end", position(choices)}}; }

// What a fuzzer makes is seldom UTF-8: other bytes become the character that stands for what is none.
std::string as_text(const std::string& bytes) { return read_message(message_text(bytes)).get<std::string>(); }

class Client {
   public:
    Client() {
        ask("initialize", {{"capabilities", {{"general", {{"positionEncodings", {"utf-16"}}}}}}});
        tell("initialized", Message::object());
    }

    std::vector<std::string> tell(const std::string& method, Message parameters) {
        return server_.receive(message_text({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(parameters)}}));
    }
    std::string ask(const std::string& method, Message parameters) {
        const auto answers = server_.receive(
            message_text({{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}, {"params", std::move(parameters)}}));
        hold(answers.size() == 1, "a request has one answer");
        const Message answer = read_message(answers.front());
        hold(answer["id"] == 1 && answer.contains("result") != answer.contains("error"),
             "an answer is a result or an error");
        hold(!answer.contains("error") || answer["error"]["code"] != static_cast<int>(MessageError::InternalError),
             "nothing fails for the server's own reasons");
        return answers.front();
    }
    void take(const std::string& bytes) {
        for (const std::string& answer : server_.receive(bytes)) {
            hold(read_message(answer)["jsonrpc"] == "2.0", "what is sent is a message");
        }
    }
    void open(const std::string& text) {
        Message parameters = about_text();
        parameters["textDocument"]["text"] = text;
        tell("textDocument/didOpen", std::move(parameters));
    }
    std::string all_answers() {
        std::string all;
        for (const char* method : {"documentSymbol", "foldingRange", "formatting", "documentLink"}) {
            all += ask(std::string("textDocument/") + method, about_text());
        }
        while (server_.has_work()) {
            for (const std::string& sent : server_.work()) {
                all += sent;
            }
        }
        return all;
    }

   private:
    LanguageServer server_;
};

Message question(Choices& choices) {
    Message parameters = about_text();
    parameters["position"] = position(choices);
    parameters["range"] = range(choices);
    parameters["context"] = {{"includeDeclaration", true}, {"diagnostics", Message::array()}};
    parameters["newName"] = as_text(choices.text(8));
    parameters["previousResultId"] = "1";
    return parameters;
}

}  // namespace

int messages(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    Client client;
    std::string first = as_text(choices.text(200));
    client.open(first);
    OpenDocument model(address, 1, std::move(first), ColumnUnit::Utf16);
    while (!choices.empty()) {
        const std::size_t kind = choices.below(4);
        if (kind == 0) {
            client.take(choices.text(60));
        } else if (kind == 1) {
            client.ask(std::string("textDocument/") + methods[choices.below(std::size(methods))], question(choices));
        } else {
            Message change = {{"text", as_text(choices.text())}};
            if (choices.below(8) != 0) {
                change["range"] = range(choices);
            }
            Message parameters = about_text();
            parameters["contentChanges"] = Message::array({change});
            model.change(parameters["contentChanges"], 1);
            hold(client.tell("textDocument/didChange", std::move(parameters)).empty(), "an edit is not answered");
        }
    }
    Client anew;
    anew.open(model.text());
    hold(client.all_answers() == anew.all_answers(), "an edited text is as one opened anew");
    return 0;
}

}  // namespace quor::fuzz
