// Follows the checkpoint files through the jobs of a text: which are written and read, and the molecules in them. Private
// to the room.
#pragma once

#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/molecule_view.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace quor::input::gaussian {

class CheckpointChain {
   public:
    /// Returns the atoms that a job takes from the checkpoint of a job before it; none when they are not known. Each stands
    /// at the line of the route that asks for them.
    std::vector<MoleculeAtom> molecule_for(const CheckedJob& job) const;

    /// Goes on to the next job, whose atoms are given as far as they are known. Returns the checkpoint that the job begins:
    /// one that neither it nor a job before it reads or writes.
    std::optional<BegunCheckpoint> add(const CheckedJob& job, std::vector<MoleculeAtom> atoms, Findings& findings);

   private:
    struct Checkpoint {
        std::size_t job = 0;
        bool read_since = false;
        std::vector<MoleculeAtom> atoms = {};  // without `info`, which ends with its job
    };
    /// Notes that a job reads a checkpoint; returns whether a job before it writes it.
    bool note_read(const std::string& path);
    void note_written(const std::string& path, const CheckedJob& job, const TextPlace& place, Findings& findings);

    std::unordered_map<std::string, Checkpoint> written_;  // by path
    std::size_t jobs_ = 0;
};

}  // namespace quor::input::gaussian
