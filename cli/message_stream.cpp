// Reads and writes messages without the buffers of stdio, and watches whether anybody is left to read them.
#include "message_stream.hpp"

#include "commands.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace quor_gjf {
namespace {

constexpr std::size_t longest_message = std::size_t{256} << 20U;
constexpr std::size_t longest_header_line = 4096;
constexpr std::string_view length_key = "content-length:";

// Tells that a message is too long to be taken.
class TooLong : public std::runtime_error {
   public:
    TooLong() : std::runtime_error("a message is longer than 256 MB") {}
};

// Cuts what comes in into messages. What stands between messages and is no header is handed on as a message too, whose
// answer tells that it is none; reading goes on at the next header.
class Frames {
   public:
    explicit Frames(Framing framing) : framing_(framing) {}

    void add(std::string_view bytes) { rest_ += bytes; }

    // Returns the next message that is whole; it is valid until the next call.
    std::optional<std::string_view> next() {
        rest_.erase(0, std::exchange(used_, 0));
        return framing_ == Framing::Lines ? next_line() : next_with_header();
    }

   private:
    std::optional<std::string_view> next_line() {
        const std::size_t end = rest_.find('\n', searched_);
        searched_ = end == std::string::npos ? rest_.size() : 0;
        if (end == std::string::npos) {
            return too_long(rest_.size());
        }
        used_ = end + 1;
        return std::string_view(rest_).substr(0, end);
    }

    std::optional<std::string_view> next_with_header() {
        while (!(in_body_ && rest_.size() - used_ >= length_)) {
            if (in_body_) {
                return too_long(length_);
            }
            const std::size_t end = rest_.find('\n', used_);
            if (end == std::string::npos && rest_.size() - used_ <= longest_header_line) {
                rest_.erase(0, std::exchange(used_, 0));
                return std::nullopt;
            }
            if (end == std::string::npos) {
                // A header may begin in its last bytes.
                const std::size_t begin = std::exchange(used_, rest_.size() - longest_header_line / 2);
                return std::string_view(rest_).substr(begin, used_ - begin);
            }
            const std::string_view line = std::string_view(rest_).substr(used_, end - used_);
            used_ = end + 1;
            if (!read_header(line)) {
                return line;
            }
        }
        in_body_ = false;
        const std::string_view body = std::string_view(rest_).substr(used_, length_);
        used_ += length_;
        return body;
    }

    // Reads a line of a header, "" being its end; returns false for what is none.
    bool read_header(std::string_view line) {
        line.remove_suffix(!line.empty() && line.back() == '\r' ? 1 : 0);
        if (line.empty()) {
            in_body_ = std::exchange(has_length_, false);
            return true;
        }
        std::string lower(line);
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        const std::size_t key = lower.find(length_key);
        if (key == std::string::npos) {
            return lower.starts_with("content-type:");
        }
        const char* begin = lower.data() + std::min(lower.find_first_not_of(' ', key + length_key.size()), lower.size());
        const char* end = lower.data() + lower.size();
        const auto [behind, problem] = std::from_chars(begin, end, length_);
        has_length_ = problem == std::errc() &&
                      lower.find_first_not_of(' ', static_cast<std::size_t>(behind - lower.data())) == std::string::npos;
        if (problem == std::errc::result_out_of_range) {
            throw TooLong();
        }
        return has_length_ && key == 0;
    }

    static std::nullopt_t too_long(std::size_t length) { return length > longest_message ? throw TooLong() : std::nullopt; }

    Framing framing_;
    std::string rest_;
    std::size_t used_ = 0;      // bytes of `rest_` that are done with
    std::size_t searched_ = 0;  // those in which no line ends
    std::size_t length_ = 0;
    bool has_length_ = false;
    bool in_body_ = false;
};

bool is_readable(int milliseconds) {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, milliseconds) > 0;
}

// Adds what there is to read, and waits for it where there is none; returns false at the end of the input.
bool read_some(Frames& frames) {
    static std::string buffer(std::size_t{1} << 16U, '\0');
    while (true) {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count >= 0) {
            frames.add(std::string_view(buffer).substr(0, static_cast<std::size_t>(count)));
            return count > 0;
        }
        if (errno == EAGAIN) {
            is_readable(-1);
        } else if (errno != EINTR) {
            return false;
        }
    }
}

// Returns false when nobody reads any more.
bool write_all(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd output = {STDOUT_FILENO, POLLOUT, 0};
            poll(&output, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool send(Framing framing, const std::vector<std::string>& messages) {
    std::string bytes;
    for (const std::string& message : messages) {
        bytes += framing == Framing::Lines ? message + '\n'
                                           : "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n" + message;
    }
    return write_all(bytes);
}

// Ends the process when its client has ended and the work under way takes longer than a client's end may.
class Watch {
   public:
    explicit Watch(bool finishes) : watched_(finishes ? STDOUT_FILENO : STDIN_FILENO) {
        std::thread([this, parent = getppid()] {
            while (!is_lonely(parent)) {
                std::this_thread::sleep_for(std::chrono::seconds(1));
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(2000));
            std::_Exit(exit_failure);
        }).detach();
    }

    // Watches a process too, unless it cannot be seen from here: its number may be that of another machine.
    void watch(std::int64_t process) {
        if (process > 0 && process != client_ && is_there(static_cast<pid_t>(process))) {
            client_ = process;
        }
    }

   private:
    static bool is_there(pid_t process) { return kill(process, 0) == 0 || errno == EPERM; }

    bool is_lonely(pid_t parent) const {
        pollfd end = {watched_, 0, 0};
        const std::int64_t client = client_;
        return getppid() != parent || (client != 0 && !is_there(static_cast<pid_t>(client))) ||
               (poll(&end, 1, 0) > 0 && (end.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0);
    }

    int watched_;  // whose other end being closed means that nobody is there
    std::atomic<std::int64_t> client_ = 0;
};

// Takes all messages that are whole.
void take_all(Frames& frames, const MessageServer& server) {
    while (const std::optional<std::string_view> message = frames.next()) {
        server.take(*message);
    }
}

}  // namespace

void serve(Framing framing, const MessageServer& server) {
    std::signal(SIGPIPE, SIG_IGN);
    // It outlives this function, since its thread does.
    static Watch watch(server.finishes);
    Frames frames(framing);
    bool has_input = true;
    try {
        while (!server.is_over() && (has_input || server.has_work())) {
            if (has_input && (!server.has_work() || is_readable(0))) {
                has_input = read_some(frames);
                take_all(frames, server);
                continue;
            }
            const std::vector<std::string> messages = server.work();
            watch.watch(server.client ? server.client() : 0);
            if (!send(framing, messages)) {
                return;
            }
        }
    } catch (const TooLong& error) {
        std::fprintf(stderr, "quor-gjf: %s\n", error.what());
    }
}

}  // namespace quor_gjf
