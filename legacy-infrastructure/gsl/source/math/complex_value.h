// A complex number and its arithmetic, for both precisions. The order of operations is fixed: callers compare results
// bit by bit, and the zero terms of products turn an infinity in the other part into NaN.
#pragma once

#include "math/error_flag.h"
#include "math/precision.h"

namespace orvix::gsl::math {

template <class Real>
struct Complex {
    Real re{};
    Real im{};
};

// Hands a result to the caller.
template <class Real>
inline void store(Complex<Real> z, Real* re_out, Real* im_out) {
    *re_out = z.re;
    *im_out = z.im;
}

template <class Real>
inline Complex<Real> clamped(Complex<Real> z) {
    return {Precision<Real>::clamped(z.re), Precision<Real>::clamped(z.im)};
}

// Sums are not clamped.
template <class Real>
inline Complex<Real> operator+(Complex<Real> a, Complex<Real> b) {
    return {a.re + b.re, a.im + b.im};
}

template <class Real>
inline Complex<Real> operator-(Complex<Real> a, Complex<Real> b) {
    return {a.re - b.re, a.im - b.im};
}

template <class Real>
inline Complex<Real> multiply(Complex<Real> a, Complex<Real> b) {
    return clamped(Complex<Real>{a.re * b.re - a.im * b.im, a.im * b.re + a.re * b.im});
}

// By a real factor, part by part: unlike multiply(), one part may be NaN and the other not.
template <class Real>
inline Complex<Real> scale(Complex<Real> z, Real factor) {
    return clamped(Complex<Real>{z.re * factor, z.im * factor});
}

// The norm is clamped first, so a denominator whose square vanishes counts as zero.
template <class Real>
inline Complex<Real> divide(Complex<Real> a, Complex<Real> b) {
    const Real norm = Precision<Real>::clamped(b.re * b.re + b.im * b.im);
    if (!(norm > 0)) return error_result<Complex<Real>>();  // also NaN
    return multiply(a, {b.re / norm, -b.im / norm});
}

}  // namespace orvix::gsl::math
