// The operations of a recipe on its base, with the sections that the new route no longer asks for taken out. Private to the
// room.
#pragma once

#include <gjf/core/editing/edit_operations.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

struct AppliedEdits {
    std::string text;
    std::vector<std::string> remarks;
};

/// Applies operations to the first job of a text. With `all_sections_known` not set, sections that the route asks for may
/// not be missing. Throws `std::runtime_error`.
AppliedEdits with_recipe_edits(const std::string& text, const std::vector<EditOperation>& operations, bool is_echo);

/// Leaves of the first job what a restart reads: Link 0, the route with these operations, and no more. Throws as above.
AppliedEdits restarted_job(const std::string& text, const std::vector<EditOperation>& operations);

/// Gives every job of a text whose checkpoint has a name the new one, and the first job the one that it reads; an empty
/// `oldchk` takes the line out.
std::string with_checkpoint_names(const std::string& text, const std::string& stem, const std::string& oldchk);

}  // namespace quor::input::gaussian
