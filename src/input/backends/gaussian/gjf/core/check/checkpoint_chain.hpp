// Follows the checkpoint files through the jobs of a text: which are written and read, and what is in them. Private to the
// room.
#pragma once

#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/link0_lines.hpp>
#include <gjf/core/check/molecule_view.hpp>
#include <gjf/core/knowledge/facts.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quor::input::gaussian {

/// What a job computes with; empty where it is not one method alone.
struct ModelLevel {
    std::string method;
    std::string basis;
    TextPlace place = {};  ///< of the method in the route
};

class CheckpointChain {
   public:
    /// A molecule as far as it is known; link atoms view the text.
    struct Molecule {
        std::vector<MoleculeAtom> atoms = {};
        OniomLayers layers = {};
        std::vector<ChargeSpinPair> pairs = {};
    };

    /// Returns the molecule that a job takes from the checkpoint of a job before it; no atoms when it is not known. Each
    /// stands at the line of the route that asks for them. It has the pairs only where the job takes those too and nothing
    /// was said of them.
    Molecule molecule_for(const CheckedJob& job) const;

    /// The checkpoints of a job that other files may have to do with.
    struct OpenEnds {
        std::optional<NamedCheckpoint> begun;  ///< that neither it nor a job before it reads or writes
        std::optional<NamedCheckpoint> read;   ///< that it reads, being the first job
    };

    /// Goes on to the next job, whose molecule is given as far as it is known.
    OpenEnds add(const CheckedJob& job, Molecule molecule, Findings& findings);

   private:
    struct Checkpoint {
        std::size_t job = 0;
        TextPlace place;  // of its route
        bool read_since = false;
        bool has_orbitals = true;
        bool has_force_constants = true;
        bool has_cartesian_force_constants = true;
        bool has_states = true;     // excited ones
        ModelLevel optimized = {};  // of its structure; empty where it is not known to be optimised
        NameSet names = {};         // of its Z-matrix; none where it has none
        Molecule molecule = {};     // atoms without `info`, which ends with its job

        bool lacks(std::string_view content) const noexcept;
    };
    // Tells what a job leaves in its checkpoint, which goes on from `source` where that is known.
    static Checkpoint left_by(const CheckedJob& job, const Checkpoint* source, bool reads_unknown);
    static void check_contents(const CheckedJob& job, const Checkpoint& source,
                               const std::vector<const CheckpointRead*>& requests, Findings& findings);
    // Follows what a job reads; returns the checkpoint, or null where it is not known.
    const Checkpoint* check_source(const CheckedJob& job, const Link0Line* source,
                                   const std::vector<const CheckpointRead*>& requests, bool is_first, Findings& findings);
    // Notes that a job reads a checkpoint; returns what is in it, or null when no job before it writes it.
    const Checkpoint* note_read(const std::string& path);
    void note_written(const std::string& path, Checkpoint left, const TextPlace& place, Findings& findings);

    std::unordered_map<std::string, Checkpoint> written_;  // by path
    std::size_t jobs_ = 0;
};

}  // namespace quor::input::gaussian
