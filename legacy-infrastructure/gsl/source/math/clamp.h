// The rule that makes the mathematics tolerant: results stop at the end of a range instead of leaving it.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace orvix::gsl::math {

// The bits of a magnitude. They are ordered as the magnitudes are, with infinity above all numbers and NaN above it.
constexpr std::uint64_t magnitude_bits(double r) { return std::bit_cast<std::uint64_t>(r) & ~(std::uint64_t{1} << 63); }
constexpr std::uint32_t magnitude_bits(float r) { return std::bit_cast<std::uint32_t>(r) & ~(std::uint32_t{1} << 31); }

// The largest and the smallest magnitude that pass a clamp. Both pass.
template <class Real>
struct Range {
    Real upper;
    Real lower;
};

inline constexpr Range<double> double_range{std::numeric_limits<double>::max(), std::numeric_limits<double>::min()};

// Well inside what a float holds, so that narrowing a clamped value never gives an infinity or a subnormal.
inline constexpr Range<double> single_range{1e38, 1e-37};

// The floats inside the single range. 1e-37 has no float of its own: the nearest lies below it, and outside.
inline constexpr Range<float> single_range_floats{1e38F,
                                                  std::bit_cast<float>(std::bit_cast<std::uint32_t>(1e-37F) + 1)};
static_assert(static_cast<double>(1e38F) <= 1e38 && static_cast<double>(1e-37F) < 1e-37);

// One comparison; the sign, which is anybody's guess for most results, decides no branch.
template <class Real>
constexpr bool passes(Real r, const Range<Real>& range) {
    const auto lowest = magnitude_bits(range.lower);
    return magnitude_bits(r) - lowest <= magnitude_bits(range.upper) - lowest;
}

// Stops large magnitudes at the range's end and turns small ones into 0, positive whatever their sign. Zeros keep their
// sign, and NaN passes.
template <class Real>
Real clamped(Real r, const Range<Real>& range) {
    if (passes(r, range)) [[likely]]
        return r;
    const Real magnitude = std::fabs(r);
    if (magnitude > range.upper) return std::copysign(range.upper, r);
    if (magnitude < range.lower && magnitude > 0) return 0;
    return r;
}

// Inside the double range lie the normal numbers, which the exponent alone tells from the others: it is neither 0 nor
// all ones.
inline double clamped_to_double(double r) {
    const std::uint64_t exponent = std::bit_cast<std::uint64_t>(r) >> 52 & 0x7FF;
    if (exponent - 1 < 0x7FE) [[likely]]
        return r;
    return clamped(r, double_range);
}

inline float clamped_to_single(float r) { return clamped(r, single_range_floats); }

// A result in single precision. What is in range when narrowed was in range before, or above it and narrowed to its
// end.
inline float clamped_to_single(double r) {
    const auto narrowed = static_cast<float>(r);
    if (passes(narrowed, single_range_floats)) [[likely]]
        return narrowed;
    return static_cast<float>(clamped(r, single_range));
}

}  // namespace orvix::gsl::math
