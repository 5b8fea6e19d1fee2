#include "text/real_digits.h"

#include "text/digits.h"
#include "text/wide_arithmetic.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <optional>

namespace orvix::gsl::text {

namespace {

constexpr int most_units = powers_of_ten.size() - 1;  // the power of ten that 64 bits hold

// What a double can have; only zeros follow.
constexpr std::ptrdiff_t most_decimals = 1074;
constexpr std::ptrdiff_t most_leading_digits = 767;
constexpr std::ptrdiff_t most_whole_digits_of_all = 309;

char* write_zeros(std::ptrdiff_t count, char* to) {
    if (count <= 0) return to;
    std::memset(to, '0', static_cast<std::size_t>(count));
    return to + count;
}

// ---------------------------------------------------------------------------------------------------------------------
// Fixed notation

struct SplitNumber {
    std::uint64_t whole;
    std::uint64_t fraction;  // in units of the last decimal
};

// The low bits of mantissa * 2^-places are the fraction; in units of the last decimal, that is times 10^decimals. The
// two that such a unit has in each of its tens go out against 2^places.
std::uint64_t fraction_units(std::uint64_t low_bits, int places, int decimals) {
    const uint128 product = uint128{low_bits} * powers_of_five[static_cast<std::size_t>(decimals)];
    if (places <= decimals) return static_cast<std::uint64_t>(product << (decimals - places));
    return shifted_right(product, places - decimals);
}

// Nothing where 64 bits for each part are not enough.
std::optional<SplitNumber> split(double magnitude, std::ptrdiff_t decimals) {
    constexpr int most_places = 127;
    if (decimals > most_units) return std::nullopt;
    const auto [mantissa, exponent] = binary_parts(magnitude);
    const int places = -exponent;
    if (mantissa == 0) return SplitNumber{0, 0};
    if (places > most_places) return std::nullopt;
    if (places <= 0) {
        if (bit_width(mantissa) + exponent > 64) return std::nullopt;
        return SplitNumber{mantissa << exponent, 0};
    }
    if (decimals == 0) return SplitNumber{shifted_right(mantissa, places), 0};

    SplitNumber number{0, mantissa};
    if (places < 64) {
        number.whole = mantissa >> places;
        number.fraction = mantissa & ((std::uint64_t{1} << places) - 1);
    }
    number.fraction = fraction_units(number.fraction, places, static_cast<int>(decimals));
    if (number.fraction == powers_of_ten[static_cast<std::size_t>(decimals)]) {
        ++number.whole;
        number.fraction = 0;
    }
    return number;
}

char* write_long_fixed(double magnitude, std::ptrdiff_t decimals, std::ptrdiff_t most_whole_digits, char* to) {
    std::array<char, most_whole_digits_of_all + 1 + most_decimals> text;
    const auto kept = static_cast<int>(std::min(decimals, most_decimals));
    const auto format = std::chars_format::fixed;
    const char* const end = std::to_chars(text.begin(), text.end(), magnitude, format, kept).ptr;
    const char* const point = std::find(text.cbegin(), end, '.');  // which is not there without decimals
    if (point - text.begin() > most_whole_digits) return nullptr;
    to = std::copy(text.cbegin(), point, to);
    *to++ = '.';
    if (point != end) to = std::copy(point + 1, end, to);
    return write_zeros(decimals - kept, to);
}

// ---------------------------------------------------------------------------------------------------------------------
// Leading digits

struct ScaledNumber {
    std::uint64_t whole;
    bool has_fraction;
};

// mantissa * 2^exponent * 10^power, which must be below 10^19, for powers of ten from -27 to 27.
ScaledNumber scaled(BinaryParts parts, int power) {
    if (power < 0) {
        const std::uint64_t divisor = powers_of_five[static_cast<std::size_t>(-power)];
        const int shift = parts.exponent + power;
        const uint128 dividend = uint128{parts.mantissa} << std::max(shift, 0);
        const uint128 quotient = dividend / divisor;
        const int places = std::max(-shift, 0);
        const auto whole = static_cast<std::uint64_t>(quotient >> places);
        return {whole, (uint128{whole} << places) * divisor != dividend};
    }
    const uint128 product = uint128{parts.mantissa} * powers_of_five[static_cast<std::size_t>(power)];
    const int places = -(parts.exponent + power);
    assert(places < 128);
    if (places <= 0) return {static_cast<std::uint64_t>(product << -places), false};
    // The product has as many zeros at its end as the mantissa: the power of five is odd.
    return {static_cast<std::uint64_t>(product >> places), places > std::countr_zero(parts.mantissa)};
}

struct RoundedNumber {
    std::uint64_t digits;
    int exponent;
};

// Without the last digit, or the last two.
template <std::uint64_t unit>
std::uint64_t rounded(ScaledNumber number) {
    const std::uint64_t quotient = number.whole / unit;
    const bool beyond_tie = number.has_fraction || quotient % 2 == 1;
    return quotient + (rounds_up(number.whole % unit, unit / 2, beyond_tie) ? 1 : 0);
}

// Nothing where 64 bits do not hold the digits and two more, or the scale is beyond what is exact.
std::optional<RoundedNumber> leading_digits(double magnitude, std::ptrdiff_t wanted) {
    constexpr int most_power = powers_of_five.size() - 1;
    if (wanted > most_units - 2) return std::nullopt;
    if (magnitude == 0) return RoundedNumber{0, 0};

    // The power of ten is known up to one from that of two. One digit too many is asked for, or two if it is larger.
    const auto count = static_cast<int>(wanted);
    const BinaryParts parts = binary_parts(magnitude);
    const int low_exponent = floor_log10_of_power_of_two(bit_width(parts.mantissa) - 1 + parts.exponent);
    const int power = count - low_exponent;
    if (power < -most_power || power > most_power) return std::nullopt;
    const ScaledNumber number = scaled(parts, power);
    const bool one_more = number.whole >= powers_of_ten[static_cast<std::size_t>(count) + 1];
    RoundedNumber result{one_more ? rounded<100>(number) : rounded<10>(number), low_exponent + (one_more ? 1 : 0)};
    if (result.digits == powers_of_ten[static_cast<std::size_t>(count)]) {
        result.digits /= 10;
        ++result.exponent;
    }
    return result;
}

char* write_many_leading_digits(double magnitude, std::ptrdiff_t count, int* exponent, char* to) {
    std::array<char, most_leading_digits + sizeof ".e+308"> text;
    const auto kept = static_cast<int>(std::min(count, most_leading_digits));
    const auto format = std::chars_format::scientific;
    const char* const end = std::to_chars(text.begin(), text.end(), magnitude, format, kept - 1).ptr;
    const char* const mark = std::find(text.cbegin(), end, 'e');
    const char* const power = mark[1] == '+' ? mark + 2 : mark + 1;  // std::from_chars takes no plus
    std::from_chars(power, end, *exponent);
    return write_zeros(count - kept, std::copy(text.cbegin(), mark, to));
}

}  // namespace

char* write_fixed(double magnitude, std::ptrdiff_t decimals, std::ptrdiff_t most_whole_digits, char* to) {
    const std::optional<SplitNumber> number = split(magnitude, decimals);
    if (!number) return write_long_fixed(magnitude, decimals, most_whole_digits, to);
    const int whole_digits = digit_count(number->whole);
    if (whole_digits > most_whole_digits) return nullptr;
    to = write_digits(number->whole, whole_digits, to);
    *to++ = '.';
    return write_digits(number->fraction, static_cast<int>(decimals), to);
}

char* write_leading_digits(double magnitude, std::ptrdiff_t count, int* exponent, char* to) {
    const std::optional<RoundedNumber> number = leading_digits(magnitude, count);
    if (!number) return write_many_leading_digits(magnitude, count, exponent, to);
    *exponent = number->exponent;
    char* const end = write_digits(number->digits, static_cast<int>(count), to + 1);
    to[0] = to[1];
    to[1] = '.';
    return end;
}

}  // namespace orvix::gsl::text
