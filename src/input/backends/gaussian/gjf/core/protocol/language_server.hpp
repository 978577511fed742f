// The language server as one object: it takes a message and gives messages. It has no input or output of its own, no threads
// and no clock, so that a tool, a page and an extension of an editor run the same one.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/finding.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// What a server is given by who runs it.
struct ServerOptions {
    /// Returns the findings of a text whose file has this path, empty for one without; as `check_text` where it is empty.
    std::function<std::vector<Finding>(const std::string& text, const std::string& path)> check = nullptr;
    /// Returns a text with every safe fix; as `fix_text` where it is empty.
    std::function<std::string(const std::string& text, const std::string& path)> fix = nullptr;
    /// Tells whether the client sees the files of this machine: then codes are linked to the page that explains them.
    bool shares_files = false;
    /// Returns job files below a folder, at most so many. Where it is empty, or `read` is, open texts alone are checked.
    std::function<std::vector<std::string>(const std::string& folder, std::size_t most)> find_files = nullptr;
    /// Returns what is in a file; nothing for one that cannot be read.
    std::function<std::optional<std::string>(const std::string& path)> read = nullptr;
};

/// Speaks the Language Server Protocol 3.17 about job files. Used by one thread at a time.
///
/// Messages are JSON texts without header. Nothing is thrown for any message: a request that fails is answered by an error,
/// a message that cannot be read by one without id.
class QUOR_GJF_API LanguageServer {
   public:
    explicit LanguageServer(ServerOptions options = {});
    LanguageServer(const LanguageServer&) = delete;
    LanguageServer& operator=(const LanguageServer&) = delete;
    ~LanguageServer();

    /// Takes a message and puts it off. One that cancels a request that waits is heeded at once.
    void take(std::string_view message);

    /// Does one piece of what was put off: answers the first message that waits; without any, checks one text that was
    /// changed. Returns the messages that come of it. To be called when there is nothing more to take: what a later message
    /// makes superfluous is then never done.
    std::vector<std::string> work();
    bool has_work() const noexcept;

    /// Takes a message and answers all that wait; returns the answers, in order. Texts are left unchecked until `work`.
    std::vector<std::string> receive(std::string_view message);

    /// Tells whether the client has asked for the end; then `exit_code` is 0 where it said before that it would.
    bool is_over() const noexcept;
    int exit_code() const noexcept;
    /// Returns the number of the process that began the server, as the client tells it; 0 where it does not.
    std::int64_t client_process() const noexcept;

   private:
    class Session;
    std::unique_ptr<Session> session_;
};

}  // namespace quor::input::gaussian
