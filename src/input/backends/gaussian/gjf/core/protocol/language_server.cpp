// Speaks the protocol: who may ask what when, and which texts are open.
#include <gjf/core/protocol/language_server.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/protocol/document_requests.hpp>
#include <gjf/core/protocol/session.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {

void LanguageServer::Session::handle(const Message& message) {
    if (!message.is_object() || member(message, "jsonrpc") != "2.0") {
        send(error_message(Message(), MessageError::InvalidRequest, "not a message of JSON-RPC 2.0"));
        return;
    }
    const Message& method = member(message, "method");
    if (!method.is_string()) {
        if (member(message, "result").is_null() && member(message, "error").is_null()) {
            send(error_message(member(message, "id"), MessageError::InvalidRequest, "a message without method"));
        }
        return;  // an answer to a request of ours
    }
    if (message.contains("id")) {
        answer(message);
    } else {
        take(method.get<std::string>(), member(message, "params"));
    }
}

void LanguageServer::Session::answer(const Message& message) {
    const Message& id = member(message, "id");
    try {
        const std::string method = text_member(message, "method");
        const Message& parameters = member(message, "params");
        if (method == "initialize" && state_ == State::New) {
            send(result_message(id, initialize(parameters)));
            return;
        }
        if (state_ != State::Running) {
            throw RequestFault(state_ == State::New ? MessageError::NotInitialized : MessageError::InvalidRequest,
                               state_ == State::New ? "initialize comes first" : "nothing is answered after shutdown");
        }
        if (method == "shutdown") {
            state_ = State::ShutDown;
            shut_down_ = true;
            send(result_message(id, Message()));
            return;
        }
        const DocumentRequest* request = find_document_request(method);
        if (request == nullptr) {
            throw RequestFault(method == "initialize" ? MessageError::InvalidRequest : MessageError::MethodNotFound,
                               "no request '" + method + "'" + (method == "initialize" ? " a second time" : ""));
        }
        OpenDocument& asked = document(parameters);
        const std::function<const std::vector<Finding>&()> findings = [&]() -> const std::vector<Finding>& {
            return findings_of(asked);
        };
        send(result_message(id, request->answer({asked, parameters, findings})));
    } catch (const RequestFault& fault) {
        send(error_message(id, fault.code, fault.what()));
    } catch (const std::exception& error) {
        send(error_message(id, MessageError::InternalError, error.what()));
    }
}

// Notifications have no answer: what is wrong with one is told in a line of the client's log.
void LanguageServer::Session::take(const std::string& method, const Message& parameters) {
    if (method == "exit") {
        over_ = true;
        return;
    }
    if (state_ != State::Running) {
        return;
    }
    try {
        if (method == "textDocument/didOpen") {
            open(parameters);
        } else if (method == "textDocument/didChange") {
            change(parameters);
        } else if (method == "textDocument/didClose") {
            close(parameters);
        }
    } catch (const std::exception& error) {
        send(notification("window/logMessage", {{"type", 1}, {"message", method + ": " + error.what()}}));
    }
}

Message LanguageServer::Session::initialize(const Message& parameters) {
    const Message& encodings = member(parameters, "capabilities/general/positionEncodings");
    if (encodings.is_array() && std::find(encodings.begin(), encodings.end(), "utf-8") != encodings.end()) {
        unit_ = ColumnUnit::Bytes;
    }
    pulls_ = member(parameters, "capabilities/textDocument/diagnostic").is_object();
    state_ = State::Running;
    return {{"capabilities", capabilities()}, {"serverInfo", {{"name", "quor-gjf"}, {"version", QUOR_GJF_PROJECT_VERSION}}}};
}

Message LanguageServer::Session::capabilities() const {
    Message all = {{"positionEncoding", unit_ == ColumnUnit::Bytes ? "utf-8" : "utf-16"},
                   {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
                   {"completionProvider", {{"triggerCharacters", {"=", "(", ",", "/", "%"}}}},
                   {"hoverProvider", true},
                   {"definitionProvider", true},
                   {"referencesProvider", true},
                   {"documentHighlightProvider", true},
                   {"renameProvider", {{"prepareProvider", true}}},
                   {"documentSymbolProvider", true},
                   {"foldingRangeProvider", true},
                   {"semanticTokensProvider",
                    {{"legend", {{"tokenTypes", token_types()}, {"tokenModifiers", Message::array()}}}, {"full", true}, {"range", true}}},
                   {"inlayHintProvider", true},
                   {"documentFormattingProvider", true},
                   {"documentRangeFormattingProvider", true},
                   {"documentLinkProvider", Message::object()},
                   {"codeActionProvider", {{"codeActionKinds", {"quickfix", fix_all_kind}}}}};
    if (pulls_) {
        all["diagnosticProvider"] = {{"identifier", "quor-gjf"}, {"interFileDependencies", false}, {"workspaceDiagnostics", false}};
    }
    return all;
}

void LanguageServer::Session::open(const Message& parameters) {
    const std::string uri = text_member(parameters, "textDocument/uri");
    documents_[uri] = std::make_unique<OpenDocument>(uri, version_of(parameters), text_member(parameters, "textDocument/text"), unit_);
    put_off(uri);
}

void LanguageServer::Session::change(const Message& parameters) {
    OpenDocument& changed = document(parameters);
    changed.change(member(parameters, "contentChanges"), version_of(parameters));
    put_off(changed.uri());
}

void LanguageServer::Session::close(const Message& parameters) {
    OpenDocument& closed = document(parameters);
    const std::string uri = closed.uri();
    std::erase(unchecked_, uri);
    documents_.erase(uri);
    if (!pulls_) {
        send(notification("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Message::array()}}));
    }
}

std::int64_t LanguageServer::Session::version_of(const Message& parameters) {
    const Message& version = member(parameters, "textDocument/version");
    return version.is_number_integer() ? version.get<std::int64_t>() : 0;
}

OpenDocument& LanguageServer::Session::document(const Message& parameters) {
    const auto found = documents_.find(text_member(parameters, "textDocument/uri"));
    if (found == documents_.end()) {
        throw RequestFault(MessageError::InvalidParams, "this text is not open");
    }
    return *found->second;
}

// A client that asks for diagnostics gets none unasked.
void LanguageServer::Session::put_off(const std::string& uri) {
    if (!pulls_ && std::find(unchecked_.begin(), unchecked_.end(), uri) == unchecked_.end()) {
        unchecked_.push_back(uri);
    }
}

const std::vector<Finding>& LanguageServer::Session::findings_of(OpenDocument& asked) {
    if (!asked.findings) {
        asked.findings = options_.check ? options_.check(asked.text(), asked.path()) : check_text(asked.text());
    }
    return *asked.findings;
}

void LanguageServer::Session::check_next() {
    if (unchecked_.empty()) {
        return;
    }
    const auto found = documents_.find(unchecked_.front());
    unchecked_.pop_front();
    if (found == documents_.end()) {
        return;
    }
    OpenDocument& checked = *found->second;
    try {
        send(notification("textDocument/publishDiagnostics", {{"uri", checked.uri()},
                                                              {"version", checked.version()},
                                                              {"diagnostics", diagnostics_json(checked, findings_of(checked))}}));
    } catch (const std::exception& error) {
        send(notification("window/logMessage", {{"type", 1}, {"message", std::string("check: ") + error.what()}}));
    }
}

LanguageServer::LanguageServer(ServerOptions options) : session_(std::make_unique<Session>(std::move(options))) {}
LanguageServer::~LanguageServer() = default;

std::vector<std::string> LanguageServer::receive(std::string_view message) {
    try {
        session_->handle(read_message(message));
    } catch (const RequestFault& fault) {
        session_->send(error_message(Message(), fault.code, fault.what()));
    }
    return std::exchange(session_->sent, {});
}

std::vector<std::string> LanguageServer::work() {
    session_->check_next();
    return std::exchange(session_->sent, {});
}

bool LanguageServer::has_work() const noexcept { return session_->has_work(); }
bool LanguageServer::is_over() const noexcept { return session_->is_over(); }
int LanguageServer::exit_code() const noexcept { return session_->exit_code(); }

}  // namespace quor::input::gaussian
