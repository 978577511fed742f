// Changes of a job's text that come before its edits: what it reads from a checkpoint, the molecule of the job before, and
// the comment that remembers attempts. Private to the room.
#pragma once

#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// What a job reads from its checkpoint, by how it can do without.
struct CheckpointUse {
    bool molecule = false;             ///< geom=check and the like
    bool other = false;                ///< orbitals or force constants
    std::vector<std::string> refused;  ///< words that nothing can stand for
};
CheckpointUse checkpoint_use(const JobReading& job);

/// Takes from the route of the first job what reads the molecule, and what restarts; with `keeps_others` not set also what
/// reads orbitals, and in the place of force constants that would be read they are calculated.
std::string without_checkpoint_words(const std::string& text, bool keeps_others);

/// A molecule with its title and charge line, as a job has them.
struct MoleculeText {
    std::string title;
    std::string charge;
    std::string atoms;
};
MoleculeText molecule_text(const std::string& text, const JobReading& job);

/// Writes a molecule into the first job of a text, which has none: behind its charge line, or with title and charge line
/// behind its route where it has none either.
std::string with_molecule(const std::string& text, const MoleculeText& molecule);

/// The comment line above the route.
struct AttemptNote {
    std::string id;
    int attempt = 0;
};
/// Reads it in the first job of a text; absent when there is none, or none of an attempt.
std::optional<AttemptNote> attempt_note(const std::string& text);
/// Puts the comment above the route of the first job, in place of the one that is there.
std::string with_note(const std::string& text, const std::string& note);

/// Returns the text from a job on, counted from 0, or that job alone.
std::string jobs_from(const std::string& text, const std::vector<JobReading>& jobs, std::size_t first, bool alone);

}  // namespace quor::input::gaussian
