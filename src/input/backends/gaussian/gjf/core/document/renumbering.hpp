// The forms in which sections name atoms, and how each follows a change of the atoms. Private to the room.
#pragma once

#include <gjf/core/document/job_rewriting.hpp>
#include <gjf/core/text/text.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {

/// Says why a section cannot follow the atoms. It does not leave the room.
class CannotRenumber : public std::exception {
   public:
    explicit CannotRenumber(std::string reason) : reason_(std::move(reason)) {}
    const char* what() const noexcept override { return reason_.c_str(); }

   private:
    std::string reason_;
};

/// Tells whether a field names atoms by number, be they there or not; elements do not.
bool names_numbers(std::string_view field) noexcept;

/// Returns the new number of an atom, from 1; nothing when it is gone. Throws `CannotRenumber` for what is no atom.
std::optional<std::size_t> new_number(std::string_view field, const AtomPlaces& places);

/// Renumbers a field that is a number or a range; nothing is left of it when all its atoms are gone. Throws
/// `CannotRenumber` for what is no atom.
std::string renumbered_range(std::string_view field, const AtomPlaces& places);

/// Changes each line of a text; a line for which nothing is returned goes.
using ChangeLine = std::function<std::optional<std::string>(std::string_view line, const AtomPlaces& places)>;
std::string change_lines(const std::string& text, const AtomPlaces& places, const ChangeLine& change_line);

/// A line such as "noatoms atoms=1-4,C block=2 notatoms=7": numbers and ranges of atoms are renumbered; elements, and what
/// stands behind other keys, stay. A list of which nothing is left goes with its key.
std::optional<std::string> atom_selection_line(std::string_view line, const AtomPlaces& places);

/// A basis set: its lines of centers end in a zero and name elements or atoms. Others stay.
std::string basis_text(const std::string& text, const AtomPlaces& places);

/// A section of potentials. A line of atom numbers cannot be told from a term of a potential but by walking all of its
/// blocks.
std::string potential_text(const std::string& text, const AtomPlaces& places);

}  // namespace quor::input::gaussian
