// Reads conditions: which field, sign and value stand there, or which route word.
#include <gjf/core/predicate/predicate_steps.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/job/memory_amount.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/number.hpp>

#include <iterator>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

struct WrittenSign {
    std::string_view text;
    Sign sign;
};

// Those of two characters before those that they begin with.
constexpr WrittenSign signs[] = {{"!=", Sign::Unequal}, {"<=", Sign::LessOrEqual}, {">=", Sign::GreaterOrEqual},
                                 {"==", Sign::Equal},   {"=", Sign::Equal},        {"<", Sign::Less},
                                 {">", Sign::Greater},  {"~", Sign::Within}};

bool is_order(Sign sign) noexcept {
    return sign == Sign::Less || sign == Sign::LessOrEqual || sign == Sign::Greater || sign == Sign::GreaterOrEqual;
}

std::string in_quotes(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string with_hint(std::string message, const std::string& hint) {
    return hint.empty() ? message : std::move(message) + "; " + hint;
}

std::vector<std::string> field_names() {
    std::vector<std::string> names;
    for (const JobField& field : job_fields()) {
        names.emplace_back(field.name);
    }
    return names;
}

class PredicateReader : public ExpressionReader<PredicateStep> {
   public:
    explicit PredicateReader(std::string_view text) : ExpressionReader(text, {"the condition", "a condition is missing"}) {}

   private:
    PredicateStep joining_step(Joining joining) const override {
        constexpr PredicateTest tests[] = {PredicateTest::Not, PredicateTest::And, PredicateTest::Or};
        PredicateStep step;
        step.test = tests[static_cast<std::size_t>(joining)];
        return step;
    }

    bool read_test(std::size_t begin) override {
        const std::string_view name = read_token(true);
        PredicateStep step;
        if (equals_folded(name, "count") && at_ < text_.size() && text_[at_] == '(') {
            read_count(step);
            add(std::move(step));
            return true;
        }
        constexpr std::string_view route_prefix = "route:";
        step.field = find_job_field(name);
        step.sign = read_sign();
        const std::size_t value_begin = at_;
        const std::string value = step.sign == Sign::None ? std::string() : read_value(begin);
        if (step.field != nullptr) {
            step.test = PredicateTest::Field;
            take_value(step, value, value_begin);
        } else if (equals_folded(name.substr(0, route_prefix.size()), route_prefix)) {
            take_route_word(step, name.substr(route_prefix.size()), value, begin);
        } else {
            take_route_word(step, name, value, begin);
        }
        add(std::move(step));
        return true;
    }

    // Reads up to a blank, a sign (if wanted) or a parenthesis that was not opened here; blanks in parentheses belong to it.
    std::string_view read_token(bool ends_at_sign) {
        const std::size_t begin = at_;
        std::size_t open = 0;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            const bool is_end = is_trim_character(c) || c == ')' || (ends_at_sign && is_sign(at_)) ||
                                (c == '(' && equals_folded(text_.substr(begin, at_ - begin), "count"));
            if (open == 0 && is_end) {
                break;
            }
            open += c == '(' ? 1U : 0U;
            open -= c == ')' ? 1U : 0U;
        }
        if (open != 0) {
            fail(begin, "a parenthesis of " + in_quotes(text_.substr(begin)) + " is never closed");
        }
        return text_.substr(begin, at_ - begin);
    }

    bool is_sign(std::size_t at) const noexcept { return sign_at(at) != nullptr; }

    const WrittenSign* sign_at(std::size_t at) const noexcept {
        const auto* found = std::find_if(std::begin(signs), std::end(signs),
                                         [&](const WrittenSign& sign) { return text_.substr(at).starts_with(sign.text); });
        return found == std::end(signs) ? nullptr : found;
    }

    // Takes a sign and the blanks around it, if one comes next.
    Sign read_sign() {
        const std::size_t next = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size());
        const WrittenSign* sign = sign_at(next);
        if (sign == nullptr) {
            return Sign::None;
        }
        at_ = next + sign->text.size();
        skip_blanks();
        return sign->sign;
    }

    // Reads a value, which may stand in quotes.
    std::string read_value(std::size_t test_begin) {
        const std::size_t begin = at_;
        const bool is_quoted = at_ < text_.size() && (text_[at_] == '\'' || text_[at_] == '"');
        if (is_quoted) {
            const std::size_t end = text_.find(text_[at_], at_ + 1);
            if (end == std::string_view::npos) {
                fail(begin, "the quote is never closed");
            }
            at_ = end + 1;
            return std::string(text_.substr(begin + 1, end - begin - 1));
        }
        const std::string_view value = read_token(false);
        if (value.empty()) {
            fail(begin, "a value is missing after " + in_quotes(trim_view(text_.substr(test_begin, begin - test_begin))));
        }
        return std::string(value);
    }

    void read_count(PredicateStep& step) {
        const std::size_t open = at_;
        std::size_t depth = 0;
        for (; at_ < text_.size(); ++at_) {
            depth += text_[at_] == '(' ? 1U : 0U;
            if (text_[at_] == ')' && --depth == 0) {
                break;
            }
        }
        if (at_ == text_.size()) {
            fail(open, "the parenthesis is never closed");
        }
        // Blanks stand for what is before the selection, so that its columns are those of the condition.
        std::string before;
        for (const char c : text_.substr(0, open + 1)) {
            before += (static_cast<unsigned char>(c) & 0xC0U) == 0x80U ? std::string() : std::string(1, ' ');
        }
        step.test = PredicateTest::Count;
        step.selection = parse_selection(before + std::string(text_.substr(open + 1, at_ - open - 1)));
        ++at_;
        step.sign = read_sign();
        const std::size_t begin = at_;
        if (step.sign == Sign::None) {
            step.sign = Sign::Greater;
            return;
        }
        step.number = number_of(read_value(open - 5), begin);
        refuse_within(step.sign, "count", begin);
    }

    void refuse_within(Sign sign, const std::string& name, std::size_t begin) const {
        if (sign == Sign::Within) {
            fail(begin, "'~' looks into texts, and " + name + " is a number");
        }
    }

    double number_of(const std::string& value, std::size_t begin) const {
        const std::optional<double> number = to_number(value);
        if (!number || *number != *number) {
            fail(begin, in_quotes(value) + " is no number");
        }
        return *number;
    }

    // Reads the value of a field in the field's own spelling.
    void take_value(PredicateStep& step, const std::string& value, std::size_t begin) const {
        const JobField& field = *step.field;
        if (step.sign == Sign::None) {
            return;
        }
        if (field.is_number()) {
            refuse_within(step.sign, field.name, begin);
            step.number = field.form == FieldForm::Memory ? bytes_of(value, begin) : number_of(value, begin);
            return;
        }
        if (is_order(step.sign) && field.form != FieldForm::Severity) {
            fail(begin, std::string(field.name) + " is a text: it takes =, != and ~");
        }
        step.text = field.form == FieldForm::Formula ? value : to_lower_copy(value);
        if (step.sign != Sign::Within) {
            take_name(step, value, begin);
        }
    }

    double bytes_of(const std::string& value, std::size_t begin) const {
        const std::optional<MemoryAmount> memory = read_memory_amount(value);
        if (!memory || memory->unit == 0) {
            fail(begin, in_quotes(value) + " is no amount of memory; write a whole number and a unit, as in 8GB");
        }
        return static_cast<double>(memory->amount) * static_cast<double>(memory->unit);
    }

    void take_name(PredicateStep& step, const std::string& value, std::size_t begin) const {
        if (step.field->form == FieldForm::Severity) {
            step.number = severity_rank(step.text);
            if (step.number == 0) {
                fail(begin, in_quotes(value) + " is none of note, warning and error");
            }
        } else if (step.field->form == FieldForm::Basis) {
            step.text = basis_to_compare(value);
        } else if (step.field->form == FieldForm::Section) {
            step.text = section_name(value, begin);
        }
    }

    std::string section_name(const std::string& value, std::size_t begin) const {
        if (const auto kind = find_extra_input_kind(value)) {
            return extra_input_short_name(*kind);
        }
        std::vector<std::string> names;
        for (std::size_t i = 0; const auto kind = find_extra_input_kind(std::to_string(i)); ++i) {
            names.emplace_back(extra_input_short_name(*kind));
        }
        fail(begin,
             with_hint(in_quotes(value) + " is no kind of section", did_you_mean(near_names(to_lower_copy(value), names))));
    }

    void take_route_word(PredicateStep& step, std::string_view name, const std::string& value, std::size_t begin) const {
        const std::string word = std::string(name) + (step.sign == Sign::None ? "" : "=" + value);
        if (name.empty()) {
            fail_missing(begin, text_.substr(begin, 1));
        }
        check_route_word(name, word, begin);
        if (step.sign != Sign::None && step.sign != Sign::Equal && step.sign != Sign::Unequal) {
            fail(begin, in_quotes(name) + " is a word of routes: it takes = and != alone");
        }
        step.test = PredicateTest::Route;
        step.route = read_route(word, default_route_schema()).meaning;
    }

    // A word that the vocabulary does not know would fit no job for want of a letter.
    void check_route_word(std::string_view name, const std::string& word, std::size_t begin) const {
        const SimpleYAMLParser& schema = default_route_schema();
        for (const Finding& finding : check_route("# " + word)) {
            const bool is_unknown = finding.code == "GJF-W005";
            if (!schema.is_loaded() || !(finding.code.starts_with("GJF-W") || finding.code == "GJF-R001")) {
                continue;
            }
            std::string hint = finding.hint;
            if (is_unknown && (hint.empty() || hint.starts_with("did you mean"))) {
                const std::vector<std::string> near = near_names(to_lower_copy(name), field_names());
                hint = near.empty() ? hint : did_you_mean(near);
            }
            fail(begin,
                 with_hint(is_unknown ? in_quotes(name) + " is neither a field nor a word of routes" : finding.message,
                           hint));
        }
    }
};

// Notes at the first step of each right operand which step joins it, so that it can be passed over.
void note_joins(std::vector<PredicateStep>& steps) {
    std::vector<std::size_t> begins;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].test == PredicateTest::And || steps[i].test == PredicateTest::Or) {
            steps[begins.back()].joins = i + 1;
            begins.pop_back();
        } else if (steps[i].test != PredicateTest::Not) {
            begins.push_back(i);
        }
    }
}

}  // namespace

std::vector<PredicateStep> read_predicate(std::string_view text) {
    std::vector<PredicateStep> steps = PredicateReader(text).read();
    note_joins(steps);
    return steps;
}

std::string basis_to_compare(const std::string& basis) {
    std::string text = default_route_schema().normalize_basis(basis);
    for (const auto& [brackets, stars] : {std::pair<std::string_view, const char*>{"(d,p)", "**"}, {"(d)", "*"}}) {
        if (text.ends_with(brackets)) {
            text.replace(text.size() - brackets.size(), brackets.size(), stars);
        }
    }
    return text;
}

int severity_rank(std::string_view name) noexcept {
    constexpr std::string_view names[] = {"note", "warning", "error"};
    const auto* found = std::find(std::begin(names), std::end(names), name);
    return found == std::end(names) ? 0 : static_cast<int>(found - std::begin(names)) + 1;
}

}  // namespace quor::input::gaussian
