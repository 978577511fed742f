// Number fields as strtod and strtol read them in the C locale, over std::from_chars so that no locale is asked.
#include <gjf/core/text/number.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <bit>
#include <cfenv>
#include <charconv>
#include <cstring>
#include <limits>
#include <string>

namespace quor::input::gaussian {
namespace {

constexpr bool is_digit(char c) noexcept { return c >= '0' && c <= '9'; }

constexpr bool is_hex_digit(char c) noexcept {
    return is_digit(c) || (to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'f');
}

constexpr bool is_word_character(char c) noexcept {
    return is_digit(c) || (to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'z') || c == '_';
}

std::string_view without_leading_white_space(std::string_view text) noexcept {
    while (!text.empty() && is_white_space(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// Takes a sign off the text; returns whether it was a minus.
bool take_sign(std::string_view& text) noexcept {
    const bool minus = !text.empty() && text.front() == '-';
    if (minus || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    return minus;
}

// "inf", "infinity", "nan" and "nan(word)" in any case.
std::optional<double> to_special_number(std::string_view text) noexcept {
    if (equals_folded(text, "inf") || equals_folded(text, "infinity")) {
        return std::numeric_limits<double>::infinity();
    }
    if (!equals_folded(text.substr(0, 3), "nan")) {
        return std::nullopt;
    }
    text.remove_prefix(3);
    const bool has_payload = text.size() >= 2 && text.front() == '(' && text.back() == ')' &&
                             std::all_of(text.begin() + 1, text.end() - 1, is_word_character);
    if (text.empty() || has_payload) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return std::nullopt;
}

// Tells whether a number that from_chars found out of range is too large rather than too small: by the power of the base
// that its first digit other than zero stands for.
bool is_overflow(std::string_view text, bool hexadecimal) noexcept {
    const auto exponent_mark =
        hexadecimal ? [](char c) { return c == 'p' || c == 'P'; } : [](char c) { return c == 'e' || c == 'E'; };
    const auto mark = std::find_if(text.begin(), text.end(), exponent_mark);
    const std::string_view mantissa = text.substr(0, static_cast<std::size_t>(mark - text.begin()));
    bool minus_exponent = false;
    std::int64_t exponent = 0;
    if (mark != text.end()) {
        std::string_view digits = text.substr(mantissa.size() + 1);
        minus_exponent = take_sign(digits);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) {
            return !minus_exponent;
        }
    }
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_not_of("0."), mantissa.size());
    const auto position = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    return position * (hexadecimal ? 4 : 1) + (minus_exponent ? -exponent : exponent) > 0;
}

// Rounds to nearest while it lives: numbers are the same whatever mode the caller's own computing runs in.
class RoundToNearest {
   public:
    RoundToNearest() noexcept : mode_(std::fegetround()) {
        if (mode_ != FE_TONEAREST) {
            std::fesetround(FE_TONEAREST);
        }
    }
    RoundToNearest(const RoundToNearest&) = delete;
    RoundToNearest& operator=(const RoundToNearest&) = delete;
    ~RoundToNearest() {
        if (mode_ != FE_TONEAREST) {
            std::fesetround(mode_);
        }
    }

   private:
    int mode_;
};

// Powers of ten that binary numbers hold exactly.
constexpr double powers_of_ten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

// Reads eight characters as eight digits at a time, where they are digits all: each step joins neighbours, which stand in
// the bytes of one word, into numbers twice as wide. Returns whether they were.
bool take_eight_digits(const char* text, std::uint64_t& digits) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    constexpr std::uint64_t zeros = 0x3030303030303030;
    // A byte is a digit when its high half is 3, and still is when 6 is added.
    const std::uint64_t high_halves = 0xF0F0F0F0F0F0F0F0;
    if ((word & high_halves) != zeros || ((word + 0x0606060606060606) & high_halves) != zeros) {
        return false;
    }
    word -= zeros;
    word = (word * 10 + (word >> 8)) & 0x00FF00FF00FF00FF;
    word = (word * 100 + (word >> 16)) & 0x0000FFFF0000FFFF;
    word = (word * 10'000 + (word >> 32)) & 0x00000000FFFFFFFF;
    digits = digits * 100'000'000 + word;
    return true;
}

// Reads the digits at the start of a text, with at most one point among them. Where the digits and the power are exact in
// binary, their quotient is the nearest number, which from_chars would give as well.
PlainDecimal leading_digits(std::string_view text) noexcept {
    constexpr std::ptrdiff_t digit_limit = 19;
    constexpr std::uint64_t exact_limit = std::uint64_t{1} << std::numeric_limits<double>::digits;
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* at = begin;
    std::uint64_t digits = 0;  // wraps only where there are too many of them
    const auto take_digits = [&] {
        const char* const first = at;
        for (; at != end && is_digit(*at); ++at) {
            digits = 10 * digits + static_cast<std::uint64_t>(*at - '0');
        }
        return at - first;
    };
    std::ptrdiff_t count = take_digits();
    std::ptrdiff_t decimals = 0;
    const bool whole = at == end || *at != '.';
    if (!whole) {
        ++at;
        const char* const point = at;
        if (std::endian::native == std::endian::little && end - at >= 8 && take_eight_digits(at, digits)) {
            at += 8;
        }
        take_digits();
        decimals = at - point;
        count += decimals;
    }
    if (count == 0 || count > digit_limit || digits > exact_limit) {
        return {};
    }
    return {static_cast<std::size_t>(at - begin), whole, static_cast<double>(digits) / powers_of_ten[decimals]};
}

std::optional<double> to_unsigned_number(std::string_view text) noexcept {
    const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    if (hexadecimal) {
        text.remove_prefix(2);
        if (!is_hex_digit(text[0]) && !(text[0] == '.' && text.size() > 1 && is_hex_digit(text[1]))) {
            return std::nullopt;
        }
    } else if (!is_digit(text[0]) && text[0] != '.') {
        return to_special_number(text);
    }
    // In another mode the division would round another way.
    if (!hexadecimal && rounds_to_nearest()) {
        if (const PlainDecimal decimal = leading_digits(text); decimal.length == text.size()) {
            return decimal.value;
        }
    }
    double value = 0;
    const RoundToNearest mode;
    const char* end = text.data() + text.size();
    const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto result = std::from_chars(text.data(), end, value, format);
    if (result.ec == std::errc::invalid_argument || result.ptr != end) {
        return std::nullopt;
    }
    if (result.ec == std::errc::result_out_of_range) {
        return is_overflow(text, hexadecimal) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}

template <typename Integer>
std::optional<Integer> leading_integer(std::string_view text, bool whole) noexcept {
    text = without_leading_white_space(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') {
            return std::nullopt;
        }
    }
    Integer value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc{} || (whole && result.ptr != end)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

// In any other mode one of these two sums comes out apart from 1. Asking the system takes longer than reading a number.
bool rounds_to_nearest() noexcept {
    static const volatile float tiny = std::numeric_limits<float>::min();
    const float step = tiny;
    return 1.0F + step == 1.0F - step;
}

PlainDecimal leading_plain_decimal(std::string_view text) noexcept {
    const std::size_t size = text.size();
    const bool minus = take_sign(text);
    PlainDecimal decimal = leading_digits(text);
    if (decimal.length > 0) {
        decimal.length += size - text.size();
        decimal.value = minus ? -decimal.value : decimal.value;
    }
    return decimal;
}

std::optional<double> to_number(std::string_view text) noexcept {
    text = without_leading_white_space(text);
    const bool minus = take_sign(text);
    if (text.empty()) {
        return std::nullopt;
    }
    const std::optional<double> value = to_unsigned_number(text);
    return value && minus ? std::optional<double>(-*value) : value;
}

std::optional<double> to_fortran_number(std::string_view text) {
    const std::optional<double> number = to_number(text);
    const std::size_t mark = text.find_first_of("dD");
    if (number || mark == std::string_view::npos) {
        return number;
    }
    std::string with_e(text);
    with_e[mark] = 'e';
    return to_number(with_e);
}

bool is_integer_text(std::string_view text) noexcept {
    text = without_leading_white_space(text);
    take_sign(text);
    return !text.empty() && std::all_of(text.begin(), text.end(), is_digit);
}

std::optional<std::int64_t> to_int64(std::string_view text) noexcept { return leading_integer<std::int64_t>(text, true); }

std::optional<std::int32_t> to_int32(std::string_view text) noexcept { return leading_integer<std::int32_t>(text, true); }

std::optional<std::int32_t> leading_int32(std::string_view text) noexcept {
    return leading_integer<std::int32_t>(text, false);
}

}  // namespace quor::input::gaussian
