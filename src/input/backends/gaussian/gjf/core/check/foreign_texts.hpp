// Tells texts that are no job files by what they begin with. Private to the room.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quor::input::gaussian {

/// A text of another kind: what it is, and what to do. Static texts.
struct ForeignText {
    const char* message;
    const char* hint;
    std::size_t line;               ///< that shows it, from 1
    bool has_lone_returns = false;  ///< line feeds in the place of its carriage returns may make it a job file
};

/// Recognises an output, coordinates, input of another program or another encoding; nothing in a text that may be a job
/// file.
std::optional<ForeignText> find_foreign_text(std::string_view text);

/// Tells whether lines behind a charge line begin with the count and the title of an .xyz file, with atoms behind them.
bool opens_like_xyz(std::string_view count, std::string_view atom);

}  // namespace quor::input::gaussian
