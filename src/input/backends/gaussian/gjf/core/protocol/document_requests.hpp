// The requests about one open text: a row each. Private to the room.
#pragma once

#include <gjf/core/protocol/language_server.hpp>
#include <gjf/core/protocol/open_document.hpp>

#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A request about a text.
struct DocumentQuestion {
    const OpenDocument& document;
    const Message& parameters;
    const ServerOptions& options;
    const std::function<const std::vector<Finding>&()>& findings;  ///< of the text; looked for at the first call

    std::size_t offset() const { return document.offset(member(parameters, "position")); }
    Span range() const { return document.stretch(member(parameters, "range")); }
};

struct DocumentRequest {
    std::string_view method;
    Message (*answer)(const DocumentQuestion&);
};

/// Returns the request of a method, or null.
const DocumentRequest* find_document_request(std::string_view method);

/// The types of tokens, in the order of their numbers.
Message token_types();

/// Returns the diagnostics of a text; with `shares_files` codes are linked to the page that explains them.
Message diagnostics_json(const OpenDocument& document, const std::vector<Finding>& findings, bool shares_files);

/// The kind of the action that applies every safe fix.
inline constexpr std::string_view fix_all_kind = "source.fixAll.quor-gjf";

}  // namespace quor::input::gaussian
