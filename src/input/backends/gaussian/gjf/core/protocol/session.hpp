// What a server knows of its client, and the requests that it answers. Private to the room.
#pragma once

#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/protocol/open_document.hpp>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

class LanguageServer::Session {
   public:
    explicit Session(ServerOptions options) : options_(std::move(options)) {}

    void take(std::string_view text);
    /// Handles the first message that waits; answers are added to `sent`.
    void handle_next();
    void check_next();
    bool has_messages() const noexcept { return !waiting_.empty(); }
    bool has_work() const noexcept { return has_messages() || !sent.empty() || !unchecked_.empty(); }
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

    State state_ = State::New;
    ServerOptions options_;
    ColumnUnit unit_ = ColumnUnit::Utf16;
    bool pulls_ = false;  // the client asks for diagnostics
    std::int64_t client_process_ = 0;
    std::deque<Waiting> waiting_;
    std::map<std::string, std::unique_ptr<OpenDocument>> documents_;  // by address
    std::deque<std::string> unchecked_;                               // addresses
    std::string told_problem_;                                        // of the configuration, so that it is told once
    bool over_ = false;
};

}  // namespace quor::input::gaussian
