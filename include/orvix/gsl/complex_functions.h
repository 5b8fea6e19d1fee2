/// @file
/// Tolerant complex functions in double precision.
///
/// A complex number is two doubles, `x` and `y` for x + iy. Each function takes its operands by value and writes the
/// real and the imaginary part of its result through two pointers, always both and the real part first; neither may be
/// null.
///
/// No function traps or reports. Where nothing else is said, the parts of a result are clamped one by one: a magnitude
/// above the largest double becomes the largest double, one below 2.2250738585072014e-308 becomes 0, so that no
/// infinity and no subnormal number comes out. NaN goes through unchanged. A division by a number whose squared norm
/// vanishes and the logarithm of a number without a modulus above 0, NaN included, count as (0, 0) and set the math
/// error flag, which `gmath_ematherr` reads and `gmath_clr_ematherr` clears; functions built on these pass it on. The
/// flag is one byte of the process, neither atomic nor per thread; there is no other state.
///
/// The functions are formulas over a logarithm, an exponential, a power and a division, and have the branch cuts of
/// those formulas. What this costs in accuracy is listed in docs/mathematics.md.
#pragma once

#include <orvix/gsl/export.h>

// ---------------------------------------------------------------------------------------------------------------------
// Arithmetic

/// Sum, not clamped.
///
/// @param x       real part of the first operand
/// @param y       imaginary part of the first operand
/// @param u       real part of the second operand
/// @param v       imaginary part of the second operand
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnoadd(double x, double y, double u, double v, double* re_out, double* im_out);

/// Difference, not clamped.
///
/// @param x       real part of the minuend
/// @param y       imaginary part of the minuend
/// @param u       real part of the subtrahend
/// @param v       imaginary part of the subtrahend
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnosub(double x, double y, double u, double v, double* re_out, double* im_out);

/// Product.
///
/// @param x       real part of the first factor
/// @param y       imaginary part of the first factor
/// @param u       real part of the second factor
/// @param v       imaginary part of the second factor
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnomlt(double x, double y, double u, double v, double* re_out, double* im_out);

/// Quotient, as the product with the reciprocal; nothing is scaled. A denominator below about 1.5e-154 has a squared
/// norm that vanishes and counts as 0.
///
///     gmath_cdnodiv(1, 0, 1e-200, 0, ...)  ->  (0, 0), and gmath_ematherr() is true
///
/// @param x       real part of the numerator
/// @param y       imaginary part of the numerator
/// @param u       real part of the denominator
/// @param v       imaginary part of the denominator
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnodiv(double x, double y, double u, double v, double* re_out, double* im_out);

// ---------------------------------------------------------------------------------------------------------------------
// Exponentials, logarithms, powers, roots

/// Exponential function.
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnoexp(double x, double y, double* re_out, double* im_out);

/// Power of ten, as `gmath_cdnopwr` with the base (10, 0).
///
/// @param x       real part of the exponent
/// @param y       imaginary part of the exponent
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdno10x(double x, double y, double* re_out, double* im_out);

/// Natural logarithm, not clamped. The imaginary part lies between -pi and pi, and is exact on the axes: pi on the
/// negative real one, whatever the sign of a zero `y`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the logarithm of the modulus
/// @param im_out  receives the angle in radians
ORVIX_GSL_API void gmath_cdnolog(double x, double y, double* re_out, double* im_out);

/// Logarithm to the base 10: `gmath_cdnolog` divided by 2.30258509. The divisor has these nine digits, so results are
/// too large by one part in 770 million.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnolog10(double x, double y, double* re_out, double* im_out);

/// Power: the exponential of the exponent times the logarithm of the base. The base (0, 0) gives (0, 0) without an
/// error, whatever the exponent.
///
/// @param x       real part of the base
/// @param y       imaginary part of the base
/// @param u       real part of the exponent
/// @param v       imaginary part of the exponent
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnopwr(double x, double y, double u, double v, double* re_out, double* im_out);

/// Square, as `gmath_cdnopwr` with the exponent (2, 0): no multiplication, and so with the rounding of a logarithm and
/// an exponential. `gmath_cdnomlt` is exact to the last place, and faster.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnosqr(double x, double y, double* re_out, double* im_out);

/// Square root in the right half plane, as `gmath_cdnopwr` with the exponent (0.5, 0).
///
///     gmath_cdnosqrt(-4, 0, ...)  ->  (about 1e-16, 2)
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnosqrt(double x, double y, double* re_out, double* im_out);

// ---------------------------------------------------------------------------------------------------------------------
// Circular functions
//
// Each is formed from exp(iz) and exp(-iz), which are clamped first: beyond |y| of 709.78 results saturate.

/// Cosine: half the sum of exp(iz) and exp(-iz).
///
/// @param x       real part, an angle in radians
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnocos(double x, double y, double* re_out, double* im_out);

/// Sine: the difference of exp(iz) and exp(-iz), times -i/2.
///
/// @param x       real part, an angle in radians
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnosin(double x, double y, double* re_out, double* im_out);

/// Tangent: -i times the quotient of the difference by the sum of exp(iz) and exp(-iz). Beyond |y| of about 354 the
/// sum's norm overflows, and the result is finite but of no use.
///
/// @param x       real part, an angle in radians
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnotan(double x, double y, double* re_out, double* im_out);

/// Inverse cosine: -i log(z + sqrt(z^2 - 1)).
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part, an angle in radians
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnoacos(double x, double y, double* re_out, double* im_out);

/// Inverse sine: -i log(iz + sqrt(1 - z^2)).
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part, an angle in radians
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnoasin(double x, double y, double* re_out, double* im_out);

/// Inverse tangent: i/2 log((i + z) / (i - z)). At the poles (0, 1) and (0, -1) the result is (0, 0) with the flag set.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part, an angle in radians
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnoatan(double x, double y, double* re_out, double* im_out);

// ---------------------------------------------------------------------------------------------------------------------
// Hyperbolic functions
//
// Formed from exp(z) and exp(-z) as the circular ones are from exp(iz) and exp(-iz).

/// Hyperbolic cosine: half the sum of exp(z) and exp(-z).
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnocosh(double x, double y, double* re_out, double* im_out);

/// Hyperbolic sine: half the difference of exp(z) and exp(-z).
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnosinh(double x, double y, double* re_out, double* im_out);

/// Hyperbolic tangent: the quotient of the difference by the sum of exp(z) and exp(-z). Beyond |x| of about 354 the
/// sum's norm overflows, and the result is finite but of no use.
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_cdnotanh(double x, double y, double* re_out, double* im_out);

/// Inverse hyperbolic cosine: log(z + sqrt(z + 1) sqrt(z - 1)), not clamped. The two separate roots put its branch cut
/// on the real axis below 1.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part, an angle in radians
ORVIX_GSL_API void gmath_cdnoacosh(double x, double y, double* re_out, double* im_out);

/// Inverse hyperbolic sine: log(z + sqrt(z^2 + 1)), not clamped.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part, an angle in radians
ORVIX_GSL_API void gmath_cdnoasinh(double x, double y, double* re_out, double* im_out);

/// Inverse hyperbolic tangent: 1/2 log((1 + z) / (1 - z)). At the poles (1, 0) and (-1, 0) the result is (0, 0) with
/// the flag set.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part, an angle in radians
ORVIX_GSL_API void gmath_cdnoatanh(double x, double y, double* re_out, double* im_out);
