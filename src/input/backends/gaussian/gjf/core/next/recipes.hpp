// The recipes by which a next job is made, and the cures of failures: rows of tables, in the order of their attempts.
#pragma once

#include <core/export.hpp>
#include <gjf/core/output/diagnosis.hpp>
#include <gjf/core/predicate/predicate.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

enum class RecipeKind { Cure, Next };

/// Which geometry a new job has: that of the old job, the last or the best of the output, the highest point of a scan, the
/// last one moved along a vibration, or the one in the checkpoint.
enum class RecipeGeometry { Same, Last, Best, HighestPoint, Displaced, Checkpoint };

/// How far a geometry is moved along which imaginary vibration, counted from 1.
struct Displacement {
    int mode = 1;
    double amplitude = 0.3;  ///< times the printed displacements, in ångström
};

/// One word of `edits` with its value, as on the command line of `quor-gjf edit`.
struct RecipeEdit {
    std::string option;  ///< as "--option"
    std::string value;   ///< with names in braces; empty for an operation without one
};

/// One attempt.
struct Recipe {
    std::string id;
    RecipeKind kind = RecipeKind::Cure;
    std::string wanted_for;  ///< a cause of failures, or what is asked for by --to
    int attempt = 1;
    std::optional<JobPredicate> when;    ///< of the old job
    std::optional<JobPredicate> unless;  ///< likewise
    bool needs_job = false;
    bool needs_output = false;
    bool needs_checkpoint = false;
    bool needs_modes = false;
    RecipeGeometry geometry = RecipeGeometry::Same;
    Displacement displacement;
    std::string geometry_text;  ///< as written in the table
    std::vector<RecipeEdit> edits;
    std::string says;
    std::string certainty;  ///< "log", "tool" or "text"
    std::string source;
    std::string place;  ///< file and line

    /// What is known from hearsay alone is a hint, and never applied.
    bool is_hint() const noexcept { return certainty == "text"; }
};

/// Returns the recipes of the library, read once. Throws `std::runtime_error` that names file and line where a table holds
/// what is none, as the others do.
QUOR_GJF_API const std::vector<Recipe>& default_recipes();

/// Reads a table, of which `path` names the file. Throws `std::runtime_error` "PATH, line N: ..." for a heading, a word, an
/// operation or a name in braces that nobody knows.
QUOR_GJF_API std::vector<Recipe> read_recipes(std::string_view text, const std::string& path);

/// Returns the recipes of the library with those of other tables: rows of the same kind and purpose there take the place of
/// all of the library's.
QUOR_GJF_API std::vector<Recipe> recipes_with(const std::vector<std::string>& paths);

/// What an attempt would be of a failure, for those who only tell of it.
struct Cure {
    std::string id;
    int attempt = 1;
    std::string title;
    std::vector<std::string> edits;  ///< arguments of `quor-gjf edit`, one an element
    std::string geometry;
    std::string certainty;
    bool applied_by_tool = false;
};

/// Returns what may cure the failure of an output, in the order of attempts; none where nothing is known. `job_text` is the
/// job beside it, or empty where there is none: what its conditions ask is then asked of the route that the output printed.
QUOR_GJF_API std::vector<Cure> cures_of(const Diagnosis& diagnosis, const std::string& job_text);

/// Returns what is wrong in the output by its own numbers where it ended normally: "imag_min" for a minimum with imaginary
/// vibrations, "imag_ts_many" for a saddle with more than one, "freq_notconv" for vibrations at no stationary point; its
/// cause otherwise, empty for none.
QUOR_GJF_API std::string cause_to_cure(const Diagnosis& diagnosis);

}  // namespace quor::input::gaussian
