// A plain model of the complex functions in double precision: the formulas with real and imaginary parts written out.
#pragma once

#include "real_functions_model.h"

#include <cmath>

namespace orvix::test::model {

inline void cdnoadd(double x, double y, double u, double v, double* re, double* im) {
    *re = x + u;
    *im = y + v;
}

inline void cdnosub(double x, double y, double u, double v, double* re, double* im) {
    *re = x - u;
    *im = y - v;
}

inline void cdnomlt(double x, double y, double u, double v, double* re, double* im) {
    *re = clamp_double(x * u - y * v);
    *im = clamp_double(y * u + x * v);
}

inline void cdnodiv(double x, double y, double u, double v, double* re, double* im) {
    const double m = clamp_double(u * u + v * v);
    if (!(m > 0)) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    const double p = u / m;
    const double q = -v / m;
    *re = clamp_double(p * x - q * y);
    *im = clamp_double(q * x + p * y);
}

inline void cdnolog(double x, double y, double* re, double* im) {
    const double h = std::hypot(x, y);
    if (!(h > 0)) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    *re = std::log(h);
    if (x == 0 && y > 0)
        *im = 1.5707963267948966;
    else if (x == 0 && y < 0)
        *im = -1.5707963267948966;
    else if (y == 0 && x > 0)
        *im = 0;
    else if (y == 0 && x < 0)
        *im = 3.141592653589793;
    else
        *im = std::atan2(y, x);
}

inline void cdnolog10(double x, double y, double* re, double* im) {
    double a;
    double b;
    cdnolog(x, y, &a, &b);
    cdnodiv(a, b, 2.30258509, 0, re, im);
}

inline void cdnoexp(double x, double y, double* re, double* im) {
    const double e = std::exp(x);
    const double c = std::cos(y);
    const double s = std::sin(y);
    *re = clamp_double(e * c - s * 0);
    *im = clamp_double(e * s + c * 0);
}

inline void cdnopwr(double x, double y, double u, double v, double* re, double* im) {
    if (x == 0 && y == 0) {
        *re = 0;
        *im = 0;
        return;
    }
    double a;
    double b;
    cdnolog(x, y, &a, &b);
    cdnoexp(clamp_double(a * u - b * v), clamp_double(b * u + a * v), re, im);
}

inline void cdnosqr(double x, double y, double* re, double* im) { cdnopwr(x, y, 2, 0, re, im); }
inline void cdnosqrt(double x, double y, double* re, double* im) { cdnopwr(x, y, 0.5, 0, re, im); }
inline void cdno10x(double x, double y, double* re, double* im) { cdnopwr(10, 0, x, y, re, im); }

inline void cdnoacos(double x, double y, double* re, double* im) {
    const double a = clamp_double(x * x - y * y);
    const double b = clamp_double(x * y + x * y);
    double w;
    double t;
    cdnopwr(a - 1, b, 0.5, 0, &w, &t);
    double lr;
    double li;
    cdnolog(w + x, t + y, &lr, &li);
    *re = clamp_double(lr * 0 - li * -1);
    *im = clamp_double(li * 0 - lr);
}

inline void cdnoasin(double x, double y, double* re, double* im) {
    const double a = clamp_double(x * x - y * y);
    const double b = clamp_double(x * y + x * y);
    double w;
    double t;
    cdnopwr(1 - a, -b, 0.5, 0, &w, &t);
    double lr;
    double li;
    cdnolog(w - y, t + x, &lr, &li);
    *re = clamp_double(lr * 0 - li * -1);
    *im = clamp_double(li * 0 - lr);
}

inline void cdnoacosh(double x, double y, double* re, double* im) {
    double p;
    double q;
    cdnopwr(x + 1, y, 0.5, 0, &p, &q);
    double r;
    double s;
    cdnopwr(x - 1, y, 0.5, 0, &r, &s);
    const double m = clamp_double(r * p - s * q);
    const double n = clamp_double(s * p + r * q);
    cdnolog(m + x, n + y, re, im);
}

inline void cdnoasinh(double x, double y, double* re, double* im) {
    const double a = clamp_double(x * x - y * y);
    const double b = clamp_double(x * y + x * y);
    double w;
    double t;
    cdnopwr(a + 1, b, 0.5, 0, &w, &t);
    cdnolog(w + x, t + y, re, im);
}

inline void cdnoatan(double x, double y, double* re, double* im) {
    double p;
    double q;
    cdnodiv(x, 1 + y, -x, 1 - y, &p, &q);
    double lr;
    double li;
    cdnolog(p, q, &lr, &li);
    *re = clamp_double(lr * 0 - li * 0.5);
    *im = clamp_double(li * 0 + lr * 0.5);
}

inline void cdnoatanh(double x, double y, double* re, double* im) {
    double p;
    double q;
    cdnodiv(1 + x, y, 1 - x, -y, &p, &q);
    double lr;
    double li;
    cdnolog(p, q, &lr, &li);
    *re = clamp_double(lr * 0.5 - li * 0);
    *im = clamp_double(lr * 0 + li * 0.5);
}

// e times (c, s), clamped.
inline void scaled_direction(double e, double c, double s, double* re, double* im) {
    *re = clamp_double(e * c - s * 0);
    *im = clamp_double(e * s + c * 0);
}

inline void cdnocos(double x, double y, double* re, double* im) {
    double a;
    double b;
    scaled_direction(std::exp(-y), std::cos(x), std::sin(x), &a, &b);
    double c;
    double d;
    scaled_direction(std::exp(y), std::cos(-x), std::sin(-x), &c, &d);
    *re = clamp_double(0.5 * (a + c));
    *im = clamp_double(0.5 * (b + d));
}

inline void cdnosin(double x, double y, double* re, double* im) {
    double a;
    double b;
    scaled_direction(std::exp(-y), std::cos(x), std::sin(x), &a, &b);
    double c;
    double d;
    scaled_direction(std::exp(y), std::cos(-x), std::sin(-x), &c, &d);
    *re = clamp_double((a - c) * 0 - (b - d) * -0.5);
    *im = clamp_double((b - d) * 0 + (a - c) * -0.5);
}

inline void cdnotan(double x, double y, double* re, double* im) {
    double a;
    double b;
    scaled_direction(std::exp(-y), std::cos(x), std::sin(x), &a, &b);
    double c;
    double d;
    scaled_direction(std::exp(y), std::cos(-x), std::sin(-x), &c, &d);
    double p;
    double q;
    cdnodiv(a - c, b - d, a + c, b + d, &p, &q);
    *re = clamp_double(p * 0 - q * -1);
    *im = clamp_double(q * 0 + p * -1);
}

inline void cdnocosh(double x, double y, double* re, double* im) {
    double a;
    double b;
    scaled_direction(std::exp(x), std::cos(y), std::sin(y), &a, &b);
    double c;
    double d;
    scaled_direction(std::exp(-x), std::cos(-y), std::sin(-y), &c, &d);
    *re = clamp_double(0.5 * (a + c));
    *im = clamp_double(0.5 * (b + d));
}

inline void cdnosinh(double x, double y, double* re, double* im) {
    double a;
    double b;
    scaled_direction(std::exp(x), std::cos(y), std::sin(y), &a, &b);
    double c;
    double d;
    scaled_direction(std::exp(-x), std::cos(-y), std::sin(-y), &c, &d);
    *re = clamp_double(0.5 * (a - c));
    *im = clamp_double(0.5 * (b - d));
}

inline void cdnotanh(double x, double y, double* re, double* im) {
    double a;
    double b;
    scaled_direction(std::exp(x), std::cos(y), std::sin(y), &a, &b);
    double c;
    double d;
    scaled_direction(std::exp(-x), std::cos(-y), std::sin(-y), &c, &d);
    cdnodiv(a - c, b - d, a + c, b + d, re, im);
}

}  // namespace orvix::test::model
