#include "base/decimal.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

namespace {
std::size_t digits_at(std::string_view text, std::size_t from) {
    return std::min(text.find_first_not_of("0123456789", from), text.size()) - std::min(from, text.size());
}

bool stands_at(std::string_view text, std::size_t at, std::string_view one_of) {
    return at < text.size() && one_of.find(text[at]) != std::string_view::npos;
}

// Length of the exponent at this place: with a sign or without, but never without a digit.
std::size_t exponent_length(std::string_view text, std::size_t from) {
    if (!stands_at(text, from, "eE")) return 0;
    const std::size_t sign = stands_at(text, from + 1, "+-") ? 1 : 0;
    const std::size_t digits = digits_at(text, from + 1 + sign);
    return digits == 0 ? 0 : 1 + sign + digits;
}

// The longest start of the text that is a decimal number without a sign.
std::string_view unsigned_decimal(std::string_view text) {
    const std::size_t whole = digits_at(text, 0);
    std::size_t end = whole, fraction = 0;
    if (stands_at(text, end, ".")) {
        fraction = digits_at(text, end + 1);
        end += 1 + fraction;
    }
    if (whole + fraction == 0) return {};
    return text.substr(0, end + exponent_length(text, end));
}

// Whether a number is 1 or more, told by its digits alone.
bool is_one_or_more(std::string_view number) {
    const std::size_t exponent_at = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, exponent_at);
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long>(mantissa.find_first_of("123456789"));
    const long exponent = exponent_at == number.size() ? 0 : leading_integer(number.substr(exponent_at + 1));
    return (first < point ? point - first : point - first + 1) + exponent > 0;
}

double magnitude(std::string_view number) {
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc::result_out_of_range) return value;
    return is_one_or_more(number) ? std::numeric_limits<double>::infinity() : 0;
}
} // namespace

double leading_decimal(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const double value = magnitude(unsigned_decimal(text));
    return negative ? -value : value;
}

std::string decimal_text(double value, int significant_digits) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, significant_digits)
            .ptr;
    return {text.data(), end};
}
