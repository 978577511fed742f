// What a server knows of its client, and the requests that it answers. Private to the room.
#pragma once

#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/protocol/open_document.hpp>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

class LanguageServer::Session {
   public:
    explicit Session(ServerOptions options) : options_(std::move(options)) {}

    void take(std::string_view text);
    /// Handles the first message that waits; answers are added to `sent`.
    void handle_next();
    void check_next();
    void read_next();
    bool has_messages() const noexcept { return !waiting_.empty(); }
    bool has_work() const noexcept {
        return has_messages() || !sent.empty() || !unchecked_.empty() || !unread_.empty() || workspace_check_;
    }
    bool is_over() const noexcept { return over_; }
    int exit_code() const noexcept { return state_ == State::ShutDown ? 0 : 1; }
    std::int64_t client_process() const noexcept { return client_process_; }

    std::vector<std::string> sent;

    void send(const Message& message) { sent.push_back(message_text(message)); }

   private:
    enum class State { New, Running, ShutDown };

    /// A message that waits, or why it is none.
    struct Waiting {
        Message message;
        std::optional<RequestFault> fault = std::nullopt;  ///< what the answer is whatever is asked
    };

    void handle(const Waiting& waiting);
    void cancel(const Message& id);
    void take_result(const Message& message);
    void answer(const Message& message);
    Message result_of(const std::string& method, const Message& parameters);
    void note(const std::string& method, const Message& parameters);
    Message initialize(const Message& parameters);
    Message capabilities() const;

    void open(const Message& parameters);
    void change(const Message& parameters);
    void close(const Message& parameters);
    OpenDocument& document(const Message& parameters);
    static std::int64_t version_of(const Message& parameters);
    void put_off(const std::string& uri);
    const std::vector<Finding>& findings_of(OpenDocument& asked);
    std::vector<Finding> check(const OpenDocument& checked);
    void forget_findings();

    void set_up_workspace(const Message& parameters);
    void begin_workspace_check(const Message& id, const Message& parameters);
    void check_next_file();
    Message report_of_file(const std::string& path);
    void end_workspace_check();
    void tell_progress(Message value);

    /// The files below the folders of the client on their way to being checked.
    struct WorkspaceCheck {
        Message id;     ///< of the request that waits for the answer; null where the client does not ask
        Message token;  ///< by which progress is told; null for none
        std::vector<std::string> files = {};
        std::size_t next = 0;
        std::map<std::string, std::string> known = {};  ///< what the client has of each address
        Message reports = Message::array();
    };

    State state_ = State::New;
    ServerOptions options_;
    ColumnUnit unit_ = ColumnUnit::Utf16;
    bool pulls_ = false;      // the client asks for diagnostics
    bool refreshes_ = false;  // and can be told to ask again
    bool shows_progress_ = false;
    bool checks_workspace_ = false;
    std::vector<std::string> folders_;
    std::optional<WorkspaceCheck> workspace_check_;
    std::int64_t client_process_ = 0;
    std::deque<Waiting> waiting_;
    std::map<std::string, std::unique_ptr<OpenDocument>> documents_;  // by address
    std::deque<std::string> unread_;
    std::deque<std::string> unchecked_;  // addresses
    std::string told_problem_;           // of the configuration, so that it is told once
    bool over_ = false;
};

}  // namespace quor::input::gaussian
