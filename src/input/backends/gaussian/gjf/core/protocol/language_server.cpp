// Speaks the protocol: who may ask what when, and which texts are open.
#include <gjf/core/protocol/language_server.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/configuration/configuration.hpp>
#include <gjf/core/protocol/document_requests.hpp>
#include <gjf/core/protocol/session.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quor::input::gaussian {
namespace {

struct Encoding {
    std::string_view name;
    ColumnUnit unit;
};

// The first one that a client has too is agreed on: bytes take no counting.
constexpr Encoding encodings_by_ease[] = {
    {"utf-8", ColumnUnit::Bytes}, {"utf-16", ColumnUnit::Utf16}, {"utf-32", ColumnUnit::CodePoints}};

ColumnUnit agreed_unit(const Message& known) {
    for (const Encoding& each : encodings_by_ease) {
        if (known.is_array() && std::find(known.begin(), known.end(), each.name) != known.end()) {
            return each.unit;
        }
    }
    return ColumnUnit::Utf16;
}

std::string_view encoding_name(ColumnUnit unit) {
    return std::find_if(std::begin(encodings_by_ease), std::end(encodings_by_ease),
                        [unit](const Encoding& each) { return each.unit == unit; })
        ->name;
}

}  // namespace

void LanguageServer::Session::take(std::string_view text) {
    try {
        waiting_.push_back({read_message(text)});
    } catch (const RequestFault& fault) {
        waiting_.push_back({Message::object(), fault});
    }
    if (member(waiting_.back().message, "method") == "$/cancelRequest") {
        cancel(member(waiting_.back().message, "params/id"));
        waiting_.pop_back();
    }
}

void LanguageServer::Session::cancel(const Message& id) {
    for (Waiting& each : waiting_) {
        if (each.message.contains("id") && member(each.message, "id") == id) {
            each.fault = RequestFault(MessageError::RequestCancelled, "cancelled");
        }
    }
    if (workspace_check_ && !id.is_null() && workspace_check_->id == id) {
        send(error_message(id, MessageError::RequestCancelled, "cancelled"));
        workspace_check_.reset();
    }
}

void LanguageServer::Session::handle_next() {
    const Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    handle(next);
}

void LanguageServer::Session::handle(const Waiting& waiting) {
    const Message& message = waiting.message;
    if (waiting.fault || !message.is_object() || member(message, "jsonrpc") != "2.0") {
        const RequestFault fault =
            waiting.fault.value_or(RequestFault(MessageError::InvalidRequest, "not a message of JSON-RPC 2.0"));
        send(error_message(member(message, "id"), fault.code, fault.what()));
        return;
    }
    const Message& method = member(message, "method");
    if (!method.is_string()) {
        take_result(message);
        return;
    }
    if (message.contains("id")) {
        answer(message);
    } else {
        note(method.get<std::string>(), member(message, "params"));
    }
}

void LanguageServer::Session::answer(const Message& message) {
    const Message& id = member(message, "id");
    try {
        const std::string method = text_member(message, "method");
        if (method == "workspace/diagnostic" && state_ == State::Running && pulls_ && checks_workspace_) {
            begin_workspace_check(id, member(message, "params"));
            return;
        }
        send(result_message(id, result_of(method, member(message, "params"))));
    } catch (const RequestFault& fault) {
        send(error_message(id, fault.code, fault.what()));
    } catch (const std::exception& error) {
        send(error_message(id, MessageError::InternalError, error.what()));
    }
}

Message LanguageServer::Session::result_of(const std::string& method, const Message& parameters) {
    if (method == "initialize" && state_ == State::New) {
        return initialize(parameters);
    }
    if (state_ != State::Running) {
        throw RequestFault(state_ == State::New ? MessageError::NotInitialized : MessageError::InvalidRequest,
                           state_ == State::New ? "initialize comes first" : "nothing is answered after shutdown");
    }
    if (method == "shutdown") {
        state_ = State::ShutDown;
        return {};
    }
    const DocumentRequest* request = find_document_request(method);
    if (request == nullptr) {
        const bool again = method == "initialize";
        throw RequestFault(again ? MessageError::InvalidRequest : MessageError::MethodNotFound,
                           "no request '" + method + "'" + (again ? " a second time" : ""));
    }
    OpenDocument& asked = document(parameters);
    const std::function<const std::vector<Finding>&()> findings = [&]() -> const std::vector<Finding>& {
        return findings_of(asked);
    };
    return request->answer({asked, parameters, options_, findings});
}

// Notifications have no answer: what is wrong with one is told in a line of the client's log.
void LanguageServer::Session::note(const std::string& method, const Message& parameters) {
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
        } else if (method == "textDocument/didSave" || method == "workspace/didChangeWatchedFiles") {
            forget_findings();  // a configuration, or a checkpoint, may be another
        } else if (method == "initialized" && checks_workspace_ && !pulls_) {
            begin_workspace_check(Message(), Message());
        } else if (method == "window/workDoneProgress/cancel" && workspace_check_) {
            end_workspace_check();  // what was found so far holds
        }
    } catch (const std::exception& error) {
        send(notification("window/logMessage", {{"type", 1}, {"message", method + ": " + error.what()}}));
    }
}

Message LanguageServer::Session::initialize(const Message& parameters) {
    const Message& encodings = member(parameters, "capabilities/general/positionEncodings");
    unit_ = agreed_unit(encodings);
    const Message& process = member(parameters, "processId");
    client_process_ = process.is_number_integer() ? process.get<std::int64_t>() : 0;
    pulls_ = member(parameters, "capabilities/textDocument/diagnostic").is_object();
    refreshes_ = flag_member(parameters, "capabilities/workspace/diagnostics/refreshSupport");
    set_up_workspace(parameters);
    state_ = State::Running;
    return {{"capabilities", capabilities()}, {"serverInfo", {{"name", "quor-gjf"}, {"version", QUOR_GJF_PROJECT_VERSION}}}};
}

Message LanguageServer::Session::capabilities() const {
    Message all = {{"positionEncoding", encoding_name(unit_)},
                   {"textDocumentSync", {{"openClose", true}, {"change", 2}, {"save", true}}},
                   {"completionProvider", {{"triggerCharacters", {"=", "(", ",", "/", "%"}}}},
                   {"hoverProvider", true},
                   {"definitionProvider", true},
                   {"referencesProvider", true},
                   {"documentHighlightProvider", true},
                   {"renameProvider", {{"prepareProvider", true}}},
                   {"documentSymbolProvider", true},
                   {"foldingRangeProvider", true},
                   {"semanticTokensProvider",
                    {{"legend", {{"tokenTypes", token_types()}, {"tokenModifiers", Message::array()}}},
                     {"full", {{"delta", true}}},
                     {"range", true}}},
                   {"inlayHintProvider", true},
                   {"documentFormattingProvider", true},
                   {"documentRangeFormattingProvider", true},
                   {"documentLinkProvider", Message::object()},
                   {"codeActionProvider", {{"codeActionKinds", {"quickfix", fix_all_kind}}}}};
    if (pulls_) {
        all["diagnosticProvider"] = {
            {"identifier", "quor-gjf"}, {"interFileDependencies", false}, {"workspaceDiagnostics", checks_workspace_}};
    }
    return all;
}

void LanguageServer::Session::open(const Message& parameters) {
    const std::string uri = text_member(parameters, "textDocument/uri");
    documents_[uri] =
        std::make_unique<OpenDocument>(uri, version_of(parameters), text_member(parameters, "textDocument/text"), unit_);
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
    std::erase(unread_, uri);
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

// Reads a text before somebody asks what stands there: a completion is not to wait for it.
void LanguageServer::Session::read_next() {
    const auto found = documents_.find(unread_.front());
    unread_.pop_front();
    if (found != documents_.end()) {
        try {
            found->second->file();
        } catch (const std::exception&) {
            // Whoever asks is told.
        }
    }
}

// What was found may no longer be so, although no text has changed.
void LanguageServer::Session::forget_findings() {
    for (const auto& [uri, open] : documents_) {
        open->findings.reset();
        put_off(uri);
    }
    if (pulls_ && refreshes_) {
        send({{"jsonrpc", "2.0"}, {"id", "refresh"}, {"method", "workspace/diagnostic/refresh"}});
    }
}

// What is to be done with a text that is new. A client that asks for diagnostics gets none unasked.
void LanguageServer::Session::put_off(const std::string& uri) {
    const auto add = [&uri](std::deque<std::string>& addresses) {
        if (std::find(addresses.begin(), addresses.end(), uri) == addresses.end()) {
            addresses.push_back(uri);
        }
    };
    add(unread_);
    if (!pulls_) {
        add(unchecked_);
    }
}

const std::vector<Finding>& LanguageServer::Session::findings_of(OpenDocument& asked) {
    if (!asked.findings) {
        asked.findings = check(asked);
    }
    return *asked.findings;
}

// A mistake in a configuration file keeps nobody from being told the rest.
std::vector<Finding> LanguageServer::Session::check(const OpenDocument& checked) {
    if (!options_.check) {
        return check_text(checked.text());
    }
    try {
        std::vector<Finding> findings = options_.check(checked.text(), checked.path());
        told_problem_.clear();
        return findings;
    } catch (const ConfigurationError& error) {
        if (told_problem_ != error.what()) {
            told_problem_ = error.what();
            send(notification("window/showMessage", {{"type", 1}, {"message", told_problem_}}));
        }
        return check_text(checked.text());
    }
}

void LanguageServer::Session::check_next() {
    if (unchecked_.empty() && !unread_.empty()) {
        read_next();
        return;
    }
    if (unchecked_.empty()) {
        check_next_file();
        return;
    }
    const auto found = documents_.find(unchecked_.front());
    unchecked_.pop_front();
    if (found == documents_.end()) {
        return;
    }
    OpenDocument& checked = *found->second;
    try {
        send(notification("textDocument/publishDiagnostics",
                          {{"uri", checked.uri()},
                           {"version", checked.version()},
                           {"diagnostics", diagnostics_json(checked, findings_of(checked), options_.shares_files)}}));
    } catch (const std::exception& error) {
        send(notification("window/logMessage", {{"type", 1}, {"message", std::string("check: ") + error.what()}}));
    }
}

LanguageServer::LanguageServer(ServerOptions options) : session_(std::make_unique<Session>(std::move(options))) {}
LanguageServer::~LanguageServer() = default;

void LanguageServer::take(std::string_view message) { session_->take(message); }

std::vector<std::string> LanguageServer::work() {
    if (session_->has_messages()) {
        session_->handle_next();
    } else {
        session_->check_next();
    }
    return std::exchange(session_->sent, {});
}

std::vector<std::string> LanguageServer::receive(std::string_view message) {
    session_->take(message);
    while (session_->has_messages()) {
        session_->handle_next();
    }
    return std::exchange(session_->sent, {});
}

bool LanguageServer::has_work() const noexcept { return session_->has_work(); }
bool LanguageServer::is_over() const noexcept { return session_->is_over(); }
int LanguageServer::exit_code() const noexcept { return session_->exit_code(); }
std::int64_t LanguageServer::client_process() const noexcept { return session_->client_process(); }

}  // namespace quor::input::gaussian
