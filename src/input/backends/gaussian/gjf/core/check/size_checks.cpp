// Checks the electrons of a job against its basis functions, active spaces against both, and %mem against what they need.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/basis/job_estimate.hpp>
#include <gjf/core/basis/job_size.hpp>
#include <gjf/core/check/limit_checks.hpp>
#include <gjf/core/text/number.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

namespace quor::input::gaussian {
namespace {

constexpr std::int64_t least_memory = 64LL << 20;  // what each core needs in any job

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

// Tells whether a job of so many atoms may need more than %mem: no basis set has more functions an atom. Of larger molecules
// nothing is said: they would be counted in vain, since none of these methods is used for them.
bool may_lack_memory(const CheckedJob& job, const std::optional<AskedAmount>& memory, std::size_t atoms) {
    constexpr std::size_t most_atoms = 5000;
    constexpr double most_functions_of_atom = 400;
    constexpr double bytes_of_matrices = 16;
    const double functions = most_functions_of_atom * static_cast<double>(atoms);
    return memory && atoms <= most_atoms &&
           (job.has_option("scf", "incore") ||
            static_cast<double>(memory->amount) < least_memory + bytes_of_matrices * functions * functions);
}

void check_memory_of_size(const CheckedJob& job, const JobSize& size, const AskedAmount& memory, Findings& findings) {
    const LeastBytes needed = estimate_job(job.job, size).memory;
    // Less is told of as too little for the cores.
    if (memory.amount < least_memory || size.doubtful || !needed.bytes || *needed.bytes <= memory.amount) {
        return;
    }
    findings.add("GJF-L014", Severity::Note,
                 "%mem is less than the " + std::to_string(*needed.bytes >> 20) + " MB that " +
                     std::to_string(*size.functions) + " basis functions need at the least",
                 memory.place, needed.formula + " words of 8 bytes, for N basis functions");
}

void check_sizes(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    const std::int64_t unpaired = std::abs(static_cast<std::int64_t>(job.job.geom.multiplicity)) - 1;
    const std::optional<ActiveSpace> active = active_space_of(job);
    // Named sets have room for the electrons of neutral atoms.
    const bool may_lack_room = job.names_basis("gen") || unpaired > 1 || job.job.geom.charge < 0;
    const std::optional<AskedAmount> memory = asked_memory(job);
    const bool is_memory_short = may_lack_memory(job, memory, molecule.atoms.size());
    if (!job.schema.is_loaded() || job.layout.charge_line == 0 || molecule.atoms.empty() ||
        (!active && !may_lack_room && !is_memory_short)) {
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
    if (is_memory_short) {
        check_memory_of_size(job, size, *memory, findings);
    }
}

}  // namespace

const Family size_family = {Known::Molecule, check_sizes, {"GJF-B003", "GJF-B004", "GJF-L014"}};

}  // namespace quor::input::gaussian
