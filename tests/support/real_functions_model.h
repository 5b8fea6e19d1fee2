// A plain model of the tolerant real functions: each one from its first line to its last, sharing no step with another
// but the clamp. It has a flag of its own.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace orvix::test::model {

inline bool flag = false;

inline double clamp_between(double r, double upper, double lower) {
    if (r > 0) {
        if (r > upper) return upper;
        if (r < lower) return 0.0;
    }
    if (r < 0) {
        if (r < -upper) return -upper;
        if (r > -lower) return 0.0;
    }
    return r;
}

inline float single(double r) { return static_cast<float>(clamp_between(r, 1e38, 1e-37)); }

inline double clamp_double(double r) { return clamp_between(r, 1.7976931348623157e+308, 2.2250738585072014e-308); }

inline double wide(float x) { return static_cast<double>(x); }

inline float snolog(float x) {
    if (x <= 0) {
        flag = true;
        return 0;
    }
    return single(std::log(wide(x)));
}

inline float snolog10(float x) {
    if (x <= 0) {
        flag = true;
        return 0;
    }
    return single(std::log10(wide(x)));
}

inline float snoacos(float x) {
    if (x > 1 || x < -1) {
        flag = true;
        return 0;
    }
    return single(std::acos(wide(x)));
}

inline float snoasin(float x) {
    if (x > 1 || x < -1) {
        flag = true;
        return 0;
    }
    return single(std::asin(wide(x)));
}

inline float snoatan(float x) { return single(std::atan(wide(x))); }
inline float snocos(float x) { return static_cast<float>(std::cos(wide(x))); }
inline float snosin(float x) { return static_cast<float>(std::sin(wide(x))); }
inline float snotan(float x) { return single(std::tan(wide(x))); }
inline float snocosh(float x) { return single(std::cosh(wide(x))); }
inline float snosinh(float x) { return single(std::sinh(wide(x))); }
inline float snotanh(float x) { return single(std::tanh(wide(x))); }
inline float snoexp(float x) { return single(std::exp(wide(x))); }
inline float sno10x(float x) { return single(std::pow(10.0, wide(x))); }
inline float snosqr(float x) { return single(wide(x) * wide(x)); }
inline float snosqrt(float x) { return single(std::sqrt(wide(x))); }
inline float snopwr(float x, float y) { return single(std::pow(wide(x), wide(y))); }
inline double dnoerf(double x) { return std::erf(x); }
inline double dnoerfc(double x) { return std::erfc(x); }

inline float magxy(float x, float y) {
    if (x == 0 && y == 0) return 0;
    return single(std::hypot(wide(x), wide(y)));
}

inline double dnoasinh(double x) {
    const double s = std::sqrt(x * x + 1) + x;
    return std::log(clamp_between(s, 1e38, 1e-37));
}

inline float snoasinh(float x) {
    const double s = std::sqrt(wide(x) * wide(x) + 1) + wide(x);
    return static_cast<float>(std::log(clamp_between(s, 1e38, 1e-37)));
}

inline double dnoacosh(double x) {
    const double t = clamp_double(x * x - 1);
    if (t < 0) {
        flag = true;
        return 0;
    }
    const double s = std::sqrt(t) + x;
    if (s < 0 || s == 0) {
        flag = true;
        return 0;
    }
    return std::log(s);
}

inline float snoacosh(float x) {
    const double t = clamp_double(wide(x) * wide(x) - 1);
    if (t < 0) {
        flag = true;
        return 0;
    }
    const double s = std::sqrt(t) + wide(x);
    if (s < 0 || s == 0) {
        flag = true;
        return 0;
    }
    return static_cast<float>(std::log(s));
}

inline double dnoatanh(double x) {
    if (x > -1 && x < 1) return 0.5 * std::log((x + 1) / (1 - x));
    flag = true;
    if (x == 1 || x == -1) return std::numeric_limits<double>::infinity();
    return std::numeric_limits<double>::quiet_NaN();
}

inline float snoatanh(float x) {
    if (x > -1 && x < 1) return static_cast<float>(0.5 * std::log((wide(x) + 1) / (1 - wide(x))));
    flag = true;
    if (x == 1 || x == -1) return std::numeric_limits<float>::infinity();
    return std::numeric_limits<float>::quiet_NaN();
}

inline double dnoatan2(double y, double x) {
    if (x == 0 && y > 0) return 1.5707963267948966;
    if (x == 0 && y < 0) return -1.5707963267948966;
    if (x == 0 && y == 0) return 0;
    if (y == 0 && x > 0) return 0;
    if (y == 0 && x < 0) return 3.141592653589793;
    return std::atan2(y, x);
}

inline float snoatan2(float y, float x) {
    if (x == 0 && y > 0) return static_cast<float>(1.5707963267948966);
    if (x == 0 && y < 0) return static_cast<float>(-1.5707963267948966);
    if (x == 0 && y == 0) return 0;
    if (y == 0 && x > 0) return 0;
    if (y == 0 && x < 0) return static_cast<float>(3.141592653589793);
    return single(std::atan2(wide(y), wide(x)));
}

inline std::int32_t truncate(double v) {
    if (v > 2147483647.0) return 2147483647;
    if (v < -2147483647.0) return -2147483647;
    if (v != v) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(v);
}

inline std::int32_t eeround(double x) {
    if (x >= 0) return truncate(x + 0.5);
    return truncate(x - 0.5);
}

inline std::int32_t eelround(double x) {
    if (x < 0) return truncate(x - 0.5);
    return truncate(x + 0.5);
}

inline double eedround(double x) { return static_cast<double>(eeround(x)); }

}  // namespace orvix::test::model
