// Magnitudes, and conversions to 32-bit integers.

#include <orvix/gsl/real_functions.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

// Saturation is symmetric: the most negative integer is left to NaN, as the hardware's conversion has it.
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

std::int32_t truncated(double v) {
    if (v > largest) return largest;
    if (v < -largest) return -largest;
    if (std::isnan(v)) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(v);
}

}  // namespace

std::int32_t gmath_eetrunc(double x) { return truncated(x); }

std::int32_t gmath_eedtrunc(double x) { return truncated(x); }

std::int32_t gmath_eeround(double x) { return truncated(x >= 0 ? x + 0.5 : x - 0.5); }

std::int32_t gmath_eelround(double x) { return gmath_eeround(x); }

double gmath_eedround(double x) { return gmath_eeround(x); }

int gmath_eeiabs(int i) {
    if (i == std::numeric_limits<int>::min()) return i;
    return i < 0 ? -i : i;
}

float gmath_eefabs(float x) { return std::fabs(x); }
