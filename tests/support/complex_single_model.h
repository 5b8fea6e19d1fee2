// A plain model of the complex functions in single precision: the formulas with real and imaginary parts written out.
#pragma once

#include "real_functions_model.h"

#include <cmath>

namespace orvix::test::model {

inline float clamp_float(float r) { return single(wide(r)); }

inline void csnoadd(float x, float y, float u, float v, float* re, float* im) {
    *re = x + u;
    *im = y + v;
}

inline void csnosub(float x, float y, float u, float v, float* re, float* im) {
    *re = x - u;
    *im = y - v;
}

inline void csnomlt(float x, float y, float u, float v, float* re, float* im) {
    *re = clamp_float(x * u - y * v);
    *im = clamp_float(y * u + x * v);
}

inline void csnodiv(float x, float y, float u, float v, float* re, float* im) {
    const float m = clamp_float(u * u + v * v);
    if (!(m > 0)) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    csnomlt(x, y, u / m, -v / m, re, im);
}

inline void csnolog(float x, float y, float* re, float* im) {
    if (x == 0 && y == 0) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    const float h = single(std::hypot(wide(x), wide(y)));
    if (!(h > 0)) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    *re = single(std::log(wide(h)));
    *im = snoatan2(y, x);
}

inline void csnolog10(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnolog(x, y, &a, &b);
    const float t = single(std::log(10.0));
    const float zero = 0;
    const float m = clamp_float(t * t + zero * zero);
    if (!(m > 0)) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    csnomlt(a, b, t / m, -zero / m, re, im);
}

inline void csnoexp(float x, float y, float* re, float* im) {
    const float e = single(std::exp(wide(x)));
    const float c = static_cast<float>(std::cos(wide(y)));
    const float s = static_cast<float>(std::sin(wide(y)));
    *re = clamp_float(e * c - s * 0);
    *im = clamp_float(e * s + c * 0);
}

inline void csnopwr(float x, float y, float u, float v, float* re, float* im) {
    if (x == 0 && y == 0) {
        *re = 0;
        *im = 0;
        return;
    }
    if (single(std::hypot(wide(x), wide(y))) == 0) {
        *re = 0;
        *im = 0;
        return;
    }
    float a;
    float b;
    csnolog(x, y, &a, &b);
    csnoexp(clamp_float(a * u - b * v), clamp_float(b * u + a * v), re, im);
}

inline void csnosqr(float x, float y, float* re, float* im) { csnopwr(x, y, 2, 0, re, im); }
inline void csnosqrt(float x, float y, float* re, float* im) { csnopwr(x, y, 0.5F, 0, re, im); }
inline void csno10x(float x, float y, float* re, float* im) { csnopwr(10, 0, x, y, re, im); }

inline void csnoacos(float x, float y, float* re, float* im) {
    const float a = clamp_float(x * x - y * y);
    const float b = clamp_float(x * y + x * y);
    float w;
    float t;
    csnopwr(a - 1, b, 0.5F, 0, &w, &t);
    float lr;
    float li;
    csnolog(w + x, t + y, &lr, &li);
    *re = clamp_float(lr * 0 - li * -1);
    *im = clamp_float(li * 0 - lr);
}

inline void csnoasin(float x, float y, float* re, float* im) {
    const float a = clamp_float(x * x - y * y);
    const float b = clamp_float(x * y + x * y);
    float w;
    float t;
    csnopwr(1 - a, -b, 0.5F, 0, &w, &t);
    float lr;
    float li;
    csnolog(w - y, t + x, &lr, &li);
    *re = clamp_float(lr * 0 - li * -1);
    *im = clamp_float(li * 0 - lr);
}

inline void csnoacosh(float x, float y, float* re, float* im) {
    const float a = clamp_float(x * x - y * y);
    const float b = clamp_float(x * y + x * y);
    float w;
    float t;
    csnopwr(a - 1, b, 0.5F, 0, &w, &t);
    csnolog(w + x, t + y, re, im);
}

inline void csnoasinh(float x, float y, float* re, float* im) {
    const float a = clamp_float(x * x - y * y);
    const float b = clamp_float(x * y + x * y);
    float w;
    float t;
    csnopwr(a + 1, b, 0.5F, 0, &w, &t);
    csnolog(w + x, t + y, re, im);
}

inline void csnoatan(float x, float y, float* re, float* im) {
    const float u = -x;
    const float v = 1 - y;
    const float m = clamp_float(u * u + v * v);
    float p = 0;
    float q = 0;
    if (m > 0) {
        const float r = u / m;
        const float s = -v / m;
        p = clamp_float(x * r - (1 + y) * s);
        q = clamp_float((1 + y) * r + x * s);
    } else {
        flag = true;
    }
    float lr;
    float li;
    csnolog(p, q, &lr, &li);
    *re = clamp_float(lr * 0 - li * 0.5F);
    *im = clamp_float(li * 0 + lr * 0.5F);
}

inline void csnoatanh(float x, float y, float* re, float* im) {
    const float u = 1 - x;
    const float v = -y;
    const float m = clamp_float(u * u + v * v);
    float p = 0;
    float q = 0;
    if (m > 0) {
        const float r = u / m;
        const float s = -v / m;
        p = clamp_float((1 + x) * r - y * s);
        q = clamp_float(y * r + (1 + x) * s);
    } else {
        flag = true;
    }
    float lr;
    float li;
    csnolog(p, q, &lr, &li);
    *re = clamp_float(lr * 0.5F - li * 0);
    *im = clamp_float(lr * 0 + li * 0.5F);
}

inline void csnocos(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnoexp(-y, x, &a, &b);
    float c;
    float d;
    csnoexp(y, -x, &c, &d);
    *re = clamp_float(0.5F * (a + c));
    *im = clamp_float(0.5F * (b + d));
}

inline void csnosin(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnoexp(-y, x, &a, &b);
    float c;
    float d;
    csnoexp(y, -x, &c, &d);
    *re = clamp_float((a - c) * 0 - (b - d) * -0.5F);
    *im = clamp_float((b - d) * 0 + (a - c) * -0.5F);
}

inline void csnotan(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnoexp(-y, x, &a, &b);
    float c;
    float d;
    csnoexp(y, -x, &c, &d);
    const float u = a + c;
    const float v = b + d;
    const float m = clamp_float(u * u + v * v);
    float p = 0;
    float q = 0;
    if (m > 0) {
        const float r = u / m;
        const float s = -v / m;
        p = clamp_float((a - c) * r - (b - d) * s);
        q = clamp_float((b - d) * r + (a - c) * s);
    } else {
        flag = true;
    }
    *re = clamp_float(p * 0 - q * -1);
    *im = clamp_float(q * 0 + p * -1);
}

inline void csnocosh(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnoexp(x, y, &a, &b);
    float c;
    float d;
    csnoexp(-x, -y, &c, &d);
    *re = clamp_float(0.5F * (a + c));
    *im = clamp_float(0.5F * (b + d));
}

inline void csnosinh(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnoexp(x, y, &a, &b);
    float c;
    float d;
    csnoexp(-x, -y, &c, &d);
    *re = clamp_float(0.5F * (a - c));
    *im = clamp_float(0.5F * (b - d));
}

inline void csnotanh(float x, float y, float* re, float* im) {
    float a;
    float b;
    csnoexp(x, y, &a, &b);
    float c;
    float d;
    csnoexp(-x, -y, &c, &d);
    const float u = a + c;
    const float v = b + d;
    const float m = clamp_float(u * u + v * v);
    if (!(m > 0)) {
        flag = true;
        *re = 0;
        *im = 0;
        return;
    }
    csnomlt(a - c, b - d, u / m, -v / m, re, im);
}

}  // namespace orvix::test::model
