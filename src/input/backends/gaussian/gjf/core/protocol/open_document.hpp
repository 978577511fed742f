// A text that a client has open: its state after each change, and what is known of it. Private to the room.
#pragma once

#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/protocol/messages.hpp>
#include <gjf/core/protocol/text_positions.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Returns the path of a file:// address; empty for any other.
std::string path_of(std::string_view uri);

class OpenDocument {
   public:
    OpenDocument(std::string uri, std::int64_t version, std::string text, ColumnUnit unit);
    OpenDocument(const OpenDocument&) = delete;
    OpenDocument& operator=(const OpenDocument&) = delete;

    /// Applies the changes of a message in their order. Throws `RequestFault` for one that is none; those before it are then
    /// made.
    void change(const Message& changes, std::int64_t version);

    const std::string& uri() const noexcept { return uri_; }
    const std::string& path() const noexcept { return path_; }  ///< of a file on this machine; empty for others
    std::int64_t version() const noexcept { return version_; }
    const std::string& text() const noexcept { return text_; }

    /// The text read, once it is asked for. Throws `GJFParseException` for one that is too long.
    const JobFile& file() const;

    LinePosition position(std::size_t offset) const { return positions().position(offset); }
    /// Returns where a line, counted from 1, begins.
    std::size_t offset_of_line(std::size_t line) const { return positions().offset({line == 0 ? 0 : line - 1, 0}); }
    Message position_json(std::size_t offset) const;
    Message range_json(Span place) const;
    /// Reads a position; throws `RequestFault`.
    std::size_t offset(const Message& position) const;
    Span stretch(const Message& range) const;
    std::vector<Message> edits_json(const std::vector<TextEdit>& edits) const;
    /// A change of this document, as clients take it that keep versions.
    Message workspace_edit(const std::vector<TextEdit>& edits) const;

    /// What was found in this text; absent until somebody has looked.
    std::optional<std::vector<Finding>> findings;
    /// The numbers of the tokens that the client has, and which of its answers brought them.
    mutable std::vector<std::uint32_t> told_tokens;
    mutable std::size_t token_answers = 0;

   private:
    std::string uri_;
    std::string path_;
    std::int64_t version_;
    std::string text_;
    ColumnUnit unit_;
    mutable std::optional<TextPositions> positions_;
    mutable std::unique_ptr<JobFile> file_;

    const TextPositions& positions() const;
};

}  // namespace quor::input::gaussian
