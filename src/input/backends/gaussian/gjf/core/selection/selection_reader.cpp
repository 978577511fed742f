// Reads the tests of selections.
#include <gjf/core/selection/selection.hpp>

#include <gjf/core/chemistry/species.hpp>
#include <gjf/core/selection/expression_reader.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>

namespace quor::input::gaussian {
namespace {

struct NamedTest {
    std::string_view word;
    SelectionTest test;
};

constexpr NamedTest plain_tests[] = {{"all", SelectionTest::All}, {"frozen", SelectionTest::Frozen}};

constexpr NamedTest name_tests[] = {
    {"element", SelectionTest::Element}, {"layer", SelectionTest::Layer},     {"fragment", SelectionTest::Fragment},
    {"type", SelectionTest::Type},       {"resname", SelectionTest::Residue},
};

const NamedTest* find_test(const NamedTest* begin, const NamedTest* end, std::string_view word) {
    const NamedTest* found = std::find_if(begin, end, [&](const NamedTest& test) { return test.word == word; });
    return found == end ? nullptr : found;
}

class SelectionReader : public ExpressionReader<SelectionStep> {
   public:
    explicit SelectionReader(std::string_view text) : ExpressionReader(text, {"the selection", "atoms are missing"}) {}

   private:
    SelectionStep joining_step(Joining joining) const override {
        constexpr SelectionTest tests[] = {SelectionTest::Not, SelectionTest::And, SelectionTest::Or};
        return {tests[static_cast<std::size_t>(joining)], {}, {}, 0};
    }

    bool read_test(std::size_t begin) override {
        if (is_digit(text_[at_])) {
            add({SelectionTest::Numbers, {}, read_numbers(), 0});
            return true;
        }
        const std::string_view written = read_word();
        const std::string word = to_lower_copy(written);
        if (word == "within") {
            add_behind_operand({SelectionTest::Within, {}, {}, read_distance()}, begin);
            return false;
        }
        if (word == "bonded") {
            read_fixed_word("to", "bonded");
            add_behind_operand({SelectionTest::BondedTo, {}, {}, 0}, begin);
            return false;
        }
        add(test_of(written, word, begin));
        return true;
    }

    SelectionStep test_of(std::string_view written, const std::string& word, std::size_t begin) const {
        if (const NamedTest* test = find_test(std::begin(plain_tests), std::end(plain_tests), word)) {
            return {test->test, {}, {}, 0};
        }
        const std::size_t colon = word.find(':');
        if (colon != std::string::npos) {
            const NamedTest* test = find_test(std::begin(name_tests), std::end(name_tests), word.substr(0, colon));
            if (test == nullptr) {
                fail(begin, "'" + std::string(written.substr(0, colon + 1)) +
                                "' is not one of element:, layer:, fragment:, type: and resname:");
            }
            if (colon + 1 == word.size()) {
                fail(begin + colon + 1, "a name is missing after '" + std::string(written) + "'");
            }
            return {test->test, std::string(written.substr(colon + 1)), {}, 0};
        }
        if (species_of_symbol(word).kind == SpeciesKind::Unknown) {
            if (word.find(',') != std::string::npos) {
                fail(begin, "'" + std::string(written) + "': commas join atom numbers alone; write 'or' between tests");
            }
            fail(begin, "'" + std::string(written) + "' is neither an element nor a word of selections");
        }
        return {SelectionTest::Element, word, {}, 0};
    }

    std::vector<NumberRange> read_numbers() {
        std::vector<NumberRange> numbers;
        do {
            const std::size_t begin = at_;
            NumberRange range{read_number(), 0};
            range.second = take('-') ? read_number() : range.first;
            if (range.second < range.first) {
                fail(begin, "the range ends before it begins");
            }
            numbers.push_back(range);
        } while (take(','));
        if (at_ < text_.size() && !is_trim_character(text_[at_]) && text_[at_] != '(' && text_[at_] != ')') {
            fail(at_, "'" + std::string(text_.substr(at_, 1)) + "' does not belong to a list of atom numbers");
        }
        return numbers;
    }

    std::size_t read_number() {
        skip_blanks();
        std::size_t number = 0;
        const char* begin = text_.data() + at_;
        const auto [end, error] = std::from_chars(begin, text_.data() + text_.size(), number);
        if (error != std::errc() || number == 0) {
            fail(at_, number == 0 && error == std::errc() ? "atoms are counted from 1" : "an atom number is missing");
        }
        at_ += static_cast<std::size_t>(end - begin);
        return number;
    }

    // Takes a character, blanks before it aside, if it is the next one.
    bool take(char wanted) {
        const std::size_t next = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size());
        if (next == text_.size() || text_[next] != wanted) {
            return false;
        }
        at_ = next + 1;
        return true;
    }

    double read_distance() {
        skip_blanks();
        const std::size_t begin = at_;
        const std::string_view word = read_word();
        const std::optional<double> distance = to_number(word);
        if (!distance || !std::isfinite(*distance) || *distance <= 0) {
            fail(begin, "a distance above 0 is missing after 'within'");
        }
        read_fixed_word("of", "within " + std::string(word));
        return *distance;
    }

    void read_fixed_word(std::string_view wanted, const std::string& before) {
        skip_blanks();
        const std::size_t begin = at_;
        if (to_lower_copy(read_word()) != wanted) {
            fail(begin, "'" + std::string(wanted) + "' is missing after '" + before + "'");
        }
    }
};

}  // namespace

SelectionError::SelectionError(const std::string& message) : std::invalid_argument(message) {}

SelectionError::SelectionError(std::size_t column, const std::string& message)
    : std::invalid_argument("column " + std::to_string(column) + ": " + message) {}

SelectionError::~SelectionError() = default;

Selection parse_selection(std::string_view text) { return {SelectionReader(text).read()}; }

}  // namespace quor::input::gaussian
