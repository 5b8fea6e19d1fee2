/// @file
/// Tolerant complex functions in single precision: the twins of `<orvix/gsl/complex_functions.h>`, where operands,
/// results, the math error flag and the formulas are told.
///
/// They differ from their twins in what follows. Results are clamped to the single range: a magnitude above 1e38
/// becomes 1e38, one below 1e-37 becomes 0. Products and sums are formed in single precision; sine, cosine,
/// exponential, logarithm, modulus and angle are computed in double and narrowed, the last four clamped first, inside
/// longer formulas too.
///
///     gmath_csnoexp(1000, 0, ...)             ->  1e38 in the real part
///     gmath_csnomlt(1e30F, 0, 1e30F, 0, ...)  ->  (1e38, 0)
#pragma once

#include <orvix/gsl/export.h>

// ---------------------------------------------------------------------------------------------------------------------
// Arithmetic

/// Sum, not clamped; the twin of `gmath_cdnoadd`.
///
/// @param x       real part of the first operand
/// @param y       imaginary part of the first operand
/// @param u       real part of the second operand
/// @param v       imaginary part of the second operand
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnoadd(float x, float y, float u, float v, float* re_out, float* im_out);

/// Difference, not clamped; the twin of `gmath_cdnosub`.
///
/// @param x       real part of the minuend
/// @param y       imaginary part of the minuend
/// @param u       real part of the subtrahend
/// @param v       imaginary part of the subtrahend
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnosub(float x, float y, float u, float v, float* re_out, float* im_out);

/// Product; the twin of `gmath_cdnomlt`.
///
/// @param x       real part of the first factor
/// @param y       imaginary part of the first factor
/// @param u       real part of the second factor
/// @param v       imaginary part of the second factor
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnomlt(float x, float y, float u, float v, float* re_out, float* im_out);

/// Quotient; the twin of `gmath_cdnodiv`. A denominator below about 3.2e-19 has a squared norm that vanishes and counts
/// as 0.
///
///     gmath_csnodiv(1, 0, 1e-30F, 0, ...)  ->  (0, 0), and gmath_ematherr() is true
///
/// @param x       real part of the numerator
/// @param y       imaginary part of the numerator
/// @param u       real part of the denominator
/// @param v       imaginary part of the denominator
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnodiv(float x, float y, float u, float v, float* re_out, float* im_out);

// ---------------------------------------------------------------------------------------------------------------------
// Exponentials, logarithms, powers, roots

/// Exponential function; the twin of `gmath_cdnoexp`. The real exponential is clamped before it is multiplied: a huge
/// `x` gives 1e38 times the cosine and the sine of `y`.
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnoexp(float x, float y, float* re_out, float* im_out);

/// Power of ten, as `gmath_csnopwr` with the base (10, 0).
///
/// @param x       real part of the exponent
/// @param y       imaginary part of the exponent
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csno10x(float x, float y, float* re_out, float* im_out);

/// Natural logarithm; the twin of `gmath_cdnolog`, but clamped in both parts. A modulus below 1e-37 counts as 0.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the logarithm of the modulus
/// @param im_out  receives the angle in radians, as `gmath_snoatan2` tells it
ORVIX_GSL_API void gmath_csnolog(float x, float y, float* re_out, float* im_out);

/// Logarithm to the base 10: `gmath_csnolog` divided by the natural logarithm of 10, in full single precision and not
/// by the nine digits of `gmath_cdnolog10`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnolog10(float x, float y, float* re_out, float* im_out);

/// Power; the twin of `gmath_cdnopwr`. A base whose modulus is below 1e-37 gives (0, 0) without an error, as (0, 0)
/// does.
///
/// @param x       real part of the base
/// @param y       imaginary part of the base
/// @param u       real part of the exponent
/// @param v       imaginary part of the exponent
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnopwr(float x, float y, float u, float v, float* re_out, float* im_out);

/// Square, as `gmath_csnopwr` with the exponent (2, 0): no multiplication.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnosqr(float x, float y, float* re_out, float* im_out);

/// Square root in the right half plane, as `gmath_csnopwr` with the exponent (0.5, 0).
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnosqrt(float x, float y, float* re_out, float* im_out);

// ---------------------------------------------------------------------------------------------------------------------
// Circular functions

/// Cosine; the twin of `gmath_cdnocos`.
///
/// @param x       real part, an angle in radians
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnocos(float x, float y, float* re_out, float* im_out);

/// Sine; the twin of `gmath_cdnosin`.
///
/// @param x       real part, an angle in radians
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnosin(float x, float y, float* re_out, float* im_out);

/// Tangent; the twin of `gmath_cdnotan`. Of no use beyond |y| of about 43, where the norm of the denominator overflows.
///
/// @param x       real part, an angle in radians
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnotan(float x, float y, float* re_out, float* im_out);

/// Inverse cosine; the twin of `gmath_cdnoacos`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part, an angle in radians
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnoacos(float x, float y, float* re_out, float* im_out);

/// Inverse sine; the twin of `gmath_cdnoasin`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part, an angle in radians
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnoasin(float x, float y, float* re_out, float* im_out);

/// Inverse tangent; the twin of `gmath_cdnoatan`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part, an angle in radians
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnoatan(float x, float y, float* re_out, float* im_out);

// ---------------------------------------------------------------------------------------------------------------------
// Hyperbolic functions

/// Hyperbolic cosine; the twin of `gmath_cdnocosh`.
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnocosh(float x, float y, float* re_out, float* im_out);

/// Hyperbolic sine; the twin of `gmath_cdnosinh`.
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnosinh(float x, float y, float* re_out, float* im_out);

/// Hyperbolic tangent; the twin of `gmath_cdnotanh`. Of no use beyond |x| of about 43, where the norm of the
/// denominator overflows.
///
/// @param x       real part
/// @param y       imaginary part, an angle in radians
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part
ORVIX_GSL_API void gmath_csnotanh(float x, float y, float* re_out, float* im_out);

/// Inverse hyperbolic cosine: log(z + sqrt(z^2 - 1)). With this one root its branch cut is another than that of
/// `gmath_cdnoacosh`: the imaginary axis and the real axis between -1 and 1.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part, an angle in radians
ORVIX_GSL_API void gmath_csnoacosh(float x, float y, float* re_out, float* im_out);

/// Inverse hyperbolic sine; the twin of `gmath_cdnoasinh`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part, an angle in radians
ORVIX_GSL_API void gmath_csnoasinh(float x, float y, float* re_out, float* im_out);

/// Inverse hyperbolic tangent; the twin of `gmath_cdnoatanh`.
///
/// @param x       real part
/// @param y       imaginary part
/// @param re_out  receives the real part
/// @param im_out  receives the imaginary part, an angle in radians
ORVIX_GSL_API void gmath_csnoatanh(float x, float y, float* re_out, float* im_out);
