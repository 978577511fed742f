// Reads expressions of operands, "and", "or", "not" and parentheses by the shunting-yard method: two stacks and no
// recursion, so that any nesting can be read. Selections of atoms and conditions on jobs are such. Private to the library.
#pragma once

#include <gjf/core/selection/selection.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

/// What combines operands.
enum class Joining { Not, And, Or };

/// How an expression is spoken of in messages.
struct ExpressionWords {
    const char* whole;    ///< as in "the selection"
    const char* missing;  ///< as in "atoms are missing"
};

/// Reads an expression into steps in postfix order. What an operand is, the class derived from it knows.
template <typename Step>
class ExpressionReader {
   public:
    ExpressionReader(std::string_view text, ExpressionWords words) : text_(text), words_(words) {}
    ExpressionReader(const ExpressionReader&) = delete;
    ExpressionReader& operator=(const ExpressionReader&) = delete;

    std::vector<Step> read() {
        bool wants_operand = true;
        for (skip_blanks(); wants_operand || at_ < text_.size(); skip_blanks()) {
            wants_operand = wants_operand ? !read_operand() : read_joining();
        }
        unwind(loosest);
        if (!waiting_.empty()) {
            fail(waiting_.back().begin, "the parenthesis is never closed");
        }
        return std::move(steps_);
    }

   protected:
    ~ExpressionReader() = default;

    /// Reads an operand that begins at `begin`, no parenthesis and no "not"; returns whether it is whole, and not one that
    /// stands before another.
    virtual bool read_test(std::size_t begin) = 0;
    virtual Step joining_step(Joining joining) const = 0;

    void add(Step step) { steps_.push_back(std::move(step)); }
    /// Adds a step once the operand behind it is read.
    void add_behind_operand(Step step, std::size_t begin) { waiting_.push_back({std::move(step), begin, tightest}); }

    std::string_view read_word() {
        const std::string_view word = peek_word();
        at_ += word.size();
        return word;
    }

    void skip_blanks() { at_ = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size()); }

    [[noreturn]] void fail(std::size_t position, const std::string& message) const {
        // One column a character: bytes that go on with one do not count.
        const std::string_view before = text_.substr(0, position);
        const auto column =
            1 + std::count_if(before.begin(), before.end(), [](unsigned char c) { return (c & 0xC0U) != 0x80U; });
        throw SelectionError(static_cast<std::size_t>(column), message);
    }

    [[noreturn]] void fail_missing(std::size_t position, std::string_view before) const {
        fail(position, words_.missing + (" before '" + std::string(before) + "'"));
    }

    std::string_view text_;
    std::size_t at_ = 0;

   private:
    // "or" joins least tightly, what stands before its operand most tightly; a parenthesis holds all back.
    static constexpr int parenthesis = 0;
    static constexpr int loosest = 1;
    static constexpr int tightest = 3;

    struct Waiting {
        Step step;
        std::size_t begin = 0;
        int tightness = parenthesis;
    };

    // Reads what may stand where an operand is wanted; returns whether that is an operand whole.
    bool read_operand() {
        const std::size_t begin = at_;
        if (at_ == text_.size()) {
            fail(begin,
                 text_.empty() ? words_.whole + std::string(" is empty") : words_.missing + std::string(" at the end"));
        }
        if (text_[at_] == '(') {
            ++at_;
            waiting_.push_back({{}, begin, parenthesis});
            return false;
        }
        if (text_[at_] == ')') {
            fail_missing(begin, ")");
        }
        const std::string word = to_lower_copy(peek_word());
        if (word == "not") {
            at_ += word.size();
            add_behind_operand(joining_step(Joining::Not), begin);
            return false;
        }
        if (word == "and" || word == "or") {
            fail_missing(begin, word);
        }
        return read_test(begin);
    }

    // Reads what may stand behind an operand; returns whether another operand must follow.
    bool read_joining() {
        const std::size_t begin = at_;
        if (text_[at_] == ')') {
            ++at_;
            unwind(loosest);
            if (waiting_.empty()) {
                fail(begin, "there is no '(' for this ')'");
            }
            waiting_.pop_back();
            return false;
        }
        const std::string_view written = read_word();
        const bool both = equals_folded(written, "and");
        if (!both && !equals_folded(written, "or")) {
            fail(begin, "'and' or 'or' is missing before '" +
                            std::string(written.empty() ? text_.substr(begin, 1) : written) + "'");
        }
        const int tightness = both ? loosest + 1 : loosest;
        unwind(tightness);
        waiting_.push_back({joining_step(both ? Joining::And : Joining::Or), begin, tightness});
        return true;
    }

    // Takes the steps that wait, back to a parenthesis or to one that joins less tightly.
    void unwind(int least) {
        while (!waiting_.empty() && waiting_.back().tightness >= least) {
            steps_.push_back(std::move(waiting_.back().step));
            waiting_.pop_back();
        }
    }

    std::string_view peek_word() const {
        std::size_t end = at_;
        while (end < text_.size() && !is_trim_character(text_[end]) && text_[end] != '(' && text_[end] != ')') {
            ++end;
        }
        return text_.substr(at_, end - at_);
    }

    ExpressionWords words_;
    std::vector<Step> steps_;
    std::vector<Waiting> waiting_;
};

}  // namespace quor::input::gaussian
