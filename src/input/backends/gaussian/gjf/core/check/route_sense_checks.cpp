// Checks of the route as a whole: words that contradict each other, need each other, or are missing.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

const WrittenKeyword* last_keyword(const CheckedJob& job, std::string_view name) noexcept {
    const WrittenKeyword* found = nullptr;
    for (const WrittenSegment& segment : job.segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            found = keyword.name == name ? &keyword : found;
        }
    }
    return found;
}

// Finds the options of all keywords of one name that contradict each other.
void check_contradicting_options(const CheckedJob& job, const WrittenKeyword& keyword, Findings& findings) {
    for (const Exclusion& pair : exclusions("options", keyword.name)) {
        const WrittenOption* second = job.find_option(keyword.name, pair.second);
        if (second != nullptr && job.has_option(keyword.name, pair.first)) {
            findings.add("GJF-R008", severity_named(pair.severity),
                         keyword.name + ": '" + std::string(pair.first) + "' and '" + std::string(pair.second) +
                             "' contradict each other",
                         second->place, "keep the one that is meant");
        }
    }
}

void check_conflicts(const CheckedJob& job, Findings& findings) {
    for (const WrittenSegment& segment : job.segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            if (!keyword.options.empty() && job.find_keyword(keyword.name) == &keyword) {
                check_contradicting_options(job, keyword, findings);
            }
        }
    }
    for (const Exclusion& pair : exclusions("keywords")) {
        if (job.has_keyword(pair.first) && job.has_keyword(pair.second)) {
            findings.add("GJF-R008", severity_named(pair.severity),
                         "'" + std::string(pair.first) + "' and '" + std::string(pair.second) + "' contradict each other",
                         last_keyword(job, pair.second)->place, "keep the one that is meant");
        }
    }
}

void check_contradicting_words(const CheckedJob& job, Findings& findings) {
    for (const Exclusion& pair : exclusions("words")) {
        const TextPlace* first = job.find_word(pair.first);
        const TextPlace* second = job.find_word(pair.second);
        if (first != nullptr && second != nullptr) {
            findings.add("GJF-R008", severity_named(pair.severity),
                         "'" + std::string(pair.first) + "' and '" + std::string(pair.second) + "' contradict each other",
                         *second, "keep the one that is meant");
        }
    }
}

void check_job_types(const CheckedJob& job, Findings& findings) {
    for (const Exclusion& pair : exclusions("jobs")) {
        if (job.has_keyword(pair.first) && job.has_keyword(pair.second)) {
            findings.add("GJF-R010", severity_named(pair.severity),
                         "one route cannot ask for '" + std::string(pair.first) + "' and '" + std::string(pair.second) + "'",
                         last_keyword(job, pair.second)->place, "make two jobs of them, with --Link1-- between");
        }
    }
    if (job.has_keyword("opt") && job.has_keyword("polar") && !job.has_keyword("freq")) {
        findings.add("GJF-R010", Severity::Note, "'polar' goes with 'opt' only where 'freq' stands too",
                     last_keyword(job, "polar")->place, "add freq, or make two jobs of them");
    }
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

// A path through three structures has one in its middle.
void check_path(const CheckedJob& job, Findings& findings) {
    const WrittenOption* path = job.find_option("opt", "path");
    if (job.has_option("opt", "qst3") && integer_value(path).value_or(1) % 2 == 0) {
        findings.add("GJF-R009", Severity::Warning, "opt=path takes an odd number beside opt=qst3", path->place);
    }
}

// Two ways of joining a solvent to layers give no gradient.
void check_layers_in_solution(const CheckedJob& job, Findings& findings) {
    const WrittenOption* layers = job.find_option("scrf", "oniompcm");
    const std::string way = layers == nullptr ? std::string() : to_lower_copy(layers->value);
    if ((way == "a" || way == "b") && job.has_any_word("opt freq force")) {
        findings.add("GJF-R008", Severity::Warning, "scrf=(oniompcm=" + way + ") is for energies alone", layers->place,
                     "oniompcm=c and oniompcm=x have gradients");
    }
}

void check_needs(const CheckedJob& job, Findings& findings) {
    for (const Need& need : needs()) {
        const WrittenKeyword* keyword = job.find_keyword(need.keyword);
        const WrittenOption* option = need.option.empty() ? nullptr : job.find_option(need.keyword, need.option);
        if (keyword == nullptr || (!need.option.empty() && option == nullptr) ||
            std::any_of(need.any_of.begin(), need.any_of.end(), [&](std::string_view other) {
                return job.has_option(need.keyword, other) || job.find_word(other) != nullptr;
            })) {
            continue;
        }
        // What an earlier job left in the checkpoint is perhaps all that is needed.
        const bool is_given = need.option.empty() && job.molecule_from_checkpoint();
        findings.add("GJF-R009", is_given ? Severity::Note : severity_named(need.severity), std::string(need.message),
                     option == nullptr ? keyword->place : option->place, std::string(need.hint));
    }
    check_active_space(job, findings);
    check_path(job, findings);
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
            if (!keyword.known || has_trait(keyword.name, "may be repeated")) {
                continue;
            }
            if (same == seen.end()) {
                seen.push_back(&keyword);
                continue;
            }
            const bool equal = option_texts(**same) == option_texts(keyword);
            const bool is_deadly = has_trait(keyword.name, "must not be repeated");
            findings.add("GJF-R002",
                         is_deadly ? Severity::Error
                         : equal   ? Severity::Note
                                   : Severity::Warning,
                         "'" + keyword.name + "' stands twice in the route" + (equal ? "" : ", with different options"),
                         keyword.place, "write it once, with all its options in parentheses");
        }
    }
}

// Tells whether a route may do without a method: it restarts a job, or brings its own model.
bool needs_no_model(const CheckedJob& job) {
    return job.restarts() || std::any_of(job.segments.begin(), job.segments.end(), [](const WrittenSegment& segment) {
               return std::any_of(segment.keywords.begin(), segment.keywords.end(),
                                  [](const WrittenKeyword& keyword) { return has_trait(keyword.name, "needs no method"); });
           });
}

// The segments of the route that name its method and its basis set; null for none.
struct ModelChemistry {
    const WrittenSegment* method = nullptr;
    const WrittenSegment* basis = nullptr;
};

// A second-order correction goes with a multi-configuration method.
bool go_together(const std::string& a, const std::string& b) {
    return a == b || (a.starts_with("cas") && b.find("mp2") != std::string::npos);
}

// Finds method and basis set, and reports those that are named twice.
ModelChemistry model_chemistry_of(const CheckedJob& job, Findings& findings) {
    ModelChemistry model;
    for (const WrittenSegment& segment : job.segments) {
        if (!segment.method.empty()) {
            if (model.method != nullptr && !go_together(model.method->method, segment.method) &&
                !go_together(segment.method, model.method->method)) {
                findings.add("GJF-R003", Severity::Warning,
                             "two methods: '" + model.method->method + "' and '" + segment.method + "'", segment.place,
                             "keep one");
            }
            model.method = model.method == nullptr ? &segment : model.method;
        }
        if (!segment.basis.empty() && !has_trait(segment.basis, "stands beside a basis set")) {
            if (model.basis != nullptr && model.basis->basis != segment.basis) {
                findings.add("GJF-R004", Severity::Warning,
                             "two basis sets: '" + model.basis->basis + "' and '" + segment.basis + "'", segment.place,
                             "keep one; different sets for different elements are given with gen");
            }
            model.basis = model.basis == nullptr ? &segment : model.basis;
        }
    }
    return model;
}

void check_model_chemistry(const CheckedJob& job, Findings& findings) {
    const auto [method, basis] = model_chemistry_of(job, findings);
    const bool has_oniom = std::any_of(job.segments.begin(), job.segments.end(),
                                       [](const WrittenSegment& segment) { return segment.is_oniom; });
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
    const bool self_contained = method_has_trait(method->method, "needs no basis set");
    if (self_contained && basis != nullptr && basis->basis != "chkbasis") {
        findings.add("GJF-R006", Severity::Warning,
                     "basis set '" + basis->basis + "' stands beside '" + method->method + "', which needs none",
                     basis->place, "leave it out");
    }
    if (!self_contained && basis == nullptr && !any_unknown) {
        findings.add("GJF-R007", Severity::Warning, "the route names no basis set: Gaussian takes STO-3G", method->place);
    }
}

void check_route_sense(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    if (!job.schema.is_loaded() || job.has_keyword("nonstd")) {
        return;
    }
    check_repeats(job, findings);
    check_model_chemistry(job, findings);
    check_conflicts(job, findings);
    check_contradicting_words(job, findings);
    check_layers_in_solution(job, findings);
    check_needs(job, findings);
    check_job_types(job, findings);
}

}  // namespace

const Family route_sense_family = {
    Known::Route,
    check_route_sense,
    {"GJF-R002", "GJF-R003", "GJF-R004", "GJF-R005", "GJF-R006", "GJF-R007", "GJF-R008", "GJF-R009", "GJF-R010"}};

}  // namespace quor::input::gaussian
