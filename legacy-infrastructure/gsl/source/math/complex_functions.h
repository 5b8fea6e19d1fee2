// The complex functions, written once for both precisions as formulas over a logarithm, an exponential, a power and a
// division. The formulas set the branch cuts and are never replaced by others, however close.
//
// All are inline: a function's whole formula in one piece, which the calling convention for pairs of floats would
// otherwise slow down by half.
#pragma once

#include "math/complex_value.h"

namespace orvix::gsl::math {

// ---------------------------------------------------------------------------------------------------------------------
// Primitives

template <class Real>
inline Real modulus(Complex<Real> z) {
    return Precision<Real>::modulus(z.re, z.im);
}

// The logarithm of a number whose modulus is known.
template <class Real>
inline Complex<Real> log(Complex<Real> z, Real modulus) {
    if (!(modulus > 0)) return error_result<Complex<Real>>();  // also NaN
    return {Precision<Real>::log(modulus), Precision<Real>::angle(z.im, z.re)};
}

template <class Real>
inline Complex<Real> log(Complex<Real> z) {
    return log(z, modulus(z));
}

// (e, 0) times (c, s), clamped.
template <class Real>
inline Complex<Real> exponential(Real e, Real c, Real s) {
    return clamped(Complex<Real>{e * c - s * 0, e * s + c * 0});
}

template <class Real>
inline Complex<Real> exp(Complex<Real> z) {
    using P = Precision<Real>;
    return exponential(P::exp(z.re), P::cos(z.im), P::sin(z.im));
}

// A base without a modulus gives 0 and no error, whatever the exponent.
template <class Real>
inline Complex<Real> power(Complex<Real> base, Complex<Real> exponent) {
    const Real r = modulus(base);
    if (r == 0) return {};
    return exp(multiply(log(base, r), exponent));
}

template <class Real>
inline Complex<Real> sqrt(Complex<Real> z) {
    return power(z, {Real{0.5}, 0});
}

// Not multiply(z, z): rounded as every power is.
template <class Real>
inline Complex<Real> square(Complex<Real> z) {
    return power(z, {2, 0});
}

template <class Real>
inline Complex<Real> power_of_ten(Complex<Real> z) {
    return power({10, 0}, z);
}

template <class Real>
inline Complex<Real> log10(Complex<Real> z) {
    return divide(log(z), {Precision<Real>::decimal_divisor(), 0});
}

// ---------------------------------------------------------------------------------------------------------------------
// Circular and hyperbolic functions: sums, differences and quotients of exp(z) and exp(-z)

template <class Real>
struct ExponentialPair {
    Complex<Real> plus;
    Complex<Real> minus;

    Complex<Real> sum() const { return plus + minus; }
    Complex<Real> difference() const { return plus - minus; }
};

// exp(z) and exp(-z), each clamped. The C library's cosine is even and its sine odd to the last bit, so both share
// them.
template <class Real>
inline ExponentialPair<Real> exponential_pair(Complex<Real> z) {
    using P = Precision<Real>;
    const Real c = P::cos(z.im);
    const Real s = P::sin(z.im);
    return {exponential(P::exp(z.re), c, s), exponential(P::exp(-z.re), c, -s)};
}

// i times z, exactly.
template <class Real>
inline Complex<Real> times_i(Complex<Real> z) {
    return {-z.im, z.re};
}

template <class Real>
inline Complex<Real> cosh(Complex<Real> z) {
    return scale(exponential_pair(z).sum(), Real{0.5});
}

template <class Real>
inline Complex<Real> sinh(Complex<Real> z) {
    return scale(exponential_pair(z).difference(), Real{0.5});
}

template <class Real>
inline Complex<Real> tanh(Complex<Real> z) {
    const ExponentialPair<Real> pair = exponential_pair(z);
    return divide(pair.difference(), pair.sum());
}

template <class Real>
inline Complex<Real> cos(Complex<Real> z) {
    return cosh(times_i(z));
}

template <class Real>
inline Complex<Real> sin(Complex<Real> z) {
    return multiply(exponential_pair(times_i(z)).difference(), {0, Real{-0.5}});
}

template <class Real>
inline Complex<Real> tan(Complex<Real> z) {
    return multiply(tanh(times_i(z)), {0, -1});
}

// ---------------------------------------------------------------------------------------------------------------------
// Their inverses

// z - 1
template <class Real>
inline Complex<Real> less_one(Complex<Real> z) {
    return {z.re - 1, z.im};
}

// z + 1
template <class Real>
inline Complex<Real> plus_one(Complex<Real> z) {
    return {z.re + 1, z.im};
}

// 1 - z
template <class Real>
inline Complex<Real> one_less(Complex<Real> z) {
    return {1 - z.re, -z.im};
}

template <class Real>
inline Complex<Real> acos(Complex<Real> z) {
    return multiply(log(sqrt(less_one(multiply(z, z))) + z), {0, -1});
}

template <class Real>
inline Complex<Real> asin(Complex<Real> z) {
    return multiply(log(sqrt(one_less(multiply(z, z))) + times_i(z)), {0, -1});
}

template <class Real>
inline Complex<Real> atan(Complex<Real> z) {
    const Complex<Real> above{z.re, 1 + z.im};   // i + z
    const Complex<Real> below{-z.re, 1 - z.im};  // i - z
    return multiply(log(divide(above, below)), {0, Real{0.5}});
}

// The precisions differ in their formulas, and with them in their branch cuts: two roots here, one there.
inline Complex<double> acosh(Complex<double> z) {
    const Complex<double> p = sqrt(plus_one(z));
    const Complex<double> r = sqrt(less_one(z));
    return log(multiply(r, p) + z);
}

inline Complex<float> acosh(Complex<float> z) { return log(sqrt(less_one(multiply(z, z))) + z); }

template <class Real>
inline Complex<Real> asinh(Complex<Real> z) {
    return log(sqrt(plus_one(multiply(z, z))) + z);
}

template <class Real>
inline Complex<Real> atanh(Complex<Real> z) {
    return multiply(log(divide(plus_one(z), one_less(z))), {Real{0.5}, 0});
}

}  // namespace orvix::gsl::math
