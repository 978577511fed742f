// The tools for agents as one object: it takes a message of the Model Context Protocol and gives the answer. What it knows
// of files it is given by who runs it, and it writes none.
#pragma once

#include <core/export.hpp>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// What a server is given by who runs it.
struct ToolServerOptions {
    /// Returns the text of a file that a client names; throws `std::runtime_error` for one that it does not give. Empty
    /// where no file is opened.
    std::function<std::string(const std::string& path)> read;
    /// Returns what differs between two texts, as `diff -u` writes it.
    std::function<std::string(const std::string& name, const std::string& before, const std::string& after)> difference;
    std::size_t largest_answer = 50'000;  ///< bytes of the JSON of a tool's answer
};

/// Speaks the revisions 2024-11-05, 2025-03-26 and 2025-06-18 of the protocol. Used by one thread at a time.
///
/// Nothing is thrown for any message: one that cannot be read is answered by an error without id, and so on. A tool that
/// fails answers with the reason as its text.
class QUOR_GJF_API ToolServer {
   public:
    explicit ToolServer(ToolServerOptions options = {});
    ToolServer(const ToolServer&) = delete;
    ToolServer& operator=(const ToolServer&) = delete;
    ~ToolServer();

    /// Takes a message, a JSON text; returns its answer without line feeds, empty for one that has none.
    std::string receive(std::string_view message);

   private:
    class Session;
    std::unique_ptr<Session> session_;
};

}  // namespace quor::input::gaussian
