// What a server knows of its client, and the requests that it answers. Private to the room.
#pragma once

#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/protocol/open_document.hpp>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quor::input::gaussian {

class LanguageServer::Session {
   public:
    explicit Session(ServerOptions options) : options_(std::move(options)) {}

    /// Handles a message; answers are added to `sent`.
    void handle(const Message& message);
    void check_next();
    bool has_work() const noexcept { return !unchecked_.empty(); }
    bool is_over() const noexcept { return over_; }
    int exit_code() const noexcept { return shut_down_ ? 0 : 1; }

    std::vector<std::string> sent;

    void send(const Message& message) { sent.push_back(message_text(message)); }

   private:
    enum class State { New, Running, ShutDown };

    void answer(const Message& message);
    void take(const std::string& method, const Message& parameters);
    Message initialize(const Message& parameters);
    Message capabilities() const;

    void open(const Message& parameters);
    void change(const Message& parameters);
    void close(const Message& parameters);
    OpenDocument& document(const Message& parameters);
    static std::int64_t version_of(const Message& parameters);
    void put_off(const std::string& uri);
    const std::vector<Finding>& findings_of(OpenDocument& asked);

    State state_ = State::New;
    ServerOptions options_;
    ColumnUnit unit_ = ColumnUnit::Utf16;
    bool pulls_ = false;        // the client asks for diagnostics
    std::map<std::string, std::unique_ptr<OpenDocument>> documents_;  // by address
    std::deque<std::string> unchecked_;                               // addresses
    bool shut_down_ = false;
    bool over_ = false;
};

}  // namespace quor::input::gaussian
