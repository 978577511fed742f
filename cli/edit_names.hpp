// The file and the job that are edited, and names in braces that stand for them: {stem}, {parent}, {job}.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quor_gjf {

/// Where the job that an edit changes stands, and what the edit has to say of it.
struct EditContext {
    const std::string& path;
    std::size_t job = 0;               ///< its number, from 1
    std::vector<std::string> remarks;  ///< without the name of the operation
};

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

}  // namespace quor_gjf
