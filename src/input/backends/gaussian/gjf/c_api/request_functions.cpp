// The C functions of requests, and those of the language server.
#include <gjf/c_api/error_frame.hpp>
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/report/request.hpp>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct quor_gjf_result {
    std::string text;
};

struct quor_gjf_server {
    quor::input::gaussian::LanguageServer server;
};

namespace {

using namespace quor::input::gaussian;
using namespace quor::input::gaussian::c_api;

// What fails for its arguments is answered; want of memory is not.
std::string answer_to(const char* command, std::string_view text, const char* options) {
    try {
        return request_json(command, text, options == nullptr ? "" : options);
    } catch (const std::logic_error& error) {
        return request_error_json(error.what());
    } catch (const std::runtime_error& error) {
        return request_error_json(error.what());
    }
}

// A line each: line ends within a message are written as escapes.
gjf_result* lines_of(const std::vector<std::string>& messages) {
    auto result = std::make_unique<quor_gjf_result>();
    for (const std::string& message : messages) {
        result->text.append(message).append("\n");
    }
    return result.release();
}

// Runs an operation on a server, which must be there.
template <typename Result, typename Operation>
Result on_server(gjf_server* server, Result failure, Operation operation) noexcept {
    return guarded(nullptr, failure, [&] {
        require(server != nullptr, "server is null");
        return operation(server->server);
    });
}

}  // namespace

extern "C" {

gjf_result* gjf_request(const char* command, const char* text, size_t size, const char* options) noexcept {
    return guarded(nullptr, static_cast<gjf_result*>(nullptr), [&] {
        require(command != nullptr, "command is null");
        require(text != nullptr || size == 0, "text is null");
        auto result = std::make_unique<quor_gjf_result>();
        result->text = answer_to(command, std::string_view(size == 0 ? "" : text, size), options);
        return result.release();
    });
}

const char* gjf_result_text(const gjf_result* result) noexcept { return result == nullptr ? "" : result->text.c_str(); }

size_t gjf_result_size(const gjf_result* result) noexcept { return result == nullptr ? 0 : result->text.size(); }

void gjf_result_destroy(gjf_result* result) noexcept { delete result; }

gjf_server* gjf_server_create(void) noexcept {
    return guarded(nullptr, static_cast<gjf_server*>(nullptr), [] { return std::make_unique<quor_gjf_server>().release(); });
}

gjf_result* gjf_server_message(gjf_server* server, const char* message, size_t size) noexcept {
    return on_server(server, static_cast<gjf_result*>(nullptr), [&](LanguageServer& asked) {
        require(message != nullptr, "message is null");
        return lines_of(asked.receive(std::string_view(message, size)));
    });
}

int gjf_server_has_work(gjf_server* server) noexcept {
    return on_server(server, -1, [](const LanguageServer& asked) { return asked.has_work() ? 1 : 0; });
}

gjf_result* gjf_server_work(gjf_server* server) noexcept {
    return on_server(server, static_cast<gjf_result*>(nullptr),
                     [](LanguageServer& asked) { return lines_of(asked.work()); });
}

void gjf_server_destroy(gjf_server* server) noexcept { delete server; }
}
