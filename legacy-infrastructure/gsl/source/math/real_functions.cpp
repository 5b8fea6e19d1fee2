// Real functions that ask the C library: a domain test, one call in double, and mostly a clamp.

#include <orvix/gsl/real_functions.h>

#include "math/angle.h"
#include "math/clamp.h"
#include "math/error_flag.h"

#include <cmath>

using orvix::gsl::math::angle;
using orvix::gsl::math::clamped_to_single;
using orvix::gsl::math::error_result;

namespace {

// Single-precision arguments are computed with in double.
double widened(float x) { return static_cast<double>(x); }

bool has_angle(float ratio) { return !(ratio > 1 || ratio < -1); }  // also NaN, whose angle is NaN

}  // namespace

double square(double x) { return x * x; }

float gmath_magxy(float x, float y) {
    if (x == 0 && y == 0) return 0;
    return clamped_to_single(std::hypot(widened(x), widened(y)));
}

float gmath_snoexp(float x) { return clamped_to_single(std::exp(widened(x))); }

float gmath_sno10x(float x) { return clamped_to_single(std::pow(10.0, widened(x))); }

float gmath_snolog(float x) { return x <= 0 ? error_result<float>() : clamped_to_single(std::log(widened(x))); }

float gmath_snolog10(float x) { return x <= 0 ? error_result<float>() : clamped_to_single(std::log10(widened(x))); }

float gmath_snopwr(float x, float y) { return clamped_to_single(std::pow(widened(x), widened(y))); }

float gmath_snosqr(float x) { return clamped_to_single(widened(x) * widened(x)); }

float gmath_snosqrt(float x) { return clamped_to_single(std::sqrt(widened(x))); }

float gmath_snocos(float x) { return static_cast<float>(std::cos(widened(x))); }

float gmath_snosin(float x) { return static_cast<float>(std::sin(widened(x))); }

float gmath_snotan(float x) { return clamped_to_single(std::tan(widened(x))); }

float gmath_snoacos(float x) { return has_angle(x) ? clamped_to_single(std::acos(widened(x))) : error_result<float>(); }

float gmath_snoasin(float x) { return has_angle(x) ? clamped_to_single(std::asin(widened(x))) : error_result<float>(); }

float gmath_snoatan(float x) { return clamped_to_single(std::atan(widened(x))); }

float gmath_snoatan2(float y, float x) { return clamped_to_single(angle(widened(y), widened(x))); }

double gmath_dnoatan2(double y, double x) { return angle(y, x); }

float gmath_snocosh(float x) { return clamped_to_single(std::cosh(widened(x))); }

float gmath_snosinh(float x) { return clamped_to_single(std::sinh(widened(x))); }

float gmath_snotanh(float x) { return clamped_to_single(std::tanh(widened(x))); }

double gmath_dnoerf(double x) { return std::erf(x); }

double gmath_dnoerfc(double x) { return std::erfc(x); }
