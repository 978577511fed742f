// The language server through the C interface: what it answers is what the class answers.
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace quor::input::gaussian;

struct DestroyServer {
    void operator()(gjf_server* server) const { gjf_server_destroy(server); }
};

std::string text_of_result(gjf_result* result) {
    const std::string text = result == nullptr ? "null: " + std::string(gjf_editor_last_error(nullptr))
                                               : std::string(gjf_result_text(result), gjf_result_size(result));
    gjf_result_destroy(result);
    return text;
}

TEST(CServer, AnswersAsTheClassDoes) {
    const std::string messages[] = {
        R"({"jsonrpc":"2.0","id":0,"method":"textDocument/hover"})",
        R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{}}})",
        R"({"jsonrpc":"2.0","method":"initialized","params":{}})",
        R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{"textDocument":{"uri":"file:///a.gjf","version":1,)"
        R"("languageId":"gaussian","text":"# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\n"}}})",
        R"({"jsonrpc":"2.0","id":2,"method":"textDocument/hover","params":{"textDocument":{"uri":"file:///a.gjf"},)"
        R"("position":{"line":5,"character":0}}})",
        "{",
    };
    const std::unique_ptr<gjf_server, DestroyServer> server(gjf_server_create());
    LanguageServer same;
    for (const std::string& message : messages) {
        std::string expected;
        for (const std::string& answer : same.receive(message)) {
            expected += answer + "\n";
        }
        EXPECT_EQ(text_of_result(gjf_server_message(server.get(), message.data(), message.size())), expected) << message;
    }
    ASSERT_EQ(gjf_server_has_work(server.get()), 1);
    EXPECT_EQ(text_of_result(gjf_server_work(server.get())), same.work().at(0) + "\n");
    EXPECT_EQ(gjf_server_has_work(server.get()), 1);
    EXPECT_EQ(text_of_result(gjf_server_work(server.get())), "") << "what is read before somebody asks";
    EXPECT_EQ(gjf_server_has_work(server.get()), 0);
    EXPECT_EQ(text_of_result(gjf_server_work(server.get())), "");
}

TEST(CServer, RefusesWhatIsNotThere) {
    EXPECT_EQ(text_of_result(gjf_server_message(nullptr, "{}", 2)), "null: server is null");
    EXPECT_EQ(text_of_result(gjf_server_work(nullptr)), "null: server is null");
    EXPECT_EQ(gjf_server_has_work(nullptr), -1);
    gjf_server_destroy(nullptr);
    const std::unique_ptr<gjf_server, DestroyServer> server(gjf_server_create());
    EXPECT_EQ(text_of_result(gjf_server_message(server.get(), nullptr, 0)), "null: message is null");
    EXPECT_NE(text_of_result(gjf_server_message(server.get(), "", 0)).find("-32700"), std::string::npos);
}

}  // namespace
