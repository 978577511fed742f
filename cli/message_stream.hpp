// Messages over standard input and output, for servers: nothing else goes to standard output, and the process ends with its
// client.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {

/// How messages are told apart: by a header with their length each, or one a line.
enum class Framing { Headers, Lines };

/// What answers messages.
struct MessageServer {
    std::function<void(std::string_view)> take;      ///< puts off a message that came; what is no message too
    std::function<bool()> has_work;                  ///< tells whether something was put off
    std::function<std::vector<std::string>()> work;  ///< does a piece of it; returns what is to be sent
    std::function<bool()> is_over;                   ///< tells whether the client has asked for the end
    std::function<std::int64_t()> client =
        nullptr;            ///< returns the process of the client, 0 where it is not known; or empty
    bool finishes = false;  ///< whether work that was put off is done behind the end of the input
};

/// Serves until the client asks for the end, the input ends, or the client's process does: within five seconds of these,
/// even where a piece of work takes longer; one that finishes goes on behind its input's end while its answers are read.
/// Work is done only while no message waits. A message of more than 256 MB ends it with a line on standard error.
void serve(Framing framing, const MessageServer& server);

}  // namespace quor_gjf
