// Checks the files below the folders of a client that asked for it: one file at a time, so that nothing waits for them.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/protocol/code_actions.hpp>
#include <gjf/core/protocol/document_requests.hpp>
#include <gjf/core/protocol/session.hpp>

#include <functional>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t most_files = 5000;
constexpr const char* own_token = "quor-gjf/workspace";

}  // namespace

void LanguageServer::Session::set_up_workspace(const Message& parameters) {
    shows_progress_ = flag_member(parameters, "capabilities/window/workDoneProgress");
    checks_workspace_ =
        flag_member(parameters, "initializationOptions/workspaceDiagnostics") && options_.find_files && options_.read;
    for (const Message& folder : member(parameters, "workspaceFolders")) {
        folders_.push_back(path_of(text_member(folder, "uri")));
    }
    if (const Message& root = member(parameters, "rootUri"); folders_.empty() && root.is_string()) {
        folders_.push_back(path_of(root.get<std::string>()));
    }
    std::erase(folders_, std::string());
}

void LanguageServer::Session::begin_workspace_check(const Message& id, const Message& parameters) {
    WorkspaceCheck begun{id, member(parameters, "workDoneToken")};
    for (const Message& each : member(parameters, "previousResultIds")) {
        begun.known[text_member(each, "uri")] = text_member(each, "value");
    }
    for (const std::string& folder : folders_) {
        const std::vector<std::string> found = options_.find_files(folder, most_files + 1 - begun.files.size());
        begun.files.insert(begun.files.end(), found.begin(), found.end());
    }
    if (begun.files.size() > most_files) {
        begun.files.resize(most_files);
        send(notification("window/showMessage",
                          {{"type", 2}, {"message", "more than 5,000 job files: the first 5,000 are checked"}}));
    }
    if (workspace_check_ && !workspace_check_->id.is_null()) {
        send(error_message(workspace_check_->id, MessageError::ContentModified, "asked again"));
    }
    workspace_check_ = std::move(begun);
    if (id.is_null() && shows_progress_) {
        send({{"jsonrpc", "2.0"},
              {"id", own_token},
              {"method", "window/workDoneProgress/create"},
              {"params", {{"token", own_token}}}});
    }
    tell_progress({{"kind", "begin"}, {"title", "checking job files"}, {"cancellable", true}, {"percentage", 0}});
}

// An answer to a request of ours: a client that made a token is told the progress.
void LanguageServer::Session::take_result(const Message& message) {
    if (!message.contains("result") && !message.contains("error")) {
        send(error_message(member(message, "id"), MessageError::InvalidRequest, "a message without method"));
    } else if (workspace_check_ && member(message, "id") == own_token && !message.contains("error")) {
        workspace_check_->token = own_token;
        tell_progress({{"kind", "begin"}, {"title", "checking job files"}, {"cancellable", true}, {"percentage", 0}});
    }
}

void LanguageServer::Session::tell_progress(Message value) {
    if (!workspace_check_->token.is_null()) {
        send(notification("$/progress", {{"token", workspace_check_->token}, {"value", std::move(value)}}));
    }
}

void LanguageServer::Session::check_next_file() {
    if (!workspace_check_) {
        return;
    }
    WorkspaceCheck& check = *workspace_check_;
    if (check.next == check.files.size()) {
        end_workspace_check();
        return;
    }
    Message report = report_of_file(check.files[check.next++]);
    if (!report.is_null() && check.id.is_null()) {
        send(notification("textDocument/publishDiagnostics", {{"uri", report["uri"]}, {"diagnostics", report["items"]}}));
    } else if (!report.is_null()) {
        check.reports.push_back(std::move(report));
    }
    if (check.next * 100 / check.files.size() != (check.next - 1) * 100 / check.files.size()) {
        tell_progress({{"kind", "report"}, {"percentage", check.next * 100 / check.files.size()}});
    }
}

// Null for a text that is open, of which the client is told otherwise, and for one that cannot be read.
Message LanguageServer::Session::report_of_file(const std::string& path) {
    const std::string uri = "file://" + address_of(path);
    std::optional<std::string> text;
    if (documents_.count(uri) != 0 || !(text = options_.read(path))) {
        return {};
    }
    const std::string id = std::to_string(std::hash<std::string>()(*text));
    const auto known = workspace_check_->known.find(uri);
    if (known != workspace_check_->known.end() && known->second == id) {
        return {{"kind", "unchanged"}, {"uri", uri}, {"version", nullptr}, {"resultId", id}};
    }
    const OpenDocument document(uri, 0, std::move(*text), unit_);
    return {{"kind", "full"},
            {"uri", uri},
            {"version", nullptr},
            {"resultId", id},
            {"items", diagnostics_json(document, check(document), options_.shares_files)}};
}

void LanguageServer::Session::end_workspace_check() {
    tell_progress({{"kind", "end"}});
    if (!workspace_check_->id.is_null()) {
        send(result_message(workspace_check_->id, {{"items", std::move(workspace_check_->reports)}}));
    }
    workspace_check_.reset();
}

}  // namespace quor::input::gaussian
