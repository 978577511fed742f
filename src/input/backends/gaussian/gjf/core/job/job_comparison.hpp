// Compares two jobs part by part: what differs, and where.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// The parts of a job, in the order in which they are compared.
enum class JobPart : std::int32_t {
    Link0,
    Route,
    Overlays,
    Title,
    ChargeAndMultiplicity,
    Format,  ///< Cartesian coordinates in one job, a Z-matrix in the other
    ZMatrix,
    AtomCount,
    Atom,
    Variables,  ///< variables and constants, of Z-matrices and of symbolic coordinates
    ExtraInput
};

/// Names a part of a job, as in "charge and multiplicity"; never null.
QUOR_GJF_API const char* job_part_name(JobPart part) noexcept;

/// Where two jobs differ first. `index` counts the rows of `ZMatrix`, the atoms of `Atom` and the sections of `ExtraInput`
/// from 0, and is 0 for all other parts; where one job ends before the other, it is the count of the shorter one.
struct JobDifference {
    JobPart part = JobPart::Link0;
    std::size_t index = 0;
};

/// What counts when two jobs are compared; by default all that they say.
struct JobComparison {
    /// When two coordinates are the same: `AsText`, when text and number are; `AsNumber`, when the numbers are, or the names
    /// of variables; `AsWritten`, when the second is what writing the first gives: its text, or its number with six
    /// decimals, which a whole number may be given too.
    enum class Coordinates { AsText, AsNumber, AsWritten };
    /// Which sections of the kind `Unknown` are the same as one of another kind that says the same: none, those of the first
    /// job, or those of both.
    enum class UnknownSections { None, OfFirst, OfBoth };
    using RouteComparison = std::function<bool(const std::vector<std::string>& a, const std::vector<std::string>& b)>;

    Coordinates coordinates = Coordinates::AsText;
    UnknownSections unknown_sections = UnknownSections::None;
    /// Whether extra input sections are compared.
    bool sections = true;
    /// Whether the order counts of the Link 0 lines that the job keeps whole.
    bool order_of_link0_lines = true;
    /// Whether it counts what says nothing: blanks at the end of overlays, title and sections; overlays or a layer that are
    /// empty rather than absent; a charge without multiplicity.
    bool empty_values = true;
    /// By how much molecular-mechanics charges may differ, in elementary charges.
    double mm_charge_tolerance = 0.0;
    /// Decides on two routes whose words differ. Without it they are the same when only the grouping of their words differs,
    /// as of an option list that is broken over two lines.
    RouteComparison same_route;
};

/// Finds the first part in which two jobs differ; absent when they say the same.
///
/// Not compared are lines as they were read and the stored interpretation of the route. The order of bonds does not count; a
/// section that holds text is the same as one that holds bonds when the text lists these bonds. Takes time proportional to
/// the size of the jobs, but for sorting bonds and Link 0 lines.
QUOR_GJF_API std::optional<JobDifference> find_difference(const GJFData& first, const GJFData& second,
                                                          const JobComparison& comparison = {});

/// Finds the first place at which two lists of extra input sections differ; absent when they say the same.
QUOR_GJF_API std::optional<std::size_t> find_section_difference(const std::vector<ExtraInputSection>& first,
                                                                const std::vector<ExtraInputSection>& second,
                                                                const JobComparison& comparison = {});

/// Tells whether two atom labels are the same in all their fields.
QUOR_GJF_API bool same_label(const AtomInfo& a, const AtomInfo& b);
/// Tells whether two variables have the same name and value, both as written.
QUOR_GJF_API bool same_variable(const ZMatrixVariable& a, const ZMatrixVariable& b);

}  // namespace quor::input::gaussian
