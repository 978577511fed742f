// What is known of Gaussian beyond the words of its routes. Private to the library.
//
// Each question loads its table when it is first asked; a table that is missing answers as an empty one, and
// `missing_knowledge` tells so. Words are asked for in the vocabulary's preferred spelling. All texts are static.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Tells whether a route word has a trait, as in "needs no basis set"; the table `words` names them all.
bool has_trait(std::string_view word, std::string_view trait);
/// The same for a method with or without r, u or ro before it.
bool method_has_trait(std::string_view method, std::string_view trait);

/// Returns the words that have a trait, with blanks between.
std::string_view words_with(std::string_view trait);

/// Tells whether a source is known for a fact, of which the cell `source` is given; without one it makes notes alone.
inline bool is_verified(std::string_view source) noexcept { return source != "unverified"; }

/// Returns the words of the solvent input, which SCRF=Read asks for.
const std::vector<std::string>& solvent_input_words();
/// Tells whether a source is known for a word of the solvent input.
bool is_verified_solvent_word(std::string_view word);
/// Tells whether a word of the solvent input takes a number.
bool takes_number(std::string_view solvent_input_word);
/// Returns the names that a word of the solvent input is known to take, with blanks between; there may be others.
std::string_view names_taken(std::string_view solvent_input_word);

/// A word of generalised internal coordinates: what it takes is "N atoms" of a function, "number" or "whole number" of an
/// option; empty for anything.
struct CoordinateWord {
    std::string_view kind;  ///< "function", or "option" of a coordinate that is defined
    std::string_view word;
    std::string_view takes;
};
std::span<const CoordinateWord> coordinate_words();

/// Returns what Gaussian calls a thing that is known by another name; empty when it has no such thing. `kind` is
/// "functional" for names in papers, "option" for options that are written as words of their own.
std::optional<std::string_view> other_name(std::string_view kind, std::string_view name);

/// Tells whether Gaussian takes a name for a solvent; one that is cut off at its comma counts.
bool is_solvent(std::string_view name);
/// Returns the full names of all solvents.
const std::vector<std::string>& solvent_names();
/// Returns Gaussian's name for a solvent that is called by an abbreviation which it does not take, or nothing.
std::optional<std::string_view> abbreviated_solvent(std::string_view name);

/// Two words that one route, or one list of options, cannot hold together.
struct Exclusion {
    std::string_view what;     ///< "options" of `keyword`, "keywords", "jobs": kinds of job, or "words" of any kind
    std::string_view keyword;  ///< empty but for options
    std::string_view first;
    std::string_view second;
    std::string_view severity;
};
/// Returns what excludes each other of one kind, and of one keyword.
std::span<const Exclusion> exclusions(std::string_view what, std::string_view keyword = {});

/// A keyword, or an option of it, that makes sense beside others alone.
struct Need {
    std::string_view keyword;
    std::string_view option;  ///< empty for the keyword itself
    std::string_view severity;
    std::vector<std::string_view> any_of;  ///< options of the keyword, or words, of which one must be there
    std::string_view message;
    std::string_view hint;
};
std::span<const Need> needs();

/// What makes a job read a checkpoint: a keyword with an option, or alone.
struct CheckpointRead {
    std::string_view keyword;
    std::string_view option;  ///< empty for the keyword alone
    bool fails_without;
    std::string_view
        content;  ///< what it reads: "molecule", "orbitals", "force constants", "Cartesian force constants", ...
    bool verified;
};
std::span<const CheckpointRead> checkpoint_reads();

/// Returns the text that explains every code of the checker, checks.md; empty when it is missing.
const std::string& check_pages();
/// Returns where that text is.
std::string path_of_check_pages();

}  // namespace quor::input::gaussian
