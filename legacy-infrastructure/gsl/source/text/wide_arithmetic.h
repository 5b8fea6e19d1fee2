// Exact arithmetic behind the conversion of numbers: integers of 128 bits, powers of five and ten, and the parts of a
// double.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text {

__extension__ typedef unsigned __int128 uint128;  // which holds the product of any two integers of 64 bits

template <std::uint64_t base, std::size_t count>
constexpr std::array<std::uint64_t, count> powers_of() {
    std::array<std::uint64_t, count> powers{1};
    for (std::size_t i = 1; i < count; ++i) powers[i] = powers[i - 1] * base;
    return powers;
}

// All that 64 bits hold.
inline constexpr auto powers_of_five = powers_of<5, 28>();
inline constexpr auto powers_of_ten = powers_of<10, 20>();

constexpr int bit_width(std::uint64_t n) { return static_cast<int>(std::bit_width(n)); }

constexpr int bit_width(uint128 n) {
    const auto high = static_cast<std::uint64_t>(n >> 64);
    return high != 0 ? 64 + bit_width(high) : bit_width(static_cast<std::uint64_t>(n));
}

// True if what follows the last place kept, `rest` of twice `half`, raises it: rounding to nearest, ties to even.
constexpr bool rounds_up(uint128 rest, uint128 half, bool odd) { return rest > half || (rest == half && odd); }

// n / 2^shift to the nearest integer, ties to even.
constexpr std::uint64_t shifted_right(uint128 n, int shift) {
    if (shift == 0) return static_cast<std::uint64_t>(n);
    const auto quotient = static_cast<std::uint64_t>(n >> shift);
    const uint128 rest = n & ((uint128{1} << shift) - 1);
    return quotient + (rounds_up(rest, uint128{1} << (shift - 1), quotient % 2 == 1) ? 1 : 0);
}

// A finite number that is not below zero, as mantissa * 2^exponent.
struct BinaryParts {
    std::uint64_t mantissa;  // of 53 bits unless the number is zero or subnormal
    int exponent;
};

constexpr BinaryParts binary_parts(double magnitude) {
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const auto field = static_cast<int>(bits >> 52);
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52) - 1);
    return field == 0 ? BinaryParts{fraction, -1074} : BinaryParts{fraction | std::uint64_t{1} << 52, field - 1075};
}

// The power of ten that begins 2^exponent, for exponents from -400 to 400.
constexpr int floor_log10_of_power_of_two(int exponent) { return (exponent * 1233) >> 12; }

// 2^exponent, which must be that of a normal number.
constexpr double power_of_two(int exponent) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

}  // namespace orvix::gsl::text
