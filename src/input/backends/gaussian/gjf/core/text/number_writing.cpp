// Writes by std::to_chars where it knows floating-point numbers.
#include <gjf/core/text/number_writing.hpp>

#include <charconv>
#include <iterator>

#if !defined(__cpp_lib_to_chars)
#include <gjf/core/text/portable_numbers.hpp>
#endif

namespace quor::input::gaussian {

#if defined(__cpp_lib_to_chars)
namespace {

template <typename... Form>
void append(std::string& text, double number, Form... form) {
    char digits[400];  // the widest double has 309 digits before the point
    text.append(digits, std::to_chars(digits, std::end(digits), number, form...).ptr);
}

}  // namespace

void append_fixed(std::string& text, double number, int decimals) {
    append(text, number, std::chars_format::fixed, decimals);
}

std::string shortest_text(double number) {
    std::string text;
    append(text, number, std::chars_format::fixed);
    return text;
}

std::string general_text(double number) {
    std::string text;
    append(text, number, std::chars_format::general, 6);
    return text;
}
#else
void append_fixed(std::string& text, double number, int decimals) { text += portable::printed("%.*f", decimals, number); }

std::string shortest_text(double number) { return portable::shortest(number); }

std::string general_text(double number) { return portable::printed("%.*g", 6, number); }
#endif

std::string fixed_text(double number, int decimals) {
    std::string text;
    append_fixed(text, number, decimals);
    return text;
}

}  // namespace quor::input::gaussian
