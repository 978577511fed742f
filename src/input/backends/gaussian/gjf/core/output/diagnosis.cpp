// Finds the cause of a failure among the last lines of the step that failed, and those few lines that stand far before.
#include <gjf/core/output/diagnosis.hpp>

#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/output/failure_search.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {
namespace {

class DiagnosingVisitor final : public SummaryVisitor {
   public:
    explicit DiagnosingVisitor(const PointListener& listener) : listener_(listener) {
        for (const Failure& failure : failures()) {
            for (const std::string_view fragment : failure.where == "step" ? failure.any : std::vector<std::string_view>()) {
                far_.push_back({&failure, fragment, 0, {}});
                begins_far_[static_cast<unsigned char>(fragment.front())] = true;
            }
        }
    }

    void on_line(std::size_t line, std::string_view text) override {
        SummaryVisitor::on_line(line, text);
        tail_[line % tail_.size()].assign(text.substr(0, longest));
        const std::size_t begin = text.find_first_not_of(' ');
        if (begin != std::string_view::npos && begins_far_[static_cast<unsigned char>(text[begin])]) {
            note_far(line, text.substr(begin));
        }
    }

    void on_step(const OutputStep& step) override {
        SummaryVisitor::on_step(step);
        first_line_ = step.line;
        for (Far& each : far_) {
            each.line = 0;
        }
    }

    void on_step_end(const StepEnd& end) override {
        SummaryVisitor::on_step_end(end);
        end_ = end;
    }

    Diagnosis result() const {
        Diagnosis diagnosis;
        diagnosis.summary = summary();
        if (end_.termination == StepTermination::Normal) {
            return diagnosis;
        }
        diagnosis.link = end_.link;
        if (summary().checkpoint && summary().checkpoint->status == out_of_steps) {
            set_cause(diagnosis, failure_of("opt_steps"));
            return diagnosis;
        }
        const std::vector<TailLine> tail = tail_lines();
        for (const Failure& failure : failures()) {
            if (fits_end(failure, end_) && (finds_far(failure, diagnosis) || finds_near(failure, tail, diagnosis))) {
                set_cause(diagnosis, failure);
                break;
            }
        }
        diagnosis.told_mem = told_mem(tail);
        return diagnosis;
    }

   private:
    struct Far {
        const Failure* failure;
        std::string_view fragment;
        std::size_t line;  // 0 where it was not met
        std::string text;
    };
    static constexpr std::size_t longest = 200;
    static constexpr int out_of_steps = 3;  // as formatted checkpoints number it

    void note_far(std::size_t line, std::string_view text) {
        for (Far& each : far_) {
            if (text.starts_with(each.fragment)) {
                each.line = line;
                each.text = text.substr(0, longest);
            }
        }
    }

    static const Failure& failure_of(std::string_view id) {
        return *std::find_if(failures().begin(), failures().end(), [&](const Failure& each) { return each.id == id; });
    }

    // Only the lines of the last step.
    std::vector<TailLine> tail_lines() const {
        std::vector<TailLine> lines;
        const std::size_t last = summary().lines;
        const std::size_t first = std::max(first_line_, last >= tail_.size() ? last - tail_.size() + 1 : 1);
        for (std::size_t line = first; line <= last; ++line) {
            lines.push_back({line, tail_[line % tail_.size()]});
        }
        return lines;
    }

    bool finds_far(const Failure& failure, Diagnosis& diagnosis) const {
        for (const Far& each : far_) {
            if (each.failure == &failure && each.line > 0) {
                diagnosis.cause_line = each.line;
                diagnosis.cause_text = each.text;
                return true;
            }
        }
        return false;
    }

    static bool finds_near(const Failure& failure, const std::vector<TailLine>& tail, Diagnosis& diagnosis) {
        if (failure.where == "none") {
            return true;
        }
        if (failure.where == "step") {
            return false;
        }
        const TailLine* const found = find_failure(failure, tail);
        if (found != nullptr) {
            diagnosis.cause_line = found->number;
            diagnosis.cause_text = trim_view(found->text);
        }
        return found != nullptr;
    }

    void on_point(const OutputPoint& point) override {
        if (listener_) {
            listener_(point);
        }
    }

    const PointListener& listener_;
    std::array<std::string, 48> tail_;
    std::size_t first_line_ = 1;
    std::vector<Far> far_;
    std::array<bool, 256> begins_far_{};
    StepEnd end_;
};

}  // namespace

bool fits_end(const Failure& failure, const StepEnd& end) {
    const bool has_end = end.termination == StepTermination::Error;
    if (failure.ending == "error" ? !has_end : failure.ending == "none" && has_end) {
        return false;
    }
    return failure.links.empty() || end.link == 0 || has_any_field(failure.links, std::to_string(end.link));
}

const TailLine* find_failure(const Failure& failure, const std::vector<TailLine>& lines) {
    const auto holds = [](const TailLine& line, std::string_view text) {
        return line.text.find(text) != std::string_view::npos;
    };
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const TailLine& line) {
        return std::any_of(failure.any.begin(), failure.any.end(), [&](std::string_view one) { return holds(line, one); });
    });
    const bool has_all = failure.all.empty() || std::any_of(lines.begin(), lines.end(),
                                                            [&](const TailLine& line) { return holds(line, failure.all); });
    return found == lines.end() || !has_all ? nullptr : &*found;
}

bool has_any_field(std::string_view list, std::string_view field) {
    while (!list.empty()) {
        const std::string_view one = list.substr(0, list.find(' '));
        if (one == field) {
            return true;
        }
        list.remove_prefix(std::min(list.size(), one.size() + 1));
    }
    return false;
}

void set_cause(Diagnosis& diagnosis, const Failure& failure) {
    diagnosis.cause = failure.id;
    diagnosis.says = failure.says;
    diagnosis.remedy = failure.remedy;
}

// "Use %mem=11MW to provide the minimum amount of memory ..."
std::string told_mem(const std::vector<TailLine>& tail) {
    constexpr std::string_view begin = "Use %mem=";
    for (const TailLine& line : tail) {
        const std::size_t found = line.text.find(begin);
        if (found != std::string_view::npos) {
            const std::string_view rest = line.text.substr(found + begin.size());
            return std::string(rest.substr(0, rest.find(' ')));
        }
    }
    return {};
}

Diagnosis diagnose_output(OutputSource& source, const PointListener& listener) {
    DiagnosingVisitor visitor(listener);
    read_output(source, visitor);
    if (visitor.summary().steps.empty()) {
        throw NoOutput("no output of Gaussian");
    }
    Diagnosis diagnosis = visitor.result();
    find_all(diagnosis);
    return diagnosis;
}

std::string missing_for_diagnosis() { return missing_failures(); }

}  // namespace quor::input::gaussian
