// The file and the job that are edited, and names in braces that stand for them: {stem}, {parent}, {job}. Private to the
// room.
#pragma once

#include <gjf/core/editing/edit_operations.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// A text with names in it.
class NamedText {
   public:
    /// Reads a text; "{{" is a brace. Throws `std::runtime_error` for a name that is none and a brace that is not closed.
    explicit NamedText(const std::string& text);
    /// Returns the text for a job; throws `std::runtime_error` where standard input would have to have a name.
    std::string text_for(const EditContext& context) const;
    bool has_names() const noexcept { return pieces_.size() > 1; }

   private:
    struct Piece {
        std::string text;
        std::string name;  // behind it; empty for the last one
    };

    std::vector<Piece> pieces_;
};

}  // namespace quor::input::gaussian
