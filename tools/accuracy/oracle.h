// Numbers of many digits, to judge those of few by.
#pragma once

#include <mpc.h>
#include <mpfr.h>

#include <complex>

namespace orvix::accuracy {

// Enough for the worst cancellation of any formula over the regions of the tables, several times over.
inline constexpr mpfr_prec_t precision_bits = 400;

// A real number.
class Real {
public:
    explicit Real(double value = 0) {
        mpfr_init2(value_, precision_bits);
        mpfr_set_d(value_, value, MPFR_RNDN);
    }
    Real(const Real& other) {
        mpfr_init2(value_, precision_bits);
        mpfr_set(value_, other.value_, MPFR_RNDN);
    }
    Real& operator=(const Real& other) {
        mpfr_set(value_, other.value_, MPFR_RNDN);
        return *this;
    }
    ~Real() { mpfr_clear(value_); }

    mpfr_ptr get() { return value_; }
    mpfr_srcptr get() const { return value_; }

private:
    mpfr_t value_;
};

// A complex number.
class Number {
public:
    explicit Number(double re = 0, double im = 0) {
        mpc_init2(value_, precision_bits);
        mpc_set_d_d(value_, re, im, MPC_RNDNN);
    }
    Number(const Number& other) {
        mpc_init2(value_, precision_bits);
        mpc_set(value_, other.value_, MPC_RNDNN);
    }
    Number& operator=(const Number& other) {
        mpc_set(value_, other.value_, MPC_RNDNN);
        return *this;
    }
    ~Number() { mpc_clear(value_); }

    mpc_ptr get() { return value_; }
    mpc_srcptr get() const { return value_; }
    mpfr_srcptr re() const { return mpc_realref(value_); }
    mpfr_srcptr im() const { return mpc_imagref(value_); }

private:
    mpc_t value_;
};

// Errors in units in the last place of the exact result, for a precision of that many bits.
double error(double computed, mpfr_srcptr exact, int bits);                           // of a real result
double error(std::complex<double> computed, const Number& exact, int bits);           // against the exact modulus
double error_of_parts(std::complex<double> computed, const Number& exact, int bits);  // the worse part, against itself

// Functions of one operand, and of two.
Number exp(const Number& z);
Number power_of_ten(const Number& z);
Number log(const Number& z);
Number log10(const Number& z);
Number square(const Number& z);
Number sqrt(const Number& z);
Number cos(const Number& z);
Number sin(const Number& z);
Number tan(const Number& z);
Number cosh(const Number& z);
Number sinh(const Number& z);
Number tanh(const Number& z);
Number multiply(const Number& a, const Number& b);
Number divide(const Number& a, const Number& b);
Number power(const Number& a, const Number& b);

// The inverses, on the branches that the library's formulas choose.
Number acos(const Number& z);
Number asin(const Number& z);
Number atan(const Number& z);
Number acosh_of_two_roots(const Number& z);
Number acosh_of_one_root(const Number& z);
Number asinh(const Number& z);
Number atanh(const Number& z);

}  // namespace orvix::accuracy
