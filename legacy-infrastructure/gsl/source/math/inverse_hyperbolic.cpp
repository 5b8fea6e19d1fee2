// Inverse hyperbolic functions, written as logarithms and not as the C library's own: callers rely on where these
// formulas stop, and on their limits. Both precisions compute in double.

#include <orvix/gsl/real_functions.h>

#include "math/clamp.h"
#include "math/error_flag.h"

#include <cmath>
#include <limits>

using orvix::gsl::math::clamped;
using orvix::gsl::math::clamped_to_double;
using orvix::gsl::math::error_result;
using orvix::gsl::math::single_range;

namespace {

// The single range in both precisions.
double asinh_by_logarithm(double x) { return std::log(clamped(std::sqrt(x * x + 1) + x, single_range)); }

// The double range in both precisions.
double acosh_by_logarithm(double x) {
    const double t = clamped_to_double(x * x - 1);
    if (t < 0) return error_result<double>();
    const double s = std::sqrt(t) + x;
    if (s <= 0) return error_result<double>();  // every x from -1 down
    return std::log(s);
}

// Infinity at either pole is positive.
double atanh_by_logarithm(double x) {
    const double magnitude = std::fabs(x);
    if (magnitude < 1) return 0.5 * std::log((x + 1) / (1 - x));
    if (magnitude == 1) return error_result(std::numeric_limits<double>::infinity());
    return error_result(std::numeric_limits<double>::quiet_NaN());  // also for NaN
}

}  // namespace

double gmath_dnoasinh(double x) { return asinh_by_logarithm(x); }

float gmath_snoasinh(float x) { return static_cast<float>(asinh_by_logarithm(static_cast<double>(x))); }

double gmath_dnoacosh(double x) { return acosh_by_logarithm(x); }

float gmath_snoacosh(float x) { return static_cast<float>(acosh_by_logarithm(static_cast<double>(x))); }

double gmath_dnoatanh(double x) { return atanh_by_logarithm(x); }

float gmath_snoatanh(float x) { return static_cast<float>(atanh_by_logarithm(static_cast<double>(x))); }
