// Speaks the protocol: what was agreed on, and the few requests that there are.
#include <gjf/core/protocol/tool_server.hpp>

#include <gjf/core/protocol/cut_answer.hpp>
#include <gjf/core/protocol/messages.hpp>
#include <gjf/core/protocol/tools.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Revisions are dates: a later one is greater.
constexpr std::array<std::string_view, 3> revisions = {"2024-11-05", "2025-03-26", "2025-06-18"};
constexpr std::string_view revision_with_annotations = "2025-03-26";
constexpr std::string_view revision_with_batches = "2025-03-26";  // and none after it
constexpr std::string_view revision_with_structure = "2025-06-18";

constexpr const char* instructions =
    "Tools about Gaussian 16 job files (.gjf, .com). Check a job before it is handed over; fix and edit answer with a "
    "unified diff "
    "and write nothing. An answer over 50 kB is cut: 'left' tells how much of what is not there.";

}  // namespace

class ToolServer::Session {
   public:
    explicit Session(ToolServerOptions options) : options_(std::move(options)) {}

    std::string receive(const Message& message) {
        if (!message.is_array()) {
            const std::optional<Message> answer = answer_to(message);
            return answer ? message_text(*answer) : std::string();
        }
        if (revision_ != revision_with_batches || message.empty()) {
            throw RequestFault(MessageError::InvalidRequest, "a list of messages is no message");
        }
        Message answers = Message::array();
        for (const Message& each : message) {
            if (std::optional<Message> answer = answer_to(each)) {
                answers.push_back(std::move(*answer));
            }
        }
        return answers.empty() ? std::string() : message_text(answers);
    }

   private:
    struct Method {
        std::string_view name;
        Message (Session::*answer)(const Message& parameters);
    };

    std::optional<Message> answer_to(const Message& message) {
        const Message& id = member(message, "id");
        const bool has_id = id.is_string() || id.is_number();
        try {
            if (!message.is_object() || member(message, "jsonrpc") != "2.0") {
                throw RequestFault(MessageError::InvalidRequest, "not a message of JSON-RPC 2.0");
            }
            if (!message.contains("method") && (message.contains("result") || message.contains("error"))) {
                return std::nullopt;  // an answer, though nothing was asked
            }
            if (!member(message, "method").is_string() || (message.contains("id") && !has_id)) {
                throw RequestFault(MessageError::InvalidRequest, "a request has a method, and a number or a text as its id");
            }
            if (!has_id) {
                return std::nullopt;  // what is told changes nothing
            }
            return result_message(id, result_of(message));
        } catch (const RequestFault& fault) {
            return error_message(has_id ? id : Message(), fault.code, fault.what());
        } catch (const std::exception& error) {
            return error_message(has_id ? id : Message(), MessageError::InternalError, error.what());
        }
    }

    Message result_of(const Message& message) {
        static constexpr std::array<Method, 4> methods = {{{"initialize", &Session::initialize},
                                                           {"ping", &Session::ping},
                                                           {"tools/list", &Session::list},
                                                           {"tools/call", &Session::call}}};
        const std::string name = text_member(message, "method");
        const auto method =
            std::find_if(methods.begin(), methods.end(), [&](const Method& each) { return each.name == name; });
        if (method == methods.end()) {
            throw RequestFault(MessageError::MethodNotFound, "no request '" + name + "'");
        }
        if (message.contains("params") && !message["params"].is_object()) {
            throw RequestFault(MessageError::InvalidParams, "params must be an object");
        }
        if (name != "ping" && revision_.empty() != (name == "initialize")) {
            throw RequestFault(MessageError::InvalidRequest,
                               revision_.empty() ? "initialize comes first" : "initialize comes once");
        }
        return (this->*method->answer)(member(message, "params"));
    }

    Message initialize(const Message& parameters) {
        const std::string wanted = text_member(parameters, "protocolVersion");
        const auto known = std::find(revisions.begin(), revisions.end(), wanted);
        revision_ = known == revisions.end() ? revisions.back() : *known;
        return {{"protocolVersion", revision_},
                {"capabilities", {{"tools", Message::object()}}},
                {"serverInfo", {{"name", "quor-gjf"}, {"version", QUOR_GJF_PROJECT_VERSION}}},
                {"instructions", instructions}};
    }

    Message ping(const Message&) { return Message::object(); }

    Message list(const Message& parameters) {
        if (!member(parameters, "cursor").is_null()) {
            throw RequestFault(MessageError::InvalidParams, "the list has one page");
        }
        Message all = Message::array();
        for (const Tool& tool : tools()) {
            all.push_back({{"name", tool.name}, {"description", tool.description}, {"inputSchema", input_schema(tool)}});
            if (revision_ >= revision_with_annotations) {
                all.back()["annotations"] = {{"title", tool.title}, {"readOnlyHint", true}, {"openWorldHint", false}};
            }
            if (revision_ >= revision_with_structure) {
                all.back()["title"] = tool.title;
                all.back()["outputSchema"] = output_schema(tool);
            }
        }
        return {{"tools", std::move(all)}};
    }

    // A mistake in the call is an error of the request; what is wrong with a file or a value, an answer that an agent can
    // read.
    Message call(const Message& parameters) {
        const Tool& tool = tool_named(text_member(parameters, "name"));
        const Message arguments = parameters.contains("arguments") ? parameters["arguments"] : Message::object();
        require_arguments(tool, arguments);
        try {
            Message answer = tool.run(tool, arguments, options_);
            cut_answer(answer, options_.largest_answer);
            Message result = content(message_text(answer), false);
            if (revision_ >= revision_with_structure) {
                result["structuredContent"] = std::move(answer);
            }
            return result;
        } catch (const std::exception& error) {
            return content(error.what(), true);
        }
    }

    static Message content(std::string text, bool is_error) {
        return {{"content", Message::array({{{"type", "text"}, {"text", std::move(text)}}})}, {"isError", is_error}};
    }

    ToolServerOptions options_;
    std::string_view revision_;  // empty before initialize
};

ToolServer::ToolServer(ToolServerOptions options) : session_(std::make_unique<Session>(std::move(options))) {}
ToolServer::~ToolServer() = default;

std::string ToolServer::receive(std::string_view message) {
    try {
        return session_->receive(read_message(message));
    } catch (const RequestFault& fault) {
        return message_text(error_message(Message(), fault.code, fault.what()));
    }
}

}  // namespace quor::input::gaussian
