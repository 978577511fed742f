// What differs between two jobs by meaning: words of the route, Link 0, charge, atoms and how far they moved, sections.
#pragma once

#include <core/export.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// One difference. Where one side has nothing, its text is absent; of an atom that only moved both are the same.
struct JobChange {
    std::string part;  ///< link0, route, overlays, title, charge, atoms, variables, section or other
    std::string name;  ///< what of the part: a key, a keyword, an atom's number from 1, a kind of section; may be empty
    std::optional<std::string> before;
    std::optional<std::string> after;
    std::optional<double> moved;  ///< by how many ångström
};

/// Lists what differs between two jobs; none for two that say the same.
///
/// Layout, letter case and the spelling of route words do not count, nor the order of keywords, options, Link 0 lines and
/// bonds, nor the units and the form in which the same positions are given. Atoms are compared by their numbers; where the
/// counts differ, those of one job that the other has nowhere are listed.
QUOR_GJF_API std::vector<JobChange> job_changes(const GJFData& first, const GJFData& second);

/// What differs between the jobs of one place in two files.
struct JobPairChanges {
    std::size_t job = 0;    ///< from 1
    bool in_first = true;   ///< whether the first file has such a job
    bool in_second = true;  ///< and the second
    std::vector<JobChange> changes;
};

/// Lists the jobs that differ between two files, by their places; none for files that say the same. Throws
/// `GJFParseException` for a job that cannot be read.
QUOR_GJF_API std::vector<JobPairChanges> file_changes(const std::vector<JobReading>& first,
                                                      const std::vector<JobReading>& second);

}  // namespace quor::input::gaussian
