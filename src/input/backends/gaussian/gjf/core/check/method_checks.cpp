// Checks of what a route asks of its method: derivatives and properties that it lacks, what is then made from many energies,
// dispersion that it has no parameters for, a guess that cannot act.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Returns the method of a route that has one alone, with what its options make of it: ccsd(t) for ccsd=(t,maxcyc=50); empty
// for layers, for an energy at the structure of another method, and for several methods.
std::string method_of(const CheckedJob& job) {
    std::string method;
    for (const RouteTree::Segment& segment : job.tree.segments) {
        if (segment.is_oniom || !segment.secondary_method.empty() ||
            (!segment.method.empty() && !method.empty() && segment.method != method)) {
            return {};
        }
        method = segment.method.empty() ? method : segment.method;
    }
    for (const char* variant : {"t", "tq", "dq", "sdq", "sdtq"}) {
        if (job.has_option(method, variant)) {
            return method + "(" + variant + ")";
        }
    }
    return method;
}

std::string last_word(std::string_view words) { return std::string(words.substr(words.rfind(' ') + 1)); }

// Tells whether the molecule stands in the job in numbers alone, without names that an optimization could vary.
bool has_no_variables(const CheckedJob& job) {
    return job.read_whole() && !job.job.geom.atoms.empty() && job.job.geom.cartesian_variables.empty();
}

std::string in_energies(const CheckedJob& job) {
    const std::size_t atoms = job.job.geom.atom_count();
    return "at least 1 + 3N " + (atoms == 0 ? "" : "= " + std::to_string(1 + 3 * atoms) + " ") + "energies";
}

void report_lack(const CheckedJob& job, const std::string& method, const MethodRequest& request, Findings& findings) {
    const std::string word = last_word(request.request);
    const TextPlace place = job.route_place(*job.find_word(word));
    const bool is_numerical = request.kind == "numerical";
    if (is_numerical && word == "opt" && has_no_variables(job) && !job.has_option("opt", "enonly")) {
        // Without gradients the variables are followed one by one, and Cartesian coordinates have no names.
        findings.add("GJF-R017", method.starts_with("ro") ? Severity::Warning : Severity::Error,
                     "opt needs analytic gradients, which " + method + " lacks, or variables of a Z-matrix, at most 50",
                     place, "Gaussian stops with \"NUMBER OF VARIABLES ( 0) INCORRECT (SHOULD BE BETWEEN 1 AND 50)\"");
        return;
    }
    if (is_numerical) {
        findings.add("GJF-R018", severity_named(request.severity),
                     "'" + word + "' of " + method + " is numerical: " + in_energies(job), place);
        return;
    }
    findings.add(
        "GJF-R017", severity_named(request.severity),
        "'" + std::string(request.request) + "' needs " + std::string(request.needs) + ", which " + method + " lacks",
        place);
}

void check_dispersion(const CheckedJob& job, const std::string& method, Findings& findings) {
    const RouteTree::Keyword* keyword = job.find_keyword("empiricaldispersion");
    // Who sets its parameters, or switches it off, knows what it has.
    if (keyword == nullptr || job.has_any_word(words_with("sets the dispersion"))) {
        return;
    }
    for (const RouteTree::Option& option : keyword->options) {
        const Dispersion* known = find_dispersion(method, option.canonical);
        if (known == nullptr) {
            continue;
        }
        const std::string message = option.canonical == "gd2" ? "R6DS6: Unable to choose the S6 parameter"
                                                              : "R6DS8: Unable to choose the S8 parameter";
        const bool has_own = known->status == "built in";
        findings.add(
            "GJF-R019", severity_named(known->severity),
            has_own ? method + " has a dispersion of its own, beside empiricaldispersion=" + option.canonical
                    : method + (known->status == "none" ? " has no parameters for" : " is not listed with parameters for") +
                          " empiricaldispersion=" + option.canonical,
            job.route_place(option.name),
            has_own ? "leave it out: in Gaussian 16 C.02 the name of the functional stands for both"
                    : std::string("Gaussian 16 C.02 ") + (known->severity == "warning" ? "stops" : "may stop") + " with \"" +
                          message + "\"");
    }
}

// A restricted wavefunction stays one, however its first orbitals are mixed.
void check_mixed_guess(const CheckedJob& job, const std::string& method, Findings& findings) {
    const RouteTree::Option* mix = job.find_option("guess", "mix");
    const bool may_break = method.empty() || method.front() == 'u' || method.front() == 'g' || method == "casscf" ||
                           job.has_any_word("gvb stable complex external");
    if (mix != nullptr && !may_break && job.job.geom.multiplicity == 1 && job.job.geom.additional_pairs.empty()) {
        findings.add("GJF-R020", Severity::Note, "guess=mix does nothing to a restricted singlet",
                     job.route_place(mix->name),
                     "write u" + (method.front() == 'r' ? method.substr(1) : method) + " for two sets of orbitals");
    }
}

void check_method(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    const std::string method = method_of(job);
    if (method.empty()) {
        return;
    }
    for (const MethodRequest& request : method_requests()) {
        if (job.has_all_words(request.request) && !job.has_any_word(request.unless) && method_lacks(method, request.needs)) {
            report_lack(job, method, request, findings);
        }
    }
    check_dispersion(job, method, findings);
    check_mixed_guess(job, method, findings);
}

}  // namespace

const Family method_family = {Known::Route, check_method, {"GJF-R017", "GJF-R018", "GJF-R019", "GJF-R020"}};

}  // namespace quor::input::gaussian
