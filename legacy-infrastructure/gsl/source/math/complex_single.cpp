#include <orvix/gsl/complex_functions_single.h>

#include "math/complex_functions.h"

namespace {

namespace math = orvix::gsl::math;
using Number = math::Complex<float>;

}  // namespace

void gmath_csnoadd(float x, float y, float u, float v, float* re_out, float* im_out) {
    store(Number{x, y} + Number{u, v}, re_out, im_out);
}

void gmath_csnosub(float x, float y, float u, float v, float* re_out, float* im_out) {
    store(Number{x, y} - Number{u, v}, re_out, im_out);
}

void gmath_csnomlt(float x, float y, float u, float v, float* re_out, float* im_out) {
    store(math::multiply(Number{x, y}, {u, v}), re_out, im_out);
}

void gmath_csnodiv(float x, float y, float u, float v, float* re_out, float* im_out) {
    store(math::divide(Number{x, y}, {u, v}), re_out, im_out);
}

void gmath_csnopwr(float x, float y, float u, float v, float* re_out, float* im_out) {
    store(math::power(Number{x, y}, {u, v}), re_out, im_out);
}

void gmath_csnoexp(float x, float y, float* re_out, float* im_out) { store(math::exp(Number{x, y}), re_out, im_out); }

void gmath_csno10x(float x, float y, float* re_out, float* im_out) {
    store(math::power_of_ten(Number{x, y}), re_out, im_out);
}

void gmath_csnolog(float x, float y, float* re_out, float* im_out) { store(math::log(Number{x, y}), re_out, im_out); }

void gmath_csnolog10(float x, float y, float* re_out, float* im_out) {
    store(math::log10(Number{x, y}), re_out, im_out);
}

void gmath_csnosqr(float x, float y, float* re_out, float* im_out) {
    store(math::square(Number{x, y}), re_out, im_out);
}

void gmath_csnosqrt(float x, float y, float* re_out, float* im_out) { store(math::sqrt(Number{x, y}), re_out, im_out); }

void gmath_csnocos(float x, float y, float* re_out, float* im_out) { store(math::cos(Number{x, y}), re_out, im_out); }

void gmath_csnosin(float x, float y, float* re_out, float* im_out) { store(math::sin(Number{x, y}), re_out, im_out); }

void gmath_csnotan(float x, float y, float* re_out, float* im_out) { store(math::tan(Number{x, y}), re_out, im_out); }

void gmath_csnoacos(float x, float y, float* re_out, float* im_out) { store(math::acos(Number{x, y}), re_out, im_out); }

void gmath_csnoasin(float x, float y, float* re_out, float* im_out) { store(math::asin(Number{x, y}), re_out, im_out); }

void gmath_csnoatan(float x, float y, float* re_out, float* im_out) { store(math::atan(Number{x, y}), re_out, im_out); }

void gmath_csnocosh(float x, float y, float* re_out, float* im_out) { store(math::cosh(Number{x, y}), re_out, im_out); }

void gmath_csnosinh(float x, float y, float* re_out, float* im_out) { store(math::sinh(Number{x, y}), re_out, im_out); }

void gmath_csnotanh(float x, float y, float* re_out, float* im_out) { store(math::tanh(Number{x, y}), re_out, im_out); }

void gmath_csnoacosh(float x, float y, float* re_out, float* im_out) {
    store(math::acosh(Number{x, y}), re_out, im_out);
}

void gmath_csnoasinh(float x, float y, float* re_out, float* im_out) {
    store(math::asinh(Number{x, y}), re_out, im_out);
}

void gmath_csnoatanh(float x, float y, float* re_out, float* im_out) {
    store(math::atanh(Number{x, y}), re_out, im_out);
}
