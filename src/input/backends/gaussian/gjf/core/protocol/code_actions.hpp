// What can be done about findings: their fixes, all safe fixes at once, and comments that silence a code. Private to the
// room.
#pragma once

#include <gjf/core/protocol/document_requests.hpp>

#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Answers a request for actions.
Message code_actions(const DocumentQuestion& question);

/// Returns a path as it stands in an address.
std::string address_of(std::string_view path);

}  // namespace quor::input::gaussian
