// Checks the electrons of a job against its basis functions, and active spaces against both.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/basis/job_size.hpp>
#include <gjf/core/text/number.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

namespace quor::input::gaussian {
namespace {

// The numbers of CASSCF(n,m).
struct ActiveSpace {
    std::int64_t electrons = 0;
    std::int64_t orbitals = 0;
    TextPlace place;
};

std::optional<ActiveSpace> active_space_of(const CheckedJob& job) {
    for (const char* name : {"casscf", "cas"}) {
        const RouteTree::Keyword* keyword = job.find_keyword(name);
        if (keyword == nullptr || keyword->options.size() < 2) {
            continue;
        }
        const std::optional<std::int64_t> electrons = to_int64(job.written(keyword->options[0].name));
        const std::optional<std::int64_t> orbitals = to_int64(job.written(keyword->options[1].name));
        if (electrons && orbitals) {
            return ActiveSpace{*electrons, *orbitals, job.route_place(keyword->options[0].name)};
        }
    }
    return std::nullopt;
}

void check_active_space(const ActiveSpace& active, const JobSize& size, std::int64_t unpaired, Findings& findings) {
    const std::string electrons = std::to_string(active.electrons) + " active electrons";
    const std::string orbitals = std::to_string(active.orbitals) + " active orbitals";
    std::string problem;
    Severity severity = Severity::Error;  // no determinant can be made
    if (active.electrons > 2 * active.orbitals) {
        problem = electrons + " do not fit into " + orbitals;
    } else if (active.electrons < unpaired) {
        problem = electrons + " cannot make " + std::to_string(unpaired) + " unpaired ones";
    } else if (size.electrons && active.electrons > *size.electrons) {
        problem = electrons + " are more than the " + std::to_string(*size.electrons) + " of the job";
    } else if (size.electrons && (*size.electrons - active.electrons) % 2 != 0) {
        problem = electrons + " of " + std::to_string(*size.electrons) + " leave one outside alone";
    } else if (size.functions && !size.doubtful && active.orbitals > *size.functions) {
        problem = orbitals + " are more than the " + std::to_string(*size.functions) + " basis functions";
        severity = Severity::Warning;
    }
    if (!problem.empty()) {
        findings.add("GJF-B004", severity, problem, active.place, "the numbers are electrons, then orbitals");
    }
}

void check_sizes(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    const std::int64_t unpaired = std::abs(static_cast<std::int64_t>(job.job.geom.multiplicity)) - 1;
    const std::optional<ActiveSpace> active = active_space_of(job);
    // Named sets have room for the electrons of neutral atoms.
    const bool may_lack_room = job.names_basis("gen") || unpaired > 1 || job.job.geom.charge < 0;
    if (!job.schema.is_loaded() || job.layout.charge_line == 0 || molecule.atoms.empty() || (!active && !may_lack_room)) {
        return;
    }
    const JobSize size = job_size(job.job);
    const std::int64_t occupied = (size.electrons.value_or(0) + unpaired + 1) / 2;
    if (size.functions && !size.doubtful && occupied > *size.functions) {
        findings.add("GJF-B003", Severity::Warning,
                     std::to_string(occupied) + " occupied orbitals are more than the " + std::to_string(*size.functions) +
                         " basis functions",
                     job.layout.charge_line, "is a core potential missing, or the multiplicity wrong?");
    }
    if (active) {
        check_active_space(*active, size, unpaired, findings);
    }
}

}  // namespace

const Family size_family = {Known::Molecule, check_sizes, {"GJF-B003", "GJF-B004"}};

}  // namespace quor::input::gaussian
