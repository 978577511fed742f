// The error type of reading and editing job files.
#pragma once

#include <core/export.hpp>

#include <stdexcept>
#include <string>

namespace quor::input::gaussian {

/// Reports malformed job text or a refused edit; `what()` is "GJF Parse Error: " followed by the message.
class QUOR_GJF_API GJFParseException : public std::runtime_error {
   public:
    explicit GJFParseException(const std::string& message);
    ~GJFParseException() override;
};

/// Returns a message without what stands before that of each `GJFParseException`, once or more.
QUOR_GJF_API std::string bare_message(std::string message);

}  // namespace quor::input::gaussian
