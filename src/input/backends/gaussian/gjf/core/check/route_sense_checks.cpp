// Checks of the route as a whole: words that contradict each other, need each other, or are missing.
#include <gjf/core/check/checked_job.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

// Methods that come with a basis set of their own, or need none; r, u and ro may stand before them.
constexpr std::string_view self_contained_methods[] = {
    "am1",    "pm3",     "pm3mm",    "pm6",   "pddg",   "pm7",    "pm7r6", "pm7mopac", "mndo",  "mindo3",
    "cndo",   "indo",    "zindo",    "dftb",  "dftba",  "huckel", "rm1",   "pm7ts",    "amber", "dreiding",
    "uff",    "g1",      "g2",       "g2mp2", "g3",     "g3mp2",  "g3b3",  "g3mp2b3",  "g4",    "g4mp2",
    "cbs-4m", "cbs-qb3", "cbs-apno", "cbs-4", "cbs-lq", "cbs-q",  "w1u",   "w1bd",     "w1ro",  "external"};

constexpr std::string_view force_fields[] = {"amber", "dreiding", "uff"};

// Sets that fit a density and stand beside the basis set.
constexpr std::string_view fitting_sets[] = {"fit",  "nofit",  "auto",    "pauto", "dga1",
                                             "dga2", "svpfit", "tzvpfit", "w06",   "def2svpfit"};

template <std::size_t N>
bool is_one_of(const std::string_view (&list)[N], std::string_view word) noexcept {
    return std::find(std::begin(list), std::end(list), word) != std::end(list);
}

template <std::size_t N>
bool is_method_of(const std::string_view (&list)[N], std::string_view method) noexcept {
    for (const std::string_view prefix : {"", "ro", "r", "u"}) {
        if (method.substr(0, prefix.size()) == prefix && is_one_of(list, method.substr(prefix.size()))) {
            return true;
        }
    }
    return false;
}

// Two options of one keyword that contradict each other.
struct Conflict {
    const char* keyword;
    const char* first;
    const char* second;
};

constexpr Conflict conflicts[] = {
    {"opt", "ts", "qst2"},
    {"opt", "ts", "qst3"},
    {"opt", "qst2", "qst3"},
    {"opt", "ts", "conical"},
    {"opt", "ts", "saddle"},
    {"opt", "calcfc", "calcall"},
    {"opt", "calcfc", "readfc"},
    {"opt", "calcfc", "rcfc"},
    {"opt", "calcfc", "calchffc"},
    {"opt", "calcall", "readfc"},
    {"opt", "calcall", "rcfc"},
    {"opt", "calcfc", "newestmfc"},
    {"opt", "calcfc", "estmfc"},
    {"opt", "eigentest", "noeigentest"},
    {"opt", "tight", "loose"},
    {"opt", "tight", "verytight"},
    {"opt", "loose", "verytight"},
    {"opt", "cartesian", "redundant"},
    {"opt", "cartesian", "z-matrix"},
    {"opt", "redundant", "z-matrix"},
    {"opt", "modredundant", "z-matrix"},
    {"opt", "modredundant", "cartesian"},
    {"opt", "rfo", "gediis"},
    {"opt", "micro", "nomicro"},
    {"opt", "quadmacro", "noquadmacro"},
    {"opt", "expert", "noexpert"},
    {"opt", "linear", "nolinear"},
    {"opt", "trustupdate", "notrustupdate"},
    {"opt", "nrscale", "nonrscale"},
    {"irc", "forward", "reverse"},
    {"irc", "forward", "downhill"},
    {"irc", "reverse", "downhill"},
    {"irc", "calcfc", "calcall"},
    {"irc", "calcfc", "rcfc"},
    {"irc", "calcall", "rcfc"},
    {"irc", "massweighted", "cartesian"},
    {"irc", "massweighted", "internal"},
    {"irc", "cartesian", "internal"},
    {"irc", "hpc", "lqa"},
    {"irc", "hpc", "eulerpc"},
    {"irc", "hpc", "dvv"},
    {"irc", "hpc", "gs2"},
    {"irc", "lqa", "dvv"},
    {"irc", "tight", "verytight"},
    {"scf", "qc", "xqc"},
    {"scf", "qc", "yqc"},
    {"scf", "xqc", "yqc"},
    {"scf", "diis", "nodiis"},
    {"scf", "symm", "nosymm"},
    {"scf", "tight", "sleazy"},
    {"scf", "tight", "verysleazy"},
    {"scf", "incfock", "noincfock"},
    {"scf", "fermi", "nofermi"},
    {"scf", "damp", "nodamp"},
    {"scf", "direct", "conventional"},
    {"scf", "incore", "conventional"},
    {"scf", "varacc", "novaracc"},
    {"scf", "pass", "nopass"},
    {"freq", "analytic", "numerical"},
    {"freq", "raman", "noraman"},
    {"freq", "savenormalmodes", "nosavenormalmodes"},
    {"freq", "diagfull", "nodiagfull"},
    {"geom", "check", "allcheck"},
    {"geom", "crowd", "nocrowd"},
    {"geom", "angle", "noangle"},
    {"geom", "distance", "nodistance"},
    {"geom", "dihedral", "nodihedral"},
    {"geom", "print", "noprint"},
    {"guess", "read", "core"},
    {"guess", "read", "huckel"},
    {"guess", "read", "indo"},
    {"guess", "read", "harris"},
    {"guess", "extra", "noextra"},
    {"pop", "none", "full"},
    {"pop", "none", "regular"},
    {"pop", "minimal", "full"},
    {"pop", "bonding", "nobonding"},
    {"td", "singlets", "triplets"},
    {"td", "nac", "nonac"},
    {"td", "eqsolv", "noneqsolv"},
    {"tda", "singlets", "triplets"},
};

constexpr const char* keyword_conflicts[][2] = {{"testmo", "notestmo"}, {"fmm", "nofmm"}, {"densityfit", "nodensityfit"},
                                                {"5d", "6d"},           {"7f", "10f"},    {"symmetry", "nosymmetry"}};

// Kinds of job that one route cannot ask for together.
constexpr const char* job_type_conflicts[][2] = {
    {"opt", "irc"},    {"opt", "scan"},   {"opt", "admp"},  {"opt", "bomd"},   {"opt", "ircmax"}, {"opt", "force"},
    {"opt", "sp"},     {"freq", "irc"},   {"freq", "scan"}, {"freq", "admp"},  {"freq", "bomd"},  {"freq", "ircmax"},
    {"freq", "force"}, {"irc", "scan"},   {"irc", "admp"},  {"irc", "bomd"},   {"irc", "polar"},  {"irc", "ircmax"},
    {"irc", "force"},  {"scan", "polar"}, {"scan", "admp"}, {"scan", "bomd"},  {"admp", "bomd"},  {"admp", "polar"},
    {"bomd", "polar"}, {"opt", "fopt"},   {"opt", "popt"},  {"stable", "irc"}, {"stable", "scan"}};

const WrittenKeyword* last_keyword(const CheckedJob& job, std::string_view name) noexcept {
    const WrittenKeyword* found = nullptr;
    for (const WrittenSegment& segment : job.segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            found = keyword.name == name ? &keyword : found;
        }
    }
    return found;
}

void check_conflicts(const CheckedJob& job, Findings& findings) {
    for (const Conflict& conflict : conflicts) {
        const WrittenOption* first = job.find_option(conflict.keyword, conflict.first);
        const WrittenOption* second = job.find_option(conflict.keyword, conflict.second);
        if (first != nullptr && second != nullptr) {
            findings.add("GJF-R008", Severity::Warning,
                         std::string(conflict.keyword) + ": '" + conflict.first + "' and '" + conflict.second +
                             "' contradict each other",
                         second->place, "keep the one that is meant");
        }
    }
    for (const auto& pair : keyword_conflicts) {
        if (job.has_keyword(pair[0]) && job.has_keyword(pair[1])) {
            findings.add("GJF-R008", Severity::Warning,
                         std::string("'") + pair[0] + "' and '" + pair[1] + "' contradict each other",
                         last_keyword(job, pair[1])->place, "keep the one that is meant");
        }
    }
}

void check_job_types(const CheckedJob& job, Findings& findings) {
    for (const auto& pair : job_type_conflicts) {
        if (job.has_keyword(pair[0]) && job.has_keyword(pair[1])) {
            findings.add("GJF-R010", Severity::Warning,
                         std::string("one route cannot ask for '") + pair[0] + "' and '" + pair[1] + "'",
                         last_keyword(job, pair[1])->place, "make two jobs of them, with --Link1-- between");
        }
    }
    if (job.has_keyword("opt") && job.has_keyword("polar") && !job.has_keyword("freq")) {
        findings.add("GJF-R010", Severity::Warning, "'polar' goes with 'opt' only where 'freq' stands too",
                     last_keyword(job, "polar")->place, "add freq, or make two jobs of them");
    }
}

bool has_any_option(const CheckedJob& job, const char* keyword, std::initializer_list<const char*> options) {
    return std::any_of(options.begin(), options.end(), [&](const char* option) { return job.has_option(keyword, option); });
}

std::optional<std::int64_t> integer_value(const WrittenOption* option) {
    return option == nullptr ? std::nullopt : to_int64(trim_view(option->value));
}

// An active space has a number of electrons and one of orbitals.
void check_active_space(const CheckedJob& job, Findings& findings) {
    for (const WrittenSegment& segment : job.segments) {
        if (segment.method == "casscf" && segment.text.find_first_of("([={0123456789") >= segment.text.find('/')) {
            findings.add("GJF-R009", Severity::Warning, "casscf has no active space", segment.place,
                         "give the numbers of electrons and orbitals, as in casscf(4,4)");
        }
    }
}

void check_needs(const CheckedJob& job, Findings& findings) {
    const WrittenKeyword* irc = job.find_keyword("irc");
    if (irc != nullptr && !has_any_option(job, "irc",
                                          {"calcfc", "calcall", "rcfc", "recalcfc", "recalc", "fccards", "restart",
                                           "downhill", "gradientonly", "euler"})) {
        findings.add("GJF-R009", Severity::Error, "irc has no force constants to begin with", irc->place,
                     "add calcfc, or rcfc to take them from the checkpoint of a frequency job");
    }
    for (const char* goal : {"ts", "saddle"}) {
        const WrittenOption* option = job.find_option("opt", goal);
        if (option != nullptr && !has_any_option(job, "opt",
                                                 {"calcfc", "calcall", "readfc", "rcfc", "recalcfc", "calchffc", "fccards",
                                                  "restart", "qst2", "qst3"})) {
            findings.add("GJF-R009", Severity::Warning,
                         std::string("opt=") + goal + " begins with estimated force constants", option->place,
                         "add calcfc: an estimate rarely points to the transition state");
        }
    }
    if (const WrittenOption* modify = job.find_option("geom", "modify");
        modify != nullptr && !job.molecule_from_checkpoint()) {
        findings.add("GJF-R009", Severity::Warning,
                     "geom=modify changes a molecule taken from a checkpoint, but none is taken", modify->place,
                     "add check");
    }
    if (const WrittenOption* solvent = job.find_option("scrf", "solvent");
        solvent != nullptr && equals_folded(trim_view(solvent->value), "generic") && !job.has_option("scrf", "read")) {
        findings.add("GJF-R009", Severity::Warning,
                     "a generic solvent is described in the input, but scrf has no option read", solvent->place,
                     "add read, and a section with eps=...");
    }
    check_active_space(job, findings);
    for (const char* keyword : {"td", "tda"}) {
        const WrittenOption* root = job.find_option(keyword, "root");
        const std::int64_t states = integer_value(job.find_option(keyword, "nstates")).value_or(3);
        if (const std::optional<std::int64_t> wanted = integer_value(root); wanted && *wanted > states) {
            findings.add(
                "GJF-R009", Severity::Warning,
                "root " + std::to_string(*wanted) + " is asked for, but " + std::to_string(states) + " states are computed",
                root->place, "raise nstates");
        }
    }
}

std::vector<std::string> option_texts(const WrittenKeyword& keyword) {
    std::vector<std::string> texts;
    for (const WrittenOption& option : keyword.options) {
        texts.push_back(option.canonical + "=" + to_lower_copy(option.value));
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}

void check_repeats(const CheckedJob& job, Findings& findings) {
    std::vector<const WrittenKeyword*> seen;
    for (const WrittenSegment& segment : job.segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            const auto same =
                std::find_if(seen.begin(), seen.end(), [&](const WrittenKeyword* k) { return k->name == keyword.name; });
            const bool may_repeat = keyword.name.compare(0, 3, "iop") == 0 || keyword.name == "extralinks";
            if (!keyword.known || may_repeat) {
                continue;
            }
            if (same == seen.end()) {
                seen.push_back(&keyword);
                continue;
            }
            const bool equal = option_texts(**same) == option_texts(keyword);
            findings.add("GJF-R002", equal ? Severity::Note : Severity::Warning,
                         "'" + keyword.name + "' stands twice in the route" + (equal ? "" : ", with different options"),
                         keyword.place, "write it once, with all its options in parentheses");
        }
    }
}

// Tells whether a route may do without a method: it restarts a job, or brings its own model.
bool needs_no_model(const CheckedJob& job) {
    constexpr const char* keywords[] = {"nonstd", "rearchive", "external", "ircmax"};
    return job.restarts() ||
           std::any_of(std::begin(keywords), std::end(keywords), [&](const char* name) { return job.has_keyword(name); });
}

void check_model_chemistry(const CheckedJob& job, Findings& findings) {
    const WrittenSegment* method = nullptr;
    const WrittenSegment* basis = nullptr;
    bool has_oniom = false;
    for (const WrittenSegment& segment : job.segments) {
        has_oniom = has_oniom || segment.is_oniom;
        if (!segment.method.empty()) {
            // A second-order correction goes with a multi-configuration method.
            const auto is_pair = [](const std::string& a, const std::string& b) {
                return a.find("cas") == 0 && b.find("mp2") != std::string::npos;
            };
            const bool clash = method != nullptr && method->method != segment.method &&
                               !is_pair(method->method, segment.method) && !is_pair(segment.method, method->method);
            if (clash) {
                findings.add("GJF-R003", Severity::Warning,
                             "two methods: '" + method->method + "' and '" + segment.method + "'", segment.place,
                             "keep one");
            }
            method = method == nullptr ? &segment : method;
        }
        if (!segment.basis.empty() && !is_one_of(fitting_sets, segment.basis)) {
            if (basis != nullptr && basis->basis != segment.basis) {
                findings.add("GJF-R004", Severity::Warning,
                             "two basis sets: '" + basis->basis + "' and '" + segment.basis + "'", segment.place,
                             "keep one; different sets for different elements are given with gen");
            }
            basis = basis == nullptr ? &segment : basis;
        }
    }
    const bool any_unknown = std::any_of(job.segments.begin(), job.segments.end(), [](const WrittenSegment& segment) {
        return std::any_of(segment.keywords.begin(), segment.keywords.end(),
                           [](const WrittenKeyword& keyword) { return !keyword.known; });
    });
    if (has_oniom || needs_no_model(job) || job.segments.empty()) {
        return;
    }
    const auto names_method = [](const KeywordInfo& keyword) { return keyword.category == "method"; };
    const bool keyword_is_method = std::any_of(job.route.keywords.begin(), job.route.keywords.end(), names_method);
    if (method == nullptr && !keyword_is_method && !any_unknown) {
        findings.add("GJF-R005", Severity::Warning, "the route names no method: Gaussian takes Hartree-Fock",
                     job.segments.front().place.line);
    }
    if (method == nullptr) {
        return;
    }
    const bool self_contained = is_method_of(self_contained_methods, method->method);
    if (self_contained && basis != nullptr && basis->basis != "chkbasis") {
        findings.add("GJF-R006", Severity::Warning,
                     "basis set '" + basis->basis + "' stands beside '" + method->method + "', which needs none",
                     basis->place, "leave it out");
    }
    if (!self_contained && basis == nullptr && !any_unknown) {
        findings.add("GJF-R007", Severity::Warning, "the route names no basis set: Gaussian takes STO-3G", method->place);
    }
}

}  // namespace

bool is_force_field(std::string_view method) noexcept { return is_one_of(force_fields, method); }

void check_route_sense(const CheckedJob& job, Findings& findings) {
    if (!job.schema.is_loaded() || job.has_keyword("nonstd")) {
        return;
    }
    check_repeats(job, findings);
    check_model_chemistry(job, findings);
    check_conflicts(job, findings);
    check_needs(job, findings);
    check_job_types(job, findings);
}

}  // namespace quor::input::gaussian
