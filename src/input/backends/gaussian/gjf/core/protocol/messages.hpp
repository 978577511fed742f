// The messages of the protocol as JSON values: read with a bound on how deep they nest, and written. Private to the room.
#pragma once

#include <gjf/core/text/span.hpp>

#include <nlohmann/json.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

using Message = nlohmann::ordered_json;  // keys keep their order

/// The codes of errors.
enum class MessageError : int {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    NotInitialized = -32002,
    RequestFailed = -32803,
    RequestCancelled = -32800,
    ContentModified = -32801,
};

/// Tells what keeps a request from being answered.
class RequestFault : public std::runtime_error {
   public:
    RequestFault(MessageError error_code, const std::string& message) : std::runtime_error(message), code(error_code) {}
    MessageError code;
};

/// The deepest nesting that is read: a deeper message could end the process, since values are freed one within the other.
inline constexpr int deepest_nesting = 64;

/// Reads a message; throws `RequestFault` for what is no JSON, or nests too deep. Half surrogates become U+FFFD.
Message read_message(std::string_view text);

/// Returns a message as text; bytes that are not UTF-8 become U+FFFD.
std::string message_text(const Message& message);

Message result_message(const Message& id, Message result);
Message error_message(const Message& id, MessageError code, const std::string& text);
Message notification(const char* method, Message parameters);

/// Returns a member of an object by a path of keys with "/" between; null for one that is not there.
const Message& member(const Message& object, std::string_view path);
/// The same, of one kind; throws `RequestFault` where it is not there or of another kind.
std::string text_member(const Message& object, std::string_view path);
std::size_t count_member(const Message& object, std::string_view path);
bool flag_member(const Message& object, std::string_view path);  ///< false where it is not there

}  // namespace quor::input::gaussian
