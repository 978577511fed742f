// What agents are answered, message by message.
#include <gjf/core/protocol/tool_server.hpp>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace {

using namespace quor::input::gaussian;
using OrderedJson = nlohmann::ordered_json;

const std::string misspelt_water = "# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n";

class Agent {
   public:
    explicit Agent(const std::string& revision = "2025-06-18", ToolServerOptions options = {}) : server(std::move(options)) {
        first = ask("initialize", {{"protocolVersion", revision}, {"capabilities", OrderedJson::object()}});
        EXPECT_EQ(server.receive(R"({"jsonrpc":"2.0","method":"notifications/initialized"})"), "");
    }
    OrderedJson send(const std::string& text) { return OrderedJson::parse(server.receive(text)); }
    OrderedJson ask(const std::string& method, const OrderedJson& parameters) {
        const OrderedJson answer =
            send(OrderedJson({{"jsonrpc", "2.0"}, {"id", ++id_}, {"method", method}, {"params", parameters}}).dump());
        EXPECT_EQ(answer["id"], id_);
        return answer.contains("error") ? answer["error"] : answer["result"];
    }
    OrderedJson call(const std::string& tool, const OrderedJson& arguments) {
        return ask("tools/call", {{"name", tool}, {"arguments", arguments}});
    }

    ToolServer server;
    OrderedJson first;

   private:
    int id_ = 0;
};

TEST(ToolServer, AgreesOnARevision) {
    const struct {
        const char* wanted;
        const char* agreed;
        bool has_annotations;
        bool has_structure;
        bool takes_batches;
    } rows[] = {
        {"2024-11-05", "2024-11-05", false, false, false},
        {"2025-03-26", "2025-03-26", true, false, true},
        {"2025-06-18", "2025-06-18", true, true, false},
        {"2025-11-25", "2025-06-18", true, true, false},
        {"", "2025-06-18", true, true, false},
        {"zzz", "2025-06-18", true, true, false},
    };
    for (const auto& row : rows) {
        Agent agent(row.wanted);
        EXPECT_EQ(agent.first["protocolVersion"], row.agreed);
        EXPECT_EQ(agent.first["capabilities"], OrderedJson::parse(R"({"tools":{}})"));
        const OrderedJson tools = agent.ask("tools/list", OrderedJson::object())["tools"];
        ASSERT_EQ(tools.size(), 8U);
        for (const OrderedJson& tool : tools) {
            EXPECT_EQ(tool["inputSchema"]["additionalProperties"], false) << tool["name"];
            EXPECT_EQ(tool.contains("annotations"), row.has_annotations) << tool["name"];
            EXPECT_EQ(tool.contains("outputSchema"), row.has_structure) << tool["name"];
            EXPECT_TRUE(!row.has_annotations || tool["annotations"]["readOnlyHint"] == true);
        }
        const OrderedJson answer = agent.call("complete", {{"text", "hf opt=calcf"}});
        EXPECT_EQ(answer.contains("structuredContent"), row.has_structure);
        const OrderedJson both =
            agent.send(R"([{"jsonrpc":"2.0","id":1,"method":"ping"},{"jsonrpc":"2.0","method":"x"},7])");
        EXPECT_EQ(both.is_array() ? both.size() : 0, row.takes_batches ? 2U : 0U) << row.wanted;
    }
}

TEST(ToolServer, RefusesWhatIsNoRequest) {
    const struct {
        std::string message;
        int code;
    } rows[] = {
        {"", -32700},
        {"{", -32700},
        {R"({"jsonrpc":"2.0","id":1,"method":"ping"} x)", -32700},
        {"\"\xff\"", -32700},
        {R"({"jsonrpc":"2.0","id":1,"method":"ping","params":)" + std::string(1'000'000, '['), -32700},
        {R"({"jsonrpc":"2.0","id":1,"method":"ping","params":)" + std::string(65, '[') + std::string(65, ']') + "}", -32700},
        {"[]", -32600},
        {R"([{"jsonrpc":"2.0","id":1,"method":"ping"}])", -32600},
        {"1", -32600},
        {"null", -32600},
        {R"({"id":1,"method":"ping"})", -32600},
        {R"({"jsonrpc":"1.0","id":1,"method":"ping"})", -32600},
        {R"({"jsonrpc":"2.0","id":1})", -32600},
        {R"({"jsonrpc":"2.0","id":null,"method":"ping"})", -32600},
        {R"({"jsonrpc":"2.0","id":[1],"method":"ping"})", -32600},
        {R"({"jsonrpc":"2.0","id":1,"method":7})", -32600},
        {R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"protocolVersion":"2025-06-18"}})", -32600},
        {R"({"jsonrpc":"2.0","id":1,"method":"resources/list"})", -32601},
        {R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":[]})", -32602},
        {R"({"jsonrpc":"2.0","id":1,"method":"tools/call"})", -32602},
        {R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":7}})", -32602},
        {R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"next","arguments":{}}})", -32602},
        {R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"check","arguments":[]}})", -32602},
        {R"({"jsonrpc":"2.0","id":1,"method":"tools/list","params":{"cursor":"2"}})", -32602},
    };
    Agent agent;
    for (const auto& row : rows) {
        EXPECT_EQ(agent.send(row.message)["error"]["code"], row.code) << row.message.substr(0, 80);
    }
    EXPECT_EQ(agent.server.receive(R"({"jsonrpc":"2.0","id":1,"result":{}})"), "");
    EXPECT_EQ(agent.server.receive(R"({"jsonrpc":"2.0","method":"no/such"})"), "");
    EXPECT_EQ(agent.ask("ping", OrderedJson::object()), OrderedJson::object()) << "the server goes on";
    ToolServer fresh;
    for (const auto& [method, code] :
         {std::pair{"tools/list", -32600}, {"server/discover", -32601}, {"initialize", -32602}}) {
        const OrderedJson message = {{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}};
        EXPECT_EQ(OrderedJson::parse(fresh.receive(message.dump()))["error"]["code"], code) << method;
    }
}

TEST(ToolServer, TakesArgumentsByTheirSchemas) {
    const struct {
        const char* tool;
        const char* arguments;
        const char* message;
    } rows[] = {
        {"check", "{}", "check takes either text or path"},
        {"check", R"({"text":"","path":"a"})", "check takes either text or path"},
        {"check", R"({"text":7})", "argument 'text' takes a text"},
        {"check", R"({"text":null})", "argument 'text' takes a text"},
        {"check", R"({"path":["a"]})", "argument 'path' takes a text"},
        {"check", R"({"text":"","ignore":"GJF-R"})", "argument 'ignore' takes a list of texts"},
        {"check", R"({"text":"","ignore":["GJF-R",1]})", "argument 'ignore' takes a list of texts"},
        {"check", R"({"text":"","stdin-filename":"x"})", "check takes no argument 'stdin-filename'"},
        {"check", R"({"text":"","":""})", "check takes no argument ''"},
        {"check", R"({"text":"","Where":"hf"})", "check takes no argument 'Where'"},
        {"explain", "{}", "argument 'word' is missing"},
        {"explain", R"({"word":"opt","text":""})", "explain takes no argument 'text'"},
        {"complete", "{}", "argument 'text' is missing"},
        {"complete", R"({"path":"a"})", "complete takes no argument 'path'"},
        {"select", R"({"text":""})", "argument 'select' is missing"},
        {"route", "{}", "route takes either text or path"},
        {"fix", R"({"text":"","unsafe-fixes":"yes"})", "argument 'unsafe-fixes' takes true or false"},
        {"edit", R"({"text":"","job":0})", "argument 'job' takes a whole number from 1 on"},
        {"edit", R"({"text":"","job":-1})", "argument 'job' takes a whole number from 1 on"},
        {"edit", R"({"text":"","job":1.5})", "argument 'job' takes a whole number from 1 on"},
        {"edit", R"({"text":"","chk-from-name":"a"})", "argument 'chk-from-name' takes true or false"},
        {"edit", R"({"text":"","title":true})", "argument 'title' takes a text or a list of texts"},
        {"edit", R"({"text":"","--title":"x"})", "edit takes no argument '--title'"},
    };
    Agent agent;
    for (const auto& row : rows) {
        const OrderedJson error = agent.call(row.tool, OrderedJson::parse(row.arguments));
        EXPECT_EQ(error["code"], -32602) << row.arguments;
        EXPECT_EQ(error["message"], row.message) << row.arguments;
    }
}

TEST(ToolServer, TellsAgentsWhatFails) {
    ToolServerOptions options;
    options.read = [](const std::string& path) -> std::string { throw std::runtime_error("'" + path + "' is not there"); };
    const struct {
        const char* tool;
        const char* arguments;
        const char* message;
    } rows[] = {
        {"check", R"({"path":"a.gjf"})", "'a.gjf' is not there"},
        {"check", R"({"text":"","ignore":["GJF-Q9"]})", "there is no check GJF-Q9"},
        {"check", R"({"text":"# hf\n","where":"charge ="})", nullptr},
        {"explain", R"({"word":"GJF-R999"})", "there is no check GJF-R999"},
        {"route", R"({"text":""})", "the text holds no route"},
        {"select", R"({"text":"","select":"within"})", nullptr},
        {"edit", R"({"text":"# hf\n"})", "no operation is given"},
        {"edit", R"({"text":"# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n","charge":"x"})", nullptr},
        {"edit", R"({"text":"","title":"x"})", nullptr},
        {"edit", R"({"text":"# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n","section":"basis=@/etc/passwd"})", nullptr},
    };
    Agent agent("2025-06-18", options);
    for (const auto& row : rows) {
        const OrderedJson result = agent.call(row.tool, OrderedJson::parse(row.arguments));
        EXPECT_EQ(result["isError"], true) << row.arguments;
        EXPECT_FALSE(result.contains("structuredContent")) << row.arguments;
        const std::string text = result["content"][0]["text"];
        EXPECT_FALSE(text.empty()) << row.arguments;
        EXPECT_EQ(text, row.message == nullptr ? text : row.message);
        EXPECT_EQ(text.find("root:"), std::string::npos);
    }
    Agent without;
    EXPECT_EQ(without.call("check", {{"path", "a"}})["content"][0]["text"],
              "no file is opened: the server was begun without a root");
}

TEST(ToolServer, AnswersAsRequestsDo) {
    ToolServerOptions options;
    options.read = [](const std::string&) { return misspelt_water; };
    options.difference = [](const std::string& name, const std::string& before, const std::string& after) {
        return name + ":" + std::to_string(before.size()) + ">" + std::to_string(after.size());
    };
    const struct {
        const char* tool;
        const char* arguments;
        const char* pointer;
        const char* value;
    } rows[] = {
        {"check", R"({"path":"w.gjf"})", "/findings/0/code", "\"GJF-R001\""},
        {"check", R"({"path":"w.gjf"})", "/file", "\"w.gjf\""},
        {"check", R"({"path":"w.gjf","ignore":["GJF-R"]})", "/findings", "[]"},
        {"explain", R"({"word":"GJF-R001"})", "/code", "\"GJF-R001\""},
        {"explain", R"({"word":"opt"})", "/keyword/known", "true"},
        {"fix", R"({"path":"w.gjf"})", "/diff", "\"w.gjf:56>56\""},
        {"fix", R"({"path":"w.gjf","unsafe-fixes":true})", "/findings", "[]"},
        {"route", R"({"text":"hf/gen"})", "/sections/0/request", "\"gen\""},
        {"complete", R"({"text":"hf opt=calcf"})", "/completions/0/text", "\"calcfc\""},
        {"select", R"({"path":"w.gjf","select":"H"})", "/jobs/0/atoms", "[2,3]"},
        {"edit", R"({"path":"w.gjf","title":"longer"})", "/diff", "\"w.gjf:56>61\""},
        {"edit", R"({"path":"w.gjf","title":["a","bcd"]})", "/diff", "\"w.gjf:56>58\""},
        {"edit", R"({"path":"w.gjf","title":"t"})", "/changed", "false"},
        {"edit", R"({"path":"w.gjf","charge":"1","strict":true})", "/refused", "true"},
    };
    Agent agent("2025-06-18", options);
    for (const auto& row : rows) {
        const OrderedJson result = agent.call(row.tool, OrderedJson::parse(row.arguments));
        ASSERT_EQ(result["isError"], false) << row.tool << result;
        const OrderedJson& answer = result["structuredContent"];
        EXPECT_EQ(answer.dump(), result["content"][0]["text"]);
        EXPECT_EQ(answer["version"], 1);
        EXPECT_EQ(answer[OrderedJson::json_pointer(row.pointer)].dump(), row.value) << row.tool << row.arguments;
    }
}

TEST(ToolServer, AppliesOperationsInTheirOrder) {
    ToolServerOptions options;
    options.difference = [](const std::string&, const std::string&, const std::string& after) { return after; };
    Agent agent("2025-06-18", options);
    OrderedJson arguments = {{"text", misspelt_water}, {"remove-atoms", "H"}, {"add-atom", "H 9 9 9"}};
    const std::string removed_first = agent.call("edit", arguments)["structuredContent"]["diff"];
    arguments = {{"text", misspelt_water}, {"add-atom", "H 9 9 9"}, {"remove-atoms", "H"}};
    const std::string added_first = agent.call("edit", arguments)["structuredContent"]["diff"];
    EXPECT_NE(removed_first.find("9"), std::string::npos);
    EXPECT_EQ(added_first.find("9"), std::string::npos);
}

TEST(ToolServer, CutsLongAnswers) {
    std::string text = "# hf/sto-3g\n\nt\n\n0 1\n";
    for (int i = 0; i < 30'000; ++i) {
        text += "H 0 0 " + std::to_string(i) + ".0\n";
    }
    Agent agent;
    const OrderedJson result = agent.call("select", {{"text", text + "\n"}, {"select", "all"}});
    const OrderedJson& answer = result["structuredContent"];
    const std::size_t atoms = answer["jobs"][0]["atoms"].size();
    EXPECT_GT(atoms, 1000U);
    EXPECT_EQ(answer["left"]["/jobs/0/atoms"], 30'000 - atoms);
    const std::string shown = result["content"][0]["text"];
    EXPECT_LE(shown.size(), 50'000U);
    EXPECT_GT(shown.size(), 40'000U);
}

}  // namespace
