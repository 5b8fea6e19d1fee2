#include <orvix/gsl/complex_functions.h>

#include "math/complex_functions.h"

namespace {

namespace math = orvix::gsl::math;
using Number = math::Complex<double>;

}  // namespace

void gmath_cdnoadd(double x, double y, double u, double v, double* re_out, double* im_out) {
    store(Number{x, y} + Number{u, v}, re_out, im_out);
}

void gmath_cdnosub(double x, double y, double u, double v, double* re_out, double* im_out) {
    store(Number{x, y} - Number{u, v}, re_out, im_out);
}

void gmath_cdnomlt(double x, double y, double u, double v, double* re_out, double* im_out) {
    store(math::multiply(Number{x, y}, {u, v}), re_out, im_out);
}

void gmath_cdnodiv(double x, double y, double u, double v, double* re_out, double* im_out) {
    store(math::divide(Number{x, y}, {u, v}), re_out, im_out);
}

void gmath_cdnopwr(double x, double y, double u, double v, double* re_out, double* im_out) {
    store(math::power(Number{x, y}, {u, v}), re_out, im_out);
}

void gmath_cdnoexp(double x, double y, double* re_out, double* im_out) {
    store(math::exp(Number{x, y}), re_out, im_out);
}

void gmath_cdno10x(double x, double y, double* re_out, double* im_out) {
    store(math::power_of_ten(Number{x, y}), re_out, im_out);
}

void gmath_cdnolog(double x, double y, double* re_out, double* im_out) {
    store(math::log(Number{x, y}), re_out, im_out);
}

void gmath_cdnolog10(double x, double y, double* re_out, double* im_out) {
    store(math::log10(Number{x, y}), re_out, im_out);
}

void gmath_cdnosqr(double x, double y, double* re_out, double* im_out) {
    store(math::square(Number{x, y}), re_out, im_out);
}

void gmath_cdnosqrt(double x, double y, double* re_out, double* im_out) {
    store(math::sqrt(Number{x, y}), re_out, im_out);
}

void gmath_cdnocos(double x, double y, double* re_out, double* im_out) {
    store(math::cos(Number{x, y}), re_out, im_out);
}

void gmath_cdnosin(double x, double y, double* re_out, double* im_out) {
    store(math::sin(Number{x, y}), re_out, im_out);
}

void gmath_cdnotan(double x, double y, double* re_out, double* im_out) {
    store(math::tan(Number{x, y}), re_out, im_out);
}

void gmath_cdnoacos(double x, double y, double* re_out, double* im_out) {
    store(math::acos(Number{x, y}), re_out, im_out);
}

void gmath_cdnoasin(double x, double y, double* re_out, double* im_out) {
    store(math::asin(Number{x, y}), re_out, im_out);
}

void gmath_cdnoatan(double x, double y, double* re_out, double* im_out) {
    store(math::atan(Number{x, y}), re_out, im_out);
}

void gmath_cdnocosh(double x, double y, double* re_out, double* im_out) {
    store(math::cosh(Number{x, y}), re_out, im_out);
}

void gmath_cdnosinh(double x, double y, double* re_out, double* im_out) {
    store(math::sinh(Number{x, y}), re_out, im_out);
}

void gmath_cdnotanh(double x, double y, double* re_out, double* im_out) {
    store(math::tanh(Number{x, y}), re_out, im_out);
}

void gmath_cdnoacosh(double x, double y, double* re_out, double* im_out) {
    store(math::acosh(Number{x, y}), re_out, im_out);
}

void gmath_cdnoasinh(double x, double y, double* re_out, double* im_out) {
    store(math::asinh(Number{x, y}), re_out, im_out);
}

void gmath_cdnoatanh(double x, double y, double* re_out, double* im_out) {
    store(math::atanh(Number{x, y}), re_out, im_out);
}
