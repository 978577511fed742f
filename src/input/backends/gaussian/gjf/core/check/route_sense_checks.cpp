// Checks of the route as a whole: words that contradict each other, need each other, or are missing.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Names the place of the first of two words.
void relate_first(const CheckedJob& job, Span first, Finding& finding) {
    relate(job.route_place(first), "first here", finding);
}

bool is_option_of(const RouteTree::Option& option, const RouteTree::Keyword& keyword) noexcept {
    return &option >= keyword.options.data() && &option < keyword.options.data() + keyword.options.size();
}

// Offers to leave out one of two keywords, and names the place of the first.
void offer_one_of(const CheckedJob& job, const Exclusion& pair, Finding& finding) {
    const RouteTree::Keyword* first = job.find_keyword(pair.first);
    const RouteTree::Keyword* second = job.last_keyword(pair.second);
    relate_first(job, first->head, finding);
    offer(finding, "leave out " + job.written(first->place), FixSafety::Choice, without_keyword(job, *first));
    offer(finding, "leave out " + job.written(second->place), FixSafety::Choice, without_keyword(job, *second));
}

// Finds the options of all keywords of one name that contradict each other.
void check_contradicting_options(const CheckedJob& job, const RouteTree::Keyword& keyword, Findings& findings) {
    for (const Exclusion& pair : exclusions("options", keyword.name)) {
        const RouteTree::Option* first = job.find_option(keyword.name, pair.first);
        const RouteTree::Option* second = job.find_option(keyword.name, pair.second);
        if (second != nullptr && first != nullptr) {
            Finding& finding = findings.add("GJF-R008", severity_named(pair.severity),
                                            keyword.name + ": '" + std::string(pair.first) + "' and '" +
                                                std::string(pair.second) + "' contradict each other",
                                            job.route_place(second->name), "keep the one that is meant");
            relate_first(job, first->name, finding);
            for (const RouteTree::Option* option : {first, second}) {
                if (is_option_of(*option, keyword)) {
                    offer(finding, "leave out " + job.written(option->name), FixSafety::Choice,
                          without_option(job, keyword, *option));
                }
            }
        }
    }
}

void check_conflicts(const CheckedJob& job, Findings& findings) {
    for (const RouteTree::Keyword* keyword : job.keywords) {
        if (!keyword->options.empty() && job.find_keyword(keyword->name) == keyword) {
            check_contradicting_options(job, *keyword, findings);
        }
    }
    for (const Exclusion& pair : exclusions("keywords")) {
        if (job.has_keyword(pair.first) && job.has_keyword(pair.second)) {
            offer_one_of(job, pair,
                         findings.add("GJF-R008", severity_named(pair.severity),
                                      "'" + std::string(pair.first) + "' and '" + std::string(pair.second) +
                                          "' contradict each other",
                                      job.route_place(job.last_keyword(pair.second)->head), "keep the one that is meant"));
        }
    }
}

void check_contradicting_words(const CheckedJob& job, Findings& findings) {
    for (const Exclusion& pair : exclusions("words")) {
        const std::optional<Span> first = job.find_word(pair.first);
        const std::optional<Span> second = job.find_word(pair.second);
        if (first && second) {
            Finding& finding = findings.add(
                "GJF-R008", severity_named(pair.severity),
                "'" + std::string(pair.first) + "' and '" + std::string(pair.second) + "' contradict each other",
                job.route_place(*second), "keep the one that is meant");
            relate_first(job, *first, finding);
        }
    }
}

void check_job_types(const CheckedJob& job, Findings& findings) {
    for (const Exclusion& pair : exclusions("jobs")) {
        if (job.has_keyword(pair.first) && job.has_keyword(pair.second)) {
            offer_one_of(
                job, pair,
                findings.add(
                    "GJF-R010", severity_named(pair.severity),
                    "one route cannot ask for '" + std::string(pair.first) + "' and '" + std::string(pair.second) + "'",
                    job.route_place(job.last_keyword(pair.second)->head), "make two jobs of them, with --Link1-- between"));
        }
    }
    if (job.has_keyword("opt") && job.has_keyword("polar") && !job.has_keyword("freq")) {
        findings.add("GJF-R010", Severity::Note, "'polar' goes with 'opt' only where 'freq' stands too",
                     job.route_place(job.last_keyword("polar")->head), "add freq, or make two jobs of them");
    }
}

std::optional<std::int64_t> integer_value(const CheckedJob& job, const RouteTree::Option* option) {
    return option == nullptr ? std::nullopt : to_int64(job.written(option->value));
}

// An active space has a number of electrons and one of orbitals.
void check_active_space(const CheckedJob& job, Findings& findings) {
    for (const RouteTree::Segment& segment : job.tree.segments) {
        const std::string text = job.written(segment.place);
        if (segment.method == "casscf" && text.find_first_of("([={0123456789") >= text.find('/')) {
            findings.add("GJF-R009", Severity::Warning, "casscf has no active space", job.route_place(segment.place),
                         "give the numbers of electrons and orbitals, as in casscf(4,4)");
        }
    }
}

// A path through three structures has one in its middle.
void check_path(const CheckedJob& job, Findings& findings) {
    const RouteTree::Option* path = job.find_option("opt", "path");
    if (job.has_option("opt", "qst3") && integer_value(job, path).value_or(1) % 2 == 0) {
        findings.add("GJF-R009", Severity::Warning, "opt=path takes an odd number beside opt=qst3",
                     job.route_place(path->name));
    }
}

// Two ways of joining a solvent to layers give no gradient.
void check_layers_in_solution(const CheckedJob& job, Findings& findings) {
    const RouteTree::Option* layers = job.find_option("scrf", "oniompcm");
    const std::string way = layers == nullptr ? std::string() : to_lower_copy(job.written(layers->value));
    if ((way == "a" || way == "b") && job.has_any_word("opt freq force")) {
        findings.add("GJF-R008", Severity::Warning, "scrf=(oniompcm=" + way + ") is for energies alone",
                     job.route_place(layers->name), "oniompcm=c and oniompcm=x have gradients");
    }
}

// Offers to compute as many states as the root that is asked for; where a number is given, either may be wrong.
void offer_states(const CheckedJob& job, const RouteTree::Keyword& keyword, std::int64_t states, Finding& finding) {
    const std::string number = std::to_string(states);
    const RouteTree::Option* given = keyword.find_option("nstates");
    if (given == nullptr) {
        offer(finding, "add nstates=" + number, FixSafety::Unsafe, with_option(job, keyword, "nstates=" + number));
    } else {
        offer(finding, "write nstates=" + number, FixSafety::Choice, route_edits(job, given->value, number));
    }
}

// Offers what an option or a keyword needs: the usual one where it is among them, else each as a choice.
void offer_needed(const CheckedJob& job, const RouteTree::Keyword& keyword, const Need& need, Finding& finding) {
    constexpr std::string_view usual = "calcfc";
    const bool has_usual = std::find(need.any_of.begin(), need.any_of.end(), usual) != need.any_of.end();
    for (const std::string_view option : need.any_of) {
        if (!has_usual || option == usual) {
            const FixSafety safety = has_usual || need.any_of.size() == 1 ? FixSafety::Unsafe : FixSafety::Choice;
            offer(finding, "add " + std::string(option), safety, with_option(job, keyword, std::string(option)));
        }
    }
}

void check_needs(const CheckedJob& job, Findings& findings) {
    for (const Need& need : needs()) {
        const RouteTree::Keyword* keyword = job.find_keyword(need.keyword);
        const RouteTree::Option* option = need.option.empty() ? nullptr : job.find_option(need.keyword, need.option);
        if (keyword == nullptr || (!need.option.empty() && option == nullptr) ||
            std::any_of(need.any_of.begin(), need.any_of.end(), [&](std::string_view other) {
                return job.has_option(need.keyword, other) || job.find_word(other);
            })) {
            continue;
        }
        // What an earlier job left in the checkpoint is perhaps all that is needed.
        const bool is_given = need.option.empty() && job.molecule_from_checkpoint();
        Finding& finding =
            findings.add("GJF-R009", is_given ? Severity::Note : severity_named(need.severity), std::string(need.message),
                         job.route_place(option == nullptr ? keyword->head : option->name), std::string(need.hint));
        offer_needed(job, *keyword, need, finding);
    }
    check_active_space(job, findings);
    check_path(job, findings);
    for (const char* keyword : {"td", "tda"}) {
        const RouteTree::Option* root = job.find_option(keyword, "root");
        const std::int64_t states = integer_value(job, job.find_option(keyword, "nstates")).value_or(3);
        if (const std::optional<std::int64_t> wanted = integer_value(job, root); wanted && *wanted > states) {
            Finding& finding = findings.add(
                "GJF-R009", Severity::Warning,
                "root " + std::to_string(*wanted) + " is asked for, but " + std::to_string(states) + " states are computed",
                job.route_place(root->name), "raise nstates");
            offer_states(job, *job.find_keyword(keyword), *wanted, finding);
        }
    }
}

std::vector<std::string> option_texts(const CheckedJob& job, const RouteTree::Keyword& keyword) {
    std::vector<std::string> texts;
    for (const RouteTree::Option& option : keyword.options) {
        texts.push_back(option.canonical + "=" + to_lower_copy(job.written(option.value)));
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}

// Offers to write the options of the second keyword behind those of the first.
void offer_merged(const CheckedJob& job, const RouteTree::Keyword& first, const RouteTree::Keyword& second,
                  Finding& finding) {
    std::string more;
    for (const RouteTree::Option& option : second.options) {
        const bool is_there = first.find_option(option.canonical) != nullptr;
        more += is_there ? "" : (more.empty() ? "" : ",") + job.written(option.place);
    }
    std::vector<TextEdit> removal = without_keyword(job, second);
    if (more.empty()) {
        offer(finding, "write it once", FixSafety::Unsafe, std::move(removal));
        return;
    }
    if (removal.empty()) {
        return;
    }
    std::vector<TextEdit> edits =
        with_option(job, first, more.find(',') == more.npos || !first.options.empty() ? more : "(" + more + ")");
    if (!edits.empty()) {
        edits.push_back(std::move(removal.front()));
        std::sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
        offer(finding, "write all options at the first", FixSafety::Unsafe, std::move(edits));
    }
}

void check_repeats(const CheckedJob& job, Findings& findings) {
    std::vector<const RouteTree::Keyword*> seen;
    for (const RouteTree::Keyword* keyword : job.keywords) {
        const auto same =
            std::find_if(seen.begin(), seen.end(), [&](const RouteTree::Keyword* k) { return k->name == keyword->name; });
        if (!keyword->known() || has_trait(keyword->name, "may be repeated")) {
            continue;
        }
        if (same == seen.end()) {
            seen.push_back(keyword);
            continue;
        }
        const bool equal = option_texts(job, **same) == option_texts(job, *keyword);
        const bool is_deadly = has_trait(keyword->name, "must not be repeated");
        Finding& finding =
            findings.add("GJF-R002",
                         is_deadly ? Severity::Error
                         : equal   ? Severity::Note
                                   : Severity::Warning,
                         "'" + keyword->name + "' stands twice in the route" + (equal ? "" : ", with different options"),
                         job.route_place(keyword->head), "write it once, with all its options in parentheses");
        relate_first(job, (*same)->head, finding);
        if (equal) {
            offer(finding, "write it once", FixSafety::Safe, without_keyword(job, *keyword));
        } else {
            offer_merged(job, **same, *keyword, finding);
        }
    }
}

// Tells whether a route may do without a method: it restarts a job, or brings its own model.
bool needs_no_model(const CheckedJob& job) {
    return job.restarts() || std::any_of(job.keywords.begin(), job.keywords.end(), [](const RouteTree::Keyword* keyword) {
               return has_trait(keyword->name, "needs no method");
           });
}

// Offers to leave out a basis set, which stands behind the method or alone.
void offer_no_basis(const CheckedJob& job, const RouteTree::Segment& method, const RouteTree::Segment& basis,
                    Finding& finding) {
    if (!basis.keywords.empty()) {
        return;
    }
    const std::string text = job.written(basis.place);
    const std::size_t slash = text.find('/');
    if (&method != &basis && slash == std::string::npos) {
        offer(finding, "leave out " + text, FixSafety::Unsafe, without_word(job, basis.place));
    } else if (&method == &basis && slash != std::string::npos && text.find('/', slash + 1) == std::string::npos) {
        offer(finding, "leave out " + text.substr(slash + 1), FixSafety::Unsafe,
              route_edits(job, span_between(basis.place.begin + slash, basis.place.end()), {}));
    }
}

// The segments of the route that name its method and its basis set; null for none.
struct ModelChemistry {
    const RouteTree::Segment* method = nullptr;
    const RouteTree::Segment* basis = nullptr;
};

// A second-order correction goes with a multi-configuration method.
bool go_together(const std::string& a, const std::string& b) {
    return a == b || (a.starts_with("cas") && b.find("mp2") != std::string::npos);
}

// Finds method and basis set, and reports those that are named twice.
ModelChemistry model_chemistry_of(const CheckedJob& job, Findings& findings) {
    ModelChemistry model;
    for (const RouteTree::Segment& segment : job.tree.segments) {
        if (!segment.method.empty()) {
            if (model.method != nullptr && !go_together(model.method->method, segment.method) &&
                !go_together(segment.method, model.method->method)) {
                Finding& finding = findings.add("GJF-R003", Severity::Warning,
                                                "two methods: '" + model.method->method + "' and '" + segment.method + "'",
                                                job.route_place(segment.place), "keep one");
                relate_first(job, model.method->place, finding);
            }
            model.method = model.method == nullptr ? &segment : model.method;
        }
        if (!segment.basis.empty() && !has_trait(segment.basis, "stands beside a basis set")) {
            if (model.basis != nullptr && model.basis->basis != segment.basis) {
                Finding& finding = findings.add("GJF-R004", Severity::Warning,
                                                "two basis sets: '" + model.basis->basis + "' and '" + segment.basis + "'",
                                                job.route_place(segment.place),
                                                "keep one; different sets for different elements are given with gen");
                relate_first(job, model.basis->place, finding);
            }
            model.basis = model.basis == nullptr ? &segment : model.basis;
        }
    }
    return model;
}

void check_model_chemistry(const CheckedJob& job, Findings& findings) {
    const auto [method, basis] = model_chemistry_of(job, findings);
    const bool has_oniom = std::any_of(job.tree.segments.begin(), job.tree.segments.end(),
                                       [](const RouteTree::Segment& segment) { return segment.is_oniom; });
    const bool any_unknown = std::any_of(job.keywords.begin(), job.keywords.end(),
                                         [](const RouteTree::Keyword* keyword) { return !keyword->known(); });
    if (has_oniom || needs_no_model(job) || job.tree.segments.empty()) {
        return;
    }
    const auto names_method = [](const KeywordInfo& keyword) { return keyword.category == "method"; };
    const bool keyword_is_method = std::any_of(job.route.keywords.begin(), job.route.keywords.end(), names_method);
    if (method == nullptr && !keyword_is_method && !any_unknown) {
        findings.add("GJF-R005", Severity::Warning, "the route names no method: Gaussian takes Hartree-Fock",
                     job.route_place(job.tree.segments.front().place).line);
    }
    if (method == nullptr) {
        return;
    }
    const bool self_contained = method_has_trait(method->method, "needs no basis set");
    if (self_contained && basis != nullptr && basis->basis != "chkbasis") {
        Finding& finding =
            findings.add("GJF-R006", Severity::Warning,
                         "basis set '" + basis->basis + "' stands beside '" + method->method + "', which needs none",
                         job.route_place(basis->place), "leave it out");
        offer_no_basis(job, *method, *basis, finding);
    }
    if (!self_contained && basis == nullptr && !any_unknown) {
        findings.add("GJF-R007", Severity::Warning, "the route names no basis set: Gaussian takes STO-3G",
                     job.route_place(method->place));
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
