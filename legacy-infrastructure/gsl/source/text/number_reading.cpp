#include "text/number_reading.h"

#include <orvix/core/numbers.h>

#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <memory>
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

// The machine rounds integers of 63 bits to the 53 of a double, to nearest, ties to even. What follows them counts no
// more than that it is there, and that their last bit can tell.
double scaled_by_ten(std::uint64_t mantissa, int power) {
    constexpr int width = 63;
    if (mantissa == 0) return 0;
    if (power >= 0) {
        const uint128 product = uint128{mantissa} * powers_of_five[static_cast<std::size_t>(power)];
        const int surplus = std::max(bit_width(product) - width, 0);
        const auto front = static_cast<std::int64_t>(product >> surplus);
        const bool more = uint128{static_cast<std::uint64_t>(front)} << surplus != product;
        return static_cast<double>(front | (more ? 1 : 0)) * power_of_two(power + surplus);
    }
    const std::uint64_t divisor = powers_of_five[static_cast<std::size_t>(-power)];
    const int shift = width - 1 + bit_width(divisor) - bit_width(mantissa);
    const uint128 dividend = uint128{mantissa} << shift;
    const auto quotient = static_cast<std::uint64_t>(dividend / divisor);
    const bool more = quotient * divisor != static_cast<std::uint64_t>(dividend);
    return static_cast<double>(static_cast<std::int64_t>(quotient | (more ? 1 : 0))) * power_of_two(power - shift);
}

}  // namespace orvix::gsl::text
