#include "text/number_reading.h"

#include <orvix/core/numbers.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <system_error>

namespace orvix::gsl::text {

namespace {

// True if a number in decimal digits may stand at the front. Hexadecimal ones are left to the C library, and so are
// blanks in front and named values.
bool is_decimal_front(std::string_view text) {
    if (!text.empty() && is_sign(text[0])) text.remove_prefix(1);
    if (text.empty() || !(is_digit(text[0]) || text[0] == '.')) return false;
    return text.size() < 2 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X');
}

Conversion convert_with_library(std::string_view text) {
    char room[64];
    std::unique_ptr<char, decltype(&std::free)> more(nullptr, &std::free);
    char* copy = room;
    if (text.size() >= sizeof room) {
        more.reset(new_text(text.size()));
        copy = more.get();
    }
    move_text(copy, text.data(), text.size());
    const char* end = nullptr;
    const double value = core::strtod_c(copy, &end);
    return {value, static_cast<std::size_t>(end - copy)};
}

// Three ways to mantissa * 10^power. All leave the rounding to the machine, which makes doubles of integers of 63 bits
// to nearest, ties to even. What follows such an integer counts no more than that it is there, and its last bit can
// tell.

constexpr int integer_width = 63;

double rounded(std::uint64_t integer, bool more, int exponent) {
    return static_cast<double>(static_cast<std::int64_t>(integer | (more ? 1 : 0))) * power_of_two(exponent);
}

double multiplied(std::uint64_t mantissa, int power) {
    const uint128 product = uint128{mantissa} * powers_of_five[static_cast<std::size_t>(power)];
    const int surplus = std::max(bit_width(product) - integer_width, 0);
    const auto front = static_cast<std::uint64_t>(product >> surplus);
    return rounded(front, uint128{front} << surplus != product, power + surplus);
}

double divided(std::uint64_t mantissa, int power) {
    const std::uint64_t divisor = powers_of_five[static_cast<std::size_t>(power)];
    const int shift = integer_width - 1 + bit_width(divisor) - bit_width(mantissa);
    const uint128 dividend = uint128{mantissa} << shift;
    const auto quotient = static_cast<std::uint64_t>(dividend / divisor);
    return rounded(quotient, quotient * divisor != static_cast<std::uint64_t>(dividend), -power - shift);
}

// 2^(63 + bits of the power of five) divided by it and cut off, which makes 64 bits for all but the first.
constexpr auto reciprocals_of_five = [] {
    std::array<std::uint64_t, powers_of_five.size()> reciprocals{};
    for (std::size_t i = 1; i < reciprocals.size(); ++i) {
        const uint128 one = uint128{1} << (63 + bit_width(powers_of_five[i]));
        reciprocals[i] = static_cast<std::uint64_t>(one / powers_of_five[i]);
    }
    return reciprocals;
}();

// A multiplication in place of the division. Both factors have 64 bits, and the front of their product has 63 or 64. It
// is less than 2 below the quotient, which decides the rounding unless half a unit of the double lies between.
std::optional<double> divided_by_reciprocal(std::uint64_t mantissa, int power) {
    constexpr int precision = std::numeric_limits<double>::digits;
    const auto index = static_cast<std::size_t>(power);
    const int width = bit_width(mantissa);
    const uint128 product = uint128{mantissa << (64 - width)} * reciprocals_of_five[index];
    const auto front = static_cast<std::uint64_t>(product >> 64);
    const int surplus = bit_width(front) - precision;
    assert(surplus > 0);
    const std::uint64_t unit = std::uint64_t{1} << surplus;
    const std::uint64_t rest = front % unit;
    if (rest == unit / 2 - 1 || rest == unit / 2) return std::nullopt;
    return rounded(front >> 1, true, width - bit_width(powers_of_five[index]) - power - 62);
}

}  // namespace

Conversion convert_front(std::string_view text) {
    if (is_decimal_front(text)) {
        const std::size_t plus = text[0] == '+' ? 1 : 0;  // which from_chars does not take
        double value = 0;
        const auto [end, error] = std::from_chars(text.data() + plus, text.data() + text.size(), value);
        if (error == std::errc()) return {value, static_cast<std::size_t>(end - text.data())};
        if (error != std::errc::result_out_of_range) return {0, 0};
        return convert_with_library(text);
    }
    return convert_with_library(text);
}

double remote_power_of_ten(std::ptrdiff_t exponent) {
    if (exponent > std::numeric_limits<double>::max_exponent10) return std::numeric_limits<double>::infinity();
    double power = 0;
    char text[24] = "1e";
    const char* const end = std::to_chars(text + 2, std::end(text), exponent).ptr;
    std::from_chars(text, end, power);  // too small a power leaves zero
    return power;
}

double scaled_by_ten(std::uint64_t mantissa, int power) {
    if (mantissa == 0) return 0;
    if (power >= 0) return multiplied(mantissa, power);
    const std::optional<double> quotient = divided_by_reciprocal(mantissa, -power);
    return quotient ? *quotient : divided(mantissa, -power);
}

}  // namespace orvix::gsl::text
