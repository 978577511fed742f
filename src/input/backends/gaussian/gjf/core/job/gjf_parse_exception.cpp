// The words that stand before each message of the error type.
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <cstddef>
#include <string_view>

namespace quor::input::gaussian {
namespace {

constexpr std::string_view message_prefix = "GJF Parse Error: ";

}  // namespace

GJFParseException::GJFParseException(const std::string& message)
    : std::runtime_error(std::string(message_prefix) + message) {}
GJFParseException::~GJFParseException() = default;

std::string bare_message(std::string message) {
    for (std::size_t at = 0; (at = message.find(message_prefix, at)) != std::string::npos;) {
        message.erase(at, message_prefix.size());
    }
    return message;
}

}  // namespace quor::input::gaussian
