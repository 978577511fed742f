// What the server answers, message by message.
#include <gjf/core/protocol/language_server.hpp>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;
using Json = nlohmann::json;

// A client that waits for each answer.
class Client {
   public:
    explicit Client(const Json& capabilities = Json::object()) {
        first = ask("initialize", {{"processId", nullptr}, {"rootUri", nullptr}, {"capabilities", capabilities}});
        tell("initialized", Json::object());
    }

    std::vector<Json> send(const Json& message) {
        std::vector<Json> answers;
        for (const std::string& text : server.receive(message.dump())) {
            answers.push_back(Json::parse(text));
        }
        return answers;
    }
    Json ask(const std::string& method, const Json& parameters) {
        const std::vector<Json> answers =
            send({{"jsonrpc", "2.0"}, {"id", ++id_}, {"method", method}, {"params", parameters}});
        EXPECT_EQ(answers.size(), 1U) << method;
        EXPECT_EQ(answers.empty() ? Json() : answers[0]["id"], id_);
        return answers.empty() ? Json() : answers[0].contains("error") ? answers[0]["error"] : answers[0]["result"];
    }
    std::vector<Json> tell(const std::string& method, const Json& parameters) {
        return send({{"jsonrpc", "2.0"}, {"method", method}, {"params", parameters}});
    }
    void open(const std::string& text) {
        tell("textDocument/didOpen",
             {{"textDocument", {{"uri", uri}, {"languageId", "gaussian"}, {"version", 1}, {"text", text}}}});
    }
    Json at(const std::string& method, std::size_t line, std::size_t character, Json more = Json::object()) {
        more["textDocument"] = {{"uri", uri}};
        more["position"] = {{"line", line}, {"character", character}};
        return ask("textDocument/" + method, more);
    }
    Json about(const std::string& method, Json more = Json::object()) {
        more["textDocument"] = {{"uri", uri}};
        return ask("textDocument/" + method, more);
    }

    LanguageServer server;
    Json first;
    std::string uri = "file:///jobs/water%201.gjf";

   private:
    int id_ = 0;
};

const std::string water = "%chk=a.chk\n# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n";

TEST(LanguageServer, TellsWhatItCan) {
    const Client plain;
    EXPECT_EQ(plain.first["capabilities"]["positionEncoding"], "utf-16");
    EXPECT_EQ(plain.first["capabilities"].count("diagnosticProvider"), 0U);
    EXPECT_EQ(plain.first["serverInfo"]["name"], "quor-gjf");
    const Client other(
        Json::parse(R"({"general":{"positionEncodings":["utf-16","utf-8"]},"textDocument":{"diagnostic":{}}})"));
    EXPECT_EQ(other.first["capabilities"]["positionEncoding"], "utf-8");
    EXPECT_EQ(other.first["capabilities"].count("diagnosticProvider"), 1U);
}

TEST(LanguageServer, GivesDiagnosticsWhenThereIsTime) {
    Client client;
    client.open(water);
    EXPECT_TRUE(client.server.has_work());
    const std::vector<std::string> sent = client.server.work();
    ASSERT_EQ(sent.size(), 1U);
    const Json told = Json::parse(sent[0]);
    EXPECT_EQ(told["method"], "textDocument/publishDiagnostics");
    EXPECT_EQ(told["params"]["version"], 1);
    ASSERT_EQ(told["params"]["diagnostics"].size(), 1U);
    const Json& diagnostic = told["params"]["diagnostics"][0];
    EXPECT_EQ(diagnostic["code"], "GJF-R001");
    EXPECT_EQ(diagnostic["severity"], 1);
    EXPECT_EQ(diagnostic["range"], Json::parse(R"({"start":{"line":1,"character":16},"end":{"line":1,"character":22}})"));
    EXPECT_TRUE(client.server.has_work()) << "it is read too, so that nobody waits for it";
    EXPECT_TRUE(client.server.work().empty());
    EXPECT_FALSE(client.server.has_work());
    EXPECT_TRUE(client.server.work().empty());
}

TEST(LanguageServer, ChecksTheLastOfManyStates) {
    Client client;
    client.open(water);
    for (int version = 2; version < 20; ++version) {
        client.tell(
            "textDocument/didChange",
            {{"textDocument", {{"uri", client.uri}, {"version", version}}},
             {"contentChanges",
              Json::parse(R"([{"range":{"start":{"line":3,"character":0},"end":{"line":3,"character":0}},"text":"x"}])")}});
    }
    const std::vector<std::string> sent = client.server.work();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(Json::parse(sent[0])["params"]["version"], 19);
    EXPECT_TRUE(client.server.work().empty());
    EXPECT_FALSE(client.server.has_work());
    const std::vector<Json> closed = client.tell("textDocument/didClose", {{"textDocument", {{"uri", client.uri}}}});
    ASSERT_EQ(closed.size(), 1U);
    EXPECT_TRUE(closed[0]["params"]["diagnostics"].empty());
}

TEST(LanguageServer, GivesDiagnosticsToWhoAsks) {
    Client client(Json::parse(R"({"textDocument":{"diagnostic":{}}})"));
    client.open(water);
    EXPECT_TRUE(client.server.work().empty());
    EXPECT_FALSE(client.server.has_work());
    EXPECT_EQ(client.about("diagnostic")["items"].size(), 1U);
}

TEST(LanguageServer, AnswersAboutPlaces) {
    Client client;
    client.open(water);
    EXPECT_EQ(client.at("hover", 6, 0)["contents"]["kind"], "markdown");
    EXPECT_TRUE(client.at("hover", 3, 0).is_null());
    EXPECT_EQ(client.at("definition", 0, 6).size(), 1U);
    EXPECT_EQ(client.at("references", 0, 6, {{"context", {{"includeDeclaration", true}}}}).size(), 1U);
    EXPECT_EQ(client.at("prepareRename", 0, 6)["placeholder"], "a.chk");
    EXPECT_EQ(client.at("rename", 0, 6, {{"newName", "b"}})["documentChanges"][0]["edits"][0]["newText"], "b.chk");
    EXPECT_EQ(client.at("rename", 6, 0, {{"newName", "b"}})["code"], -32803);
    EXPECT_EQ(client.about("documentSymbol")[0]["name"], "job 1");
    EXPECT_FALSE(client.about("foldingRange").empty());
    EXPECT_FALSE(client.about("semanticTokens/full")["data"].empty());
    EXPECT_EQ(client.about("semanticTokens/full")["data"].size() % 5, 0U);
    const Json all = Json::parse(R"({"range":{"start":{"line":0,"character":0},"end":{"line":99,"character":0}}})");
    EXPECT_EQ(client.about("inlayHint", all).size(), 3U);
    Json actions = all;
    actions["context"] = {{"diagnostics", Json::array()}};
    const Json offered = client.about("codeAction", actions);
    ASSERT_GE(offered.size(), 2U);
    EXPECT_EQ(offered[0]["title"], "write calcfc");
    EXPECT_EQ(offered[0]["edit"]["documentChanges"][0]["textDocument"]["version"], 1);
    bool offers_calcfc = false;
    const Json items = client.at("completion", 1, 18)["items"];
    for (const Json& item : items) {
        offers_calcfc = offers_calcfc || item["label"] == "calcfc";
    }
    EXPECT_FALSE(offers_calcfc);  // nothing begins with "cl" but "clean"
}

TEST(LanguageServer, RefusesWhatItCannotAnswer) {
    struct RefusedRow {
        const char* message;
        int code;
    };
    const std::string deep = std::string(R"({"jsonrpc":"2.0","id":1,"method":"x","params":)") + std::string(1000000, '[');
    const RefusedRow rows[] = {
        {"", -32700},
        {"{", -32700},
        {"[]", -32600},
        {"1", -32600},
        {R"({"id":1,"method":"initialize"})", -32600},
        {R"({"jsonrpc":"2.0","id":1})", -32600},
        {R"({"jsonrpc":"2.0","id":1,"method":7})", -32600},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover"})", -32602},
        {R"({"jsonrpc":"2.0","id":1,"method":"initialize"})", -32600},
        {R"({"jsonrpc":"2.0","id":1,"method":"no/such"})", -32601},
        {R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover","params":{"textDocument":{"uri":"file:///none"}}})",
         -32602},
        {"\"\xff\"", -32700},
        {deep.c_str(), -32700},
    };
    Client client;
    for (const RefusedRow& row : rows) {
        const std::vector<std::string> sent = client.server.receive(row.message);
        ASSERT_EQ(sent.size(), 1U) << std::string(row.message).substr(0, 80);
        EXPECT_EQ(Json::parse(sent[0])["error"]["code"], row.code) << std::string(row.message).substr(0, 80);
    }
    client.open(water);
    EXPECT_FALSE(client.at("hover", 6, 0).is_null()) << "the server goes on";
    LanguageServer fresh;
    EXPECT_EQ(Json::parse(fresh.receive(R"({"jsonrpc":"2.0","id":1,"method":"shutdown"})")[0])["error"]["code"], -32002);
}

TEST(LanguageServer, Ends) {
    Client client;
    EXPECT_TRUE(client.ask("shutdown", Json()).is_null());
    EXPECT_EQ(client.ask("textDocument/hover", Json::object())["code"], -32600);
    client.tell("exit", Json());
    EXPECT_TRUE(client.server.is_over());
    EXPECT_EQ(client.server.exit_code(), 0);
    Client rude;
    rude.tell("exit", Json());
    EXPECT_EQ(rude.server.exit_code(), 1);
}

}  // namespace
