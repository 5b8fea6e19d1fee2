// Decimal digits of integers, written two at a time.
#pragma once

#include "text/wide_arithmetic.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvix::gsl::text {

// "000102...99".
inline constexpr auto digit_pairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
    }
    return pairs;
}();

// How many digits n has; 1 for 0.
constexpr int digit_count(std::uint64_t n) {
    const int estimate = floor_log10_of_power_of_two(bit_width(n | 1));
    return estimate + ((n | 1) >= powers_of_ten[static_cast<std::size_t>(estimate)] ? 1 : 0);
}

// The same for 32 bits, by one look into a table. Numbers of one bit width have one count of digits, or two counts with
// a power of ten between. The entry is the count in its upper half, less that power in its lower half.
inline constexpr auto digit_count_entries = [] {
    std::array<std::uint64_t, 32> entries{};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::uint64_t least = std::uint64_t{1} << i;
        const int most_digits = digit_count(2 * least - 1);
        const std::uint64_t power = powers_of_ten[static_cast<std::size_t>(most_digits - 1)];
        entries[i] = (static_cast<std::uint64_t>(most_digits) << 32) - (power > least ? power : 0);
    }
    return entries;
}();

constexpr int digit_count(std::uint32_t n) {
    return static_cast<int>((n + digit_count_entries[static_cast<std::size_t>(std::bit_width(n | 1) - 1)]) >> 32);
}

// Writes n, which has no more than `count` digits, with zeros in front. Gives the place behind it.
inline char* write_digits(std::uint32_t n, int count, char* to) {
    char* const end = to + count;
    for (; count >= 2; count -= 2) {
        const std::uint32_t rest = n / 100;
        std::memcpy(to + count - 2, &digit_pairs[static_cast<std::size_t>(n - rest * 100) * 2], 2);
        n = rest;
    }
    if (count == 1) *to = static_cast<char>('0' + n);
    return end;
}

// In groups of eight digits, whose conversions do not wait for each other.
inline char* write_digits(std::uint64_t n, int count, char* to) {
    constexpr int group_digits = 8;
    constexpr std::uint64_t group = powers_of_ten[group_digits];
    char* const end = to + count;
    for (; count > group_digits; count -= group_digits) {
        const std::uint64_t rest = n / group;
        write_digits(static_cast<std::uint32_t>(n - rest * group), group_digits, to + count - group_digits);
        n = rest;
    }
    write_digits(static_cast<std::uint32_t>(n), count, to);
    return end;
}

}  // namespace orvix::gsl::text
