// The job that a next one is made from: whole, with its molecule, and with what it may read of the checkpoint. Private to
// the room.
#pragma once

#include <gjf/core/next/next_job.hpp>
#include <gjf/core/next/output_facts.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

struct BaseJob {
    std::string text;             ///< of the job that ended, and of those behind it where they are wanted
    std::string old_text;         ///< of that job as it was; empty for one that was made of the echo
    bool is_echo = false;         ///< made of what the output says of it
    bool takes_geometry = false;  ///< its molecule was in the checkpoint, so that it has that of the output
    bool reads_checkpoint = false;
    std::vector<std::string> remarks;
};

/// Tells whether the checkpoint beside an output may be read: it is there, not older than the output, of a job that got
/// through its first SCF, and the output does not complain of it.
bool is_checkpoint_usable(const OldCalculation& old);

/// Makes the base. Throws `NextJobRefused`.
BaseJob base_job(const OldCalculation& old, const OutputFacts& facts, bool with_later_jobs);

}  // namespace quor::input::gaussian
