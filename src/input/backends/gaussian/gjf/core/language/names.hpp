// The names in a job file, and every place that has the same one: variables, atoms, checkpoints, sections and what asks for
// them.
#pragma once

#include <core/export.hpp>
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// What a name is that several places may have.
enum class NameKind { None, Variable, Atom, Checkpoint, Section };

/// Every place of one name, in order.
struct Occurrences {
    NameKind kind = NameKind::None;
    Span place;                     ///< where it was asked
    std::vector<Span> definitions;  ///< where a variable is given its value; the label of an atom; the first %chk that
                                    ///< writes a checkpoint; the section that a route word asks for
    std::vector<Span> uses;
};

/// Returns the places of the name at an offset; of kind `None` where there is none.
///
/// Variables and atoms belong to one job, checkpoints to the file. From a line of a section the definition is the route word
/// that asks for it; from that word, the section.
QUOR_GJF_API Occurrences occurrences_at(const JobFile& file, std::size_t offset);

/// Tells why a name is not changed.
class QUOR_GJF_API RenameError : public std::invalid_argument {
   public:
    using std::invalid_argument::invalid_argument;
    ~RenameError() override;
};

/// Returns the place that can be renamed at an offset: a variable's name or a checkpoint's; nothing for others.
QUOR_GJF_API std::optional<Span> renamable_at(const JobFile& file, std::size_t offset);

/// Returns the changes, in order, that give another name to what stands at an offset; the extension of a checkpoint is kept
/// where it is written. Throws `RenameError` when nothing there has a name, or for one that cannot be written or is in use.
QUOR_GJF_API std::vector<TextEdit> rename_edits(const JobFile& file, std::size_t offset, const std::string& name);

/// Returns a variable or constant of a job by its name, in any letter case.
QUOR_GJF_API std::optional<ZMatrixVariable> find_variable(const GJFData& job, std::string_view name);

/// Returns the atoms of the internal coordinate that a line of a section, or a row up to this token, names; none where the
/// line names no coordinate.
QUOR_GJF_API std::vector<std::size_t> coordinate_atoms(const JobFile& file, const JobToken& token);

}  // namespace quor::input::gaussian
