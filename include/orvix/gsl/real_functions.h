/// @file
/// Tolerant real functions: they never trap and report nothing, so that a caller can compute in bulk and look at one
/// flag at the end. Beside them stand conversions to integers that stop at the limits of 32 bits.
///
/// An argument outside a function's domain gives a defined result, 0 where nothing else is said, and sets the math
/// error flag. The flag is one byte of the process, shared with the complex functions: not atomic, not per thread, set
/// by functions and cleared by `gmath_clr_ematherr` alone. A function for which no domain is named never sets it.
/// `errno` is of no meaning after a call.
///
/// `gmath_sno` functions take and return single precision but compute in double. The result is clamped to the single
/// range and then narrowed: a magnitude above 1e38 becomes 1e38, one below 1e-37 becomes 0, so that no infinity and no
/// subnormal number leaves them. `gmath_dno` functions compute in double and, but where said, do not clamp. NaN goes
/// through every clamp unchanged.
///
///     gmath_snoexp(1000)   ->  1e38
///     gmath_snoexp(-1000)  ->  0
///     gmath_snolog(0)      ->  0, and gmath_ematherr() is true
///
/// Angles are in radians.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

// ---------------------------------------------------------------------------------------------------------------------
// The flag

/// Tells whether a function met an argument outside its domain since the flag was last cleared.
///
/// @return the math error flag; false when the process starts
ORVIX_GSL_API bool gmath_ematherr();

/// Clears the math error flag.
ORVIX_GSL_API void gmath_clr_ematherr();

// ---------------------------------------------------------------------------------------------------------------------
// NaN and classification

/// Makes a quiet NaN by computation. Masks all floating-point exceptions of the calling thread to that end, and leaves
/// them masked.
///
/// @return a quiet NaN, of either sign
ORVIX_GSL_API double gmath_quiet_nan();

namespace orvix::gsl {

/// Tells a finite value from infinities and NaN.
///
/// @param x  any value
/// @return 1.0 for a finite value, else 0.0
ORVIX_GSL_API double finite(double x);

/// Tells NaN from numbers.
///
/// @param x  any value
/// @return 1 for NaN, else 0
ORVIX_GSL_API int isnan(double x);

}  // namespace orvix::gsl

// ---------------------------------------------------------------------------------------------------------------------
// Elementary operations

/// Squares a value, with no guard against overflow.
///
/// @param x  any value
/// @return `x * x`
ORVIX_GSL_API double square(double x);

/// Magnitude of an integer.
///
/// @param i  any integer
/// @return the absolute value; -2147483648, which has none, is returned as it is
ORVIX_GSL_API int gmath_eeiabs(int i);

/// Magnitude of a single-precision value.
///
/// @param x  any value
/// @return `x` with its sign bit cleared, NaN included
ORVIX_GSL_API float gmath_eefabs(float x);

/// Length of a vector of two components.
///
/// @param x  first component
/// @param y  second component
/// @return `hypot(x, y)`, clamped to the single range; 0 if both components are 0
ORVIX_GSL_API float gmath_magxy(float x, float y);

// ---------------------------------------------------------------------------------------------------------------------
// Conversion to integers
//
// Values beyond the limits stop at 2147483647 and -2147483647: -2147483648 comes from NaN alone.

/// Drops the fraction of a value.
///
///     gmath_eetrunc(-2.9)  ->  -2
///     gmath_eetrunc(-3e9)  ->  -2147483647
///
/// @param x  any value
/// @return `x` truncated towards zero, within +-2147483647; -2147483648 for NaN
ORVIX_GSL_API std::int32_t gmath_eetrunc(double x);

/// `gmath_eetrunc` under another name.
///
/// @param x  any value
/// @return `x` truncated towards zero, within +-2147483647; -2147483648 for NaN
ORVIX_GSL_API std::int32_t gmath_eedtrunc(double x);

/// Rounds to the nearest integer, halves away from zero. The half is added before the fraction goes, so that a value
/// just below a half may round up with it, as 0.49999999999999994 does.
///
///     gmath_eeround(2.5)   ->  3
///     gmath_eeround(-2.5)  ->  -3
///
/// @param x  any value
/// @return the nearest integer within +-2147483647; -2147483648 for NaN
ORVIX_GSL_API std::int32_t gmath_eeround(double x);

/// `gmath_eeround` under another name.
///
/// @param x  any value
/// @return the nearest integer within +-2147483647; -2147483648 for NaN
ORVIX_GSL_API std::int32_t gmath_eelround(double x);

/// `gmath_eeround` with the integer as a double.
///
/// @param x  any value
/// @return the nearest integer within +-2147483647; -2147483648 for NaN; never a negative zero
ORVIX_GSL_API double gmath_eedround(double x);

// ---------------------------------------------------------------------------------------------------------------------
// Exponentials, logarithms, powers, roots

/// Exponential function.
///
/// @param x  exponent
/// @return e to the `x`, clamped to the single range
ORVIX_GSL_API float gmath_snoexp(float x);

/// Power of ten.
///
/// @param x  exponent
/// @return 10 to the `x`, clamped to the single range
ORVIX_GSL_API float gmath_sno10x(float x);

/// Natural logarithm.
///
/// @param x  domain: above 0
/// @return the logarithm, clamped to the single range
ORVIX_GSL_API float gmath_snolog(float x);

/// Logarithm to the base 10.
///
/// @param x  domain: above 0
/// @return the logarithm, clamped to the single range
ORVIX_GSL_API float gmath_snolog10(float x);

/// Power of two real arguments. Has no domain to leave: the flag stays as it is.
///
/// @param x  base
/// @param y  exponent
/// @return `x` to the `y`, clamped to the single range; NaN for a negative base and a fractional exponent
ORVIX_GSL_API float gmath_snopwr(float x, float y);

/// Square.
///
/// @param x  any value
/// @return `x * x`, clamped to the single range
ORVIX_GSL_API float gmath_snosqr(float x);

/// Square root. Has no domain to leave: the flag stays as it is.
///
/// @param x  any value
/// @return the root, clamped to the single range; NaN for a negative `x`
ORVIX_GSL_API float gmath_snosqrt(float x);

// ---------------------------------------------------------------------------------------------------------------------
// Circular functions and their inverses

/// Cosine, not clamped.
///
/// @param x  angle
/// @return the cosine; NaN for an infinity
ORVIX_GSL_API float gmath_snocos(float x);

/// Sine, not clamped: a subnormal angle is its own sine.
///
/// @param x  angle
/// @return the sine; NaN for an infinity
ORVIX_GSL_API float gmath_snosin(float x);

/// Tangent.
///
/// @param x  angle
/// @return the tangent, clamped to the single range; NaN for an infinity
ORVIX_GSL_API float gmath_snotan(float x);

/// Inverse cosine.
///
/// @param x  domain: -1 to 1
/// @return the angle, 0 to pi, clamped to the single range
ORVIX_GSL_API float gmath_snoacos(float x);

/// Inverse sine.
///
/// @param x  domain: -1 to 1
/// @return the angle, -pi/2 to pi/2, clamped to the single range
ORVIX_GSL_API float gmath_snoasin(float x);

/// Inverse tangent.
///
/// @param x  any value
/// @return the angle, -pi/2 to pi/2, clamped to the single range
ORVIX_GSL_API float gmath_snoatan(float x);

/// Angle of the vector (`x`, `y`), exact on the axes.
///
///     gmath_snoatan2(0, 0)   ->  0, and no error
///     gmath_snoatan2(-1, 0)  ->  -pi/2
///     gmath_snoatan2(0, -1)  ->  pi, for a negative zero too
///
/// @param y  second component
/// @param x  first component
/// @return the angle, -pi to pi, clamped to the single range
ORVIX_GSL_API float gmath_snoatan2(float y, float x);

/// Angle of the vector (`x`, `y`) in double precision, exact on the axes as `gmath_snoatan2` is.
///
/// @param y  second component
/// @param x  first component
/// @return the angle, -pi to pi
ORVIX_GSL_API double gmath_dnoatan2(double y, double x);

// ---------------------------------------------------------------------------------------------------------------------
// Hyperbolic functions and their inverses
//
// The inverses are written as logarithms. They lose digits where that formula cancels, as documented with the accuracy
// of all functions in docs/mathematics.md.

/// Hyperbolic cosine.
///
/// @param x  any value
/// @return the hyperbolic cosine, clamped to the single range
ORVIX_GSL_API float gmath_snocosh(float x);

/// Hyperbolic sine.
///
/// @param x  any value
/// @return the hyperbolic sine, clamped to the single range
ORVIX_GSL_API float gmath_snosinh(float x);

/// Hyperbolic tangent.
///
/// @param x  any value
/// @return the hyperbolic tangent, clamped to the single range
ORVIX_GSL_API float gmath_snotanh(float x);

/// Inverse hyperbolic sine, as `log(sqrt(x * x + 1) + x)`. What the logarithm is taken of is clamped to the single
/// range, so the function stops at `log(1e38)`. Has no domain to leave: the flag stays as it is.
///
/// @param x  any value
/// @return the logarithm, not clamped; minus infinity below about -6.7e7, where the sum vanishes
ORVIX_GSL_API float gmath_snoasinh(float x);

/// Inverse hyperbolic sine in double precision, by the formula of `gmath_snoasinh`: it too stops at `log(1e38)`.
///
/// @param x  any value
/// @return the logarithm, not clamped; minus infinity below about -6.7e7, where the sum vanishes
ORVIX_GSL_API double gmath_dnoasinh(double x);

/// Inverse hyperbolic cosine, as `log(sqrt(x * x - 1) + x)`. What the root is taken of is clamped to the range of
/// doubles.
///
/// @param x  domain: from 1 on
/// @return the logarithm, not clamped
ORVIX_GSL_API float gmath_snoacosh(float x);

/// Inverse hyperbolic cosine in double precision, by the formula of `gmath_snoacosh`.
///
/// @param x  domain: from 1 on
/// @return the logarithm, not clamped
ORVIX_GSL_API double gmath_dnoacosh(double x);

/// Inverse hyperbolic tangent, as `0.5 * log((x + 1) / (1 - x))`.
///
/// @param x  domain: above -1 and below 1
/// @return the result, not clamped; outside the domain positive infinity for both 1 and -1, else NaN, with the flag set
///         in each case, that of NaN included
ORVIX_GSL_API float gmath_snoatanh(float x);

/// Inverse hyperbolic tangent in double precision, by the formula of `gmath_snoatanh`.
///
/// @param x  domain: above -1 and below 1
/// @return the result, not clamped; outside the domain positive infinity for both 1 and -1, else NaN, with the flag set
///         in each case, that of NaN included
ORVIX_GSL_API double gmath_dnoatanh(double x);

// ---------------------------------------------------------------------------------------------------------------------
// Error function

/// Error function.
///
/// @param x  any value
/// @return the C library's `erf`, not clamped
ORVIX_GSL_API double gmath_dnoerf(double x);

/// Complement of the error function.
///
/// @param x  any value
/// @return the C library's `erfc`, not clamped
ORVIX_GSL_API double gmath_dnoerfc(double x);
