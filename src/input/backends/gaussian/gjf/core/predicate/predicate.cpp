// Asks the steps of a condition of a job, on a stack of answers.
#include <gjf/core/predicate/predicate.hpp>

#include <gjf/core/predicate/predicate_steps.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

Truth truth_of(bool value) noexcept { return value ? Truth::Yes : Truth::No; }

Truth opposite(Truth truth) noexcept { return truth == Truth::Unknown ? truth : truth_of(truth == Truth::No); }

bool compare(double value, Sign sign, double wanted) noexcept {
    switch (sign) {
        case Sign::Equal:
            return value == wanted;
        case Sign::Unequal:
            return value != wanted;
        case Sign::Less:
            return value < wanted;
        case Sign::LessOrEqual:
            return value <= wanted;
        case Sign::Greater:
            return value > wanted;
        default:
            return value >= wanted;
    }
}

// --- Fields

bool is_same_text(const std::string& text, const PredicateStep& step) {
    switch (step.field->form) {
        case FieldForm::Formula:
            return text == step.text;
        case FieldForm::Method:
            return default_route_schema().keywords_equivalent(text, step.text);
        case FieldForm::Basis:
            return basis_to_compare(text) == step.text;
        case FieldForm::Code:
            return to_lower_copy(text).starts_with(step.text);
        default:
            return equals_folded(text, step.text);
    }
}

bool fits_text(const std::string& text, const PredicateStep& step) {
    if (step.sign == Sign::Within) {
        return step.field->form == FieldForm::Formula ? text.find(step.text) != std::string::npos
                                                      : contains_folded(text, step.text);
    }
    return step.field->form == FieldForm::Severity ? compare(severity_rank(text), step.sign, step.number)
                                                   : is_same_text(text, step);
}

Truth truth_of_field(const PredicateStep& step, const JobFile& file, std::size_t job) {
    const FieldValue value = field_value(file, job, *step.field);
    if (!value.known) {
        return Truth::Unknown;
    }
    if (step.sign == Sign::None) {
        return truth_of(!value.texts.empty());
    }
    if (step.field->is_number()) {
        return value.number ? truth_of(compare(*value.number, step.sign, step.number)) : Truth::Unknown;
    }
    if (step.sign == Sign::Unequal) {
        PredicateStep equal = step;
        equal.sign = Sign::Equal;
        return opposite(truth_of_field(equal, file, job));
    }
    return truth_of(
        std::any_of(value.texts.begin(), value.texts.end(), [&](const std::string& text) { return fits_text(text, step); }));
}

// --- Selections

Truth truth_of_count(const PredicateStep& step, const JobFile& file, std::size_t job) {
    const JobReading& reading = file.whole(job);
    if (reading.job.geom.atom_count() == 0 || reading.atoms_uncertain) {
        return Truth::Unknown;
    }
    try {
        const auto count = static_cast<double>(selected_atoms(step.selection, reading.job).size());
        return truth_of(compare(count, step.sign, step.number));
    } catch (const SelectionError&) {
        return Truth::Unknown;  // the job has no such atom, no positions or no bonds
    }
}

// --- Route words

bool has_value(const FieldValue& field, const std::string& wanted, bool (*same)(const std::string&, const std::string&)) {
    return wanted.empty() ||
           std::any_of(field.texts.begin(), field.texts.end(), [&](const std::string& text) { return same(text, wanted); });
}

bool is_same_word(const std::string& a, const std::string& b) { return default_route_schema().keywords_equivalent(a, b); }

bool is_same_basis(const std::string& a, const std::string& b) { return basis_to_compare(a) == basis_to_compare(b); }

bool has_option(const KeywordInfo& keyword, const std::pair<const std::string, std::string>& wanted) {
    return std::any_of(keyword.options.begin(), keyword.options.end(), [&](const auto& option) {
        return default_route_schema().options_equivalent(keyword.name, option.first, wanted.first) &&
               (wanted.second == "TRUE" || equals_folded(option.second, to_lower_copy(wanted.second)));
    });
}

// A keyword may stand there several times, each with some of the options.
bool has_keyword(const ParsedKeywords& route, const KeywordInfo& wanted) {
    const std::vector<KeywordInfo> found = route.get_keywords_by_name(wanted.name);
    return !found.empty() && std::all_of(wanted.options.begin(), wanted.options.end(), [&](const auto& option) {
        return std::any_of(found.begin(), found.end(), [&](const KeywordInfo& each) { return has_option(each, option); });
    });
}

Truth truth_of_route(const PredicateStep& step, const JobFile& file, std::size_t job) {
    const std::optional<ParsedKeywords>& route = file.jobs()[job].job.control.parsed_keywords;
    if (!route) {
        return Truth::Unknown;
    }
    const ParsedKeywords& wanted = step.route;
    const bool fits = has_value(field_value(file, job, *find_job_field("method")), wanted.method, is_same_word) &&
                      has_value(field_value(file, job, *find_job_field("basis")), wanted.basis_set, is_same_basis) &&
                      std::all_of(wanted.keywords.begin(), wanted.keywords.end(),
                                  [&](const KeywordInfo& keyword) { return has_keyword(*route, keyword); });
    return truth_of(fits != (step.sign == Sign::Unequal));
}

Truth joined(PredicateTest joining, Truth a, Truth b) noexcept {
    return joining == PredicateTest::And ? std::min(a, b) : std::max(a, b);
}

Truth truth_of_step(const PredicateStep& step, const JobFile& file, std::size_t job) {
    switch (step.test) {
        case PredicateTest::Field:
            return truth_of_field(step, file, job);
        case PredicateTest::Count:
            return truth_of_count(step, file, job);
        default:
            return truth_of_route(step, file, job);
    }
}

}  // namespace

struct JobPredicate::Steps {
    std::vector<PredicateStep> list;
};

JobPredicate::JobPredicate(std::string_view text) : steps_(std::make_shared<Steps>(Steps{read_predicate(text)})) {}
JobPredicate::JobPredicate(const JobPredicate& other) = default;
JobPredicate& JobPredicate::operator=(const JobPredicate& other) = default;
JobPredicate::~JobPredicate() = default;

Truth JobPredicate::of(const JobFile& file, std::size_t job) const {
    const std::vector<PredicateStep>& steps = steps_->list;
    std::vector<Truth> stack;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const PredicateStep& step = steps[i];
        if (step.test == PredicateTest::Not) {
            stack.back() = opposite(stack.back());
        } else if (step.test == PredicateTest::And || step.test == PredicateTest::Or) {
            const Truth second = stack.back();
            stack.pop_back();
            stack.back() = joined(step.test, stack.back(), second);
        } else if (step.joins != 0 &&
                   stack.back() == (steps[step.joins - 1].test == PredicateTest::And ? Truth::No : Truth::Yes)) {
            i = step.joins - 1;  // the answer stands: go on behind what joins the two
        } else {
            stack.push_back(truth_of_step(step, file, job));
        }
    }
    return stack.back();
}

std::vector<std::size_t> fitting_jobs(const std::optional<JobPredicate>& condition, const JobFile& file) {
    std::vector<std::size_t> jobs;
    for (std::size_t job = 0; job < file.jobs().size(); ++job) {
        if (!condition || condition->fits(file, job)) {
            jobs.push_back(job);
        }
    }
    return jobs;
}

ChosenJobs::ChosenJobs(const std::optional<JobPredicate>& condition, const std::string& path, const std::string& text,
                       NamedFiles files) {
    if (condition) {
        const JobFile file(path, text, files);
        numbers_ = fitting_jobs(condition, file);
        for (std::size_t& number : *numbers_) {
            number = file.jobs()[number].layout.number;
        }
    }
}

bool ChosenJobs::has(std::size_t number) const noexcept {
    return !numbers_ || (number == 0 ? !numbers_->empty() : std::binary_search(numbers_->begin(), numbers_->end(), number));
}

}  // namespace quor::input::gaussian
