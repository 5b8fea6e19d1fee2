#include "oracle.h"

#include <algorithm>
#include <cmath>

namespace orvix::accuracy {

namespace {

template <class Function, class... Operands>
Number applied(Function function, const Operands&... operands) {
    Number result;
    function(result.get(), operands.get()..., MPC_RNDNN);
    return result;
}

Number operator+(const Number& a, const Number& b) { return applied(mpc_add, a, b); }
Number operator-(const Number& a, const Number& b) { return applied(mpc_sub, a, b); }
Number operator*(const Number& a, const Number& b) { return applied(mpc_mul, a, b); }
Number operator/(const Number& a, const Number& b) { return applied(mpc_div, a, b); }

const Number one(1);
const Number i(0, 1);
const Number minus_i(0, -1);

// |computed - exact| in units in the last place of `scale`.
double in_units(const Real& difference, mpfr_srcptr scale, int bits) {
    if (mpfr_zero_p(difference.get()) != 0) return 0;
    if (mpfr_zero_p(scale) != 0 || mpfr_number_p(difference.get()) == 0) return INFINITY;
    Real unit;
    mpfr_set_ui_2exp(unit.get(), 1, mpfr_get_exp(scale) - bits, MPFR_RNDN);
    Real units;
    mpfr_div(units.get(), difference.get(), unit.get(), MPFR_RNDN);
    return std::fabs(mpfr_get_d(units.get(), MPFR_RNDN));
}

}  // namespace

double error(double computed, mpfr_srcptr exact, int bits) {
    Real difference(computed);
    mpfr_sub(difference.get(), difference.get(), exact, MPFR_RNDN);
    return in_units(difference, exact, bits);
}

double error(std::complex<double> computed, const Number& exact, int bits) {
    const Number difference = Number(computed.real(), computed.imag()) - exact;
    Real distance;
    mpc_abs(distance.get(), difference.get(), MPFR_RNDN);
    Real modulus;
    mpc_abs(modulus.get(), exact.get(), MPFR_RNDN);
    return in_units(distance, modulus.get(), bits);
}

double error_of_parts(std::complex<double> computed, const Number& exact, int bits) {
    return std::max(error(computed.real(), exact.re(), bits), error(computed.imag(), exact.im(), bits));
}

Number exp(const Number& z) { return applied(mpc_exp, z); }
Number power_of_ten(const Number& z) { return power(Number(10), z); }
Number log(const Number& z) { return applied(mpc_log, z); }
Number log10(const Number& z) { return applied(mpc_log10, z); }
Number square(const Number& z) { return applied(mpc_sqr, z); }
Number sqrt(const Number& z) { return applied(mpc_sqrt, z); }
Number cos(const Number& z) { return applied(mpc_cos, z); }
Number sin(const Number& z) { return applied(mpc_sin, z); }
Number tan(const Number& z) { return applied(mpc_tan, z); }
Number cosh(const Number& z) { return applied(mpc_cosh, z); }
Number sinh(const Number& z) { return applied(mpc_sinh, z); }
Number tanh(const Number& z) { return applied(mpc_tanh, z); }
Number multiply(const Number& a, const Number& b) { return a * b; }
Number divide(const Number& a, const Number& b) { return a / b; }
Number power(const Number& a, const Number& b) { return applied(mpc_pow, a, b); }

Number acos(const Number& z) { return minus_i * log(z + sqrt(z * z - one)); }
Number asin(const Number& z) { return minus_i * log(i * z + sqrt(one - z * z)); }
Number atan(const Number& z) { return Number(0, 0.5) * log((i + z) / (i - z)); }
Number acosh_of_two_roots(const Number& z) { return log(z + sqrt(z + one) * sqrt(z - one)); }
Number acosh_of_one_root(const Number& z) { return log(z + sqrt(z * z - one)); }
Number asinh(const Number& z) { return log(z + sqrt(z * z + one)); }
Number atanh(const Number& z) { return Number(0.5) * log((one + z) / (one - z)); }

}  // namespace orvix::accuracy
