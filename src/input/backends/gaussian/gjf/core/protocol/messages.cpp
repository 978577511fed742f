// Reads and writes messages.
#include <gjf/core/protocol/messages.hpp>

#include <cstdint>

namespace quor::input::gaussian {
namespace {

// Returns the four hexadecimal digits behind "\u" at a place, or -1.
long unit_at(std::string_view text, std::size_t at) noexcept {
    if (at + 6 > text.size() || text[at] != '\\' || text[at + 1] != 'u') {
        return -1;
    }
    long value = 0;
    for (const char c : text.substr(at + 2, 4)) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                 : -1;
        if (digit < 0) {
            return -1;
        }
        value = value * 16 + digit;
    }
    return value;
}

bool is_high(long unit) noexcept { return unit >= 0xD800 && unit < 0xDC00; }
bool is_low(long unit) noexcept { return unit >= 0xDC00 && unit < 0xE000; }

// Puts U+FFFD in the place of surrogates that have no other half; the JSON library refuses a text that has one.
std::string with_whole_characters(std::string_view text) {
    std::string whole(text);
    for (std::size_t i = text.find("\\u") == std::string_view::npos ? whole.size() : 0; i + 1 < whole.size(); ++i) {
        if (whole[i] != '\\') {
            continue;
        }
        const long unit = unit_at(whole, i);
        if (is_high(unit) && is_low(unit_at(whole, i + 6))) {
            i += 11;
        } else if (is_high(unit) || is_low(unit)) {
            whole.replace(i + 2, 4, "FFFD");
            i += 5;
        } else {
            ++i;  // what is escaped
        }
    }
    return whole;
}

}  // namespace

Message read_message(std::string_view text) {
    bool too_deep = false;
    const Message::parser_callback_t bound = [&](int depth, Message::parse_event_t, Message&) {
        too_deep = too_deep || depth > deepest_nesting;
        if (too_deep) {
            throw RequestFault(MessageError::ParseError, "the message nests deeper than 64 levels");
        }
        return true;
    };
    try {
        return Message::parse(with_whole_characters(text), bound);
    } catch (const Message::exception& error) {
        // Behind the bracket that names the library's error.
        const std::string_view what = error.what();
        const std::size_t begin = what.find("] ");
        throw RequestFault(MessageError::ParseError,
                           "no JSON: " + std::string(begin == std::string_view::npos ? what : what.substr(begin + 2)));
    }
}

std::string message_text(const Message& message) { return message.dump(-1, ' ', false, Message::error_handler_t::replace); }

Message result_message(const Message& id, Message result) {
    return {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}};
}

Message error_message(const Message& id, MessageError code, const std::string& text) {
    return {{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", static_cast<int>(code)}, {"message", text}}}};
}

Message notification(const char* method, Message parameters) {
    return {{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(parameters)}};
}

const Message& member(const Message& object, std::string_view path) {
    static const Message none;
    const Message* value = &object;
    while (!path.empty()) {
        const std::string key(path.substr(0, path.find('/')));
        path.remove_prefix(std::min(key.size() + 1, path.size()));
        const auto found = value->is_object() ? value->find(key) : value->end();
        if (found == value->end()) {
            return none;
        }
        value = &*found;
    }
    return *value;
}

std::string text_member(const Message& object, std::string_view path) {
    const Message& value = member(object, path);
    if (!value.is_string()) {
        throw RequestFault(MessageError::InvalidParams, std::string(path) + " must be a text");
    }
    return value.get<std::string>();
}

std::size_t count_member(const Message& object, std::string_view path) {
    const Message& value = member(object, path);
    if (!value.is_number_integer() || value.get<std::int64_t>() < 0) {
        throw RequestFault(MessageError::InvalidParams, std::string(path) + " must be a whole number from 0 on");
    }
    return value.get<std::size_t>();
}

bool flag_member(const Message& object, std::string_view path) {
    const Message& value = member(object, path);
    return value.is_boolean() && value.get<bool>();
}

}  // namespace quor::input::gaussian
