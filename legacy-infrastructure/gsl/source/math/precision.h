// What differs between the two precisions of the complex functions.
//
// Double precision takes what the C library returns as it is. Single precision has the C library compute in double,
// then clamps the result to the single range and narrows it; sine and cosine cannot leave the range and are narrowed
// only.
#pragma once

#include "math/angle.h"
#include "math/clamp.h"

#include <cmath>

namespace orvix::gsl::math {

template <class Real>
struct Precision;

template <>
struct Precision<double> {
    static double clamped(double r) { return clamped_to_double(r); }

    static double exp(double x) { return std::exp(x); }
    static double log(double x) { return std::log(x); }
    static double sin(double x) { return std::sin(x); }
    static double cos(double x) { return std::cos(x); }
    static double modulus(double x, double y) { return std::hypot(x, y); }
    static double angle(double y, double x) { return math::angle(y, x); }

    // The natural logarithm of 10 to nine digits, which callers' numbers were made with.
    static double decimal_divisor() { return 2.30258509; }
};

template <>
struct Precision<float> {
    static float clamped(float r) { return clamped_to_single(r); }

    static float exp(float x) { return clamped_to_single(std::exp(static_cast<double>(x))); }
    // Of a modulus, which was clamped: what lies in the single range has a logarithm that needs no clamp.
    static float log(float x) { return static_cast<float>(std::log(static_cast<double>(x))); }
    static float sin(float x) { return static_cast<float>(std::sin(static_cast<double>(x))); }
    static float cos(float x) { return static_cast<float>(std::cos(static_cast<double>(x))); }
    static float modulus(float x, float y) {
        return clamped_to_single(std::hypot(static_cast<double>(x), static_cast<double>(y)));
    }
    static float angle(float y, float x) {
        return clamped_to_single(math::angle(static_cast<double>(y), static_cast<double>(x)));
    }

    static float decimal_divisor() { return clamped_to_single(std::log(10.0)); }
};

}  // namespace orvix::gsl::math
