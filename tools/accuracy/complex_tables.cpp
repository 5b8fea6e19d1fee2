#include "oracle.h"
#include "tables.h"

#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/complex_functions_single.h>

#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>

namespace orvix::accuracy {

namespace {

constexpr int argument_count = 4000;

// Regions of the complex plane. Each makes random numbers.
class Arguments {
public:
    // Any direction; the logarithm of the modulus is spread evenly.
    std::complex<double> with_modulus(double low, double high) {
        return std::polar(spread(low, high), uniform(-std::numbers::pi, std::numbers::pi));
    }
    std::complex<double> near_one() { return 1.0 + with_modulus(1e-6, 1e-2); }
    std::complex<double> near_real_axis() { return {sign() * spread(0.25, 4), sign() * spread(1e-8, 1e-4)}; }

private:
    double uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random_); }
    double spread(double low, double high) { return std::exp(uniform(std::log(low), std::log(high))); }
    double sign() { return random_() % 2 == 0 ? -1 : 1; }

    std::mt19937_64 random_{1};
};

struct Region {
    const char* name;
    std::complex<double> (*next)(Arguments&);
};

constexpr Region regions[] = {
    {"1e-8 to 0.01", [](Arguments& arguments) { return arguments.with_modulus(1e-8, 1e-2); }},
    {"0.25 to 4", [](Arguments& arguments) { return arguments.with_modulus(0.25, 4); }},
    {"near 1", [](Arguments& arguments) { return arguments.near_one(); }},
    {"near the real axis", [](Arguments& arguments) { return arguments.near_real_axis(); }},
    {"4 to 40", [](Arguments& arguments) { return arguments.with_modulus(4, 40); }},
    {"1e3 to 1e8", [](Arguments& arguments) { return arguments.with_modulus(1e3, 1e8); }},
};
constexpr std::size_t far_region = 5;  // where exponentials leave their range

template <class Real>
struct Function {
    const char* name;
    void (*of_one)(Real, Real, Real*, Real*);
    void (*of_two)(Real, Real, Real, Real, Real*, Real*);
    Number (*exact_of_one)(const Number&);
    Number (*exact_of_two)(const Number&, const Number&);
    bool is_exponential;
};

// Errors of a function in one region.
struct Errors {
    std::vector<double> whole;
    std::vector<double> part;
};

// A result near the ends of the range, where parts of it are clamped, says nothing about accuracy.
bool counts(const Number& exact, double upper) {
    accuracy::Real modulus;
    mpc_abs(modulus.get(), exact.get(), MPFR_RNDN);
    return mpfr_cmp_d(modulus.get(), upper) < 0 && mpfr_cmp_d(modulus.get(), 1 / upper) > 0;
}

template <class Real>
Errors errors_in(const Region& region, const Function<Real>& function) {
    constexpr int bits = std::numeric_limits<Real>::digits;
    constexpr double upper = bits == 24 ? 1e30 : 1e300;
    Arguments arguments;
    Errors errors;
    for (int n = 0; n < argument_count; ++n) {
        const std::complex<double> z = region.next(arguments);
        const std::complex<double> w = arguments.with_modulus(0.25, 4);
        const auto x = static_cast<Real>(z.real()), y = static_cast<Real>(z.imag());
        const auto u = static_cast<Real>(w.real()), v = static_cast<Real>(w.imag());
        const Number exact_z(static_cast<double>(x), static_cast<double>(y));
        const Number exact_w(static_cast<double>(u), static_cast<double>(v));
        Real re, im;
        Number exact;
        if (function.of_one != nullptr) {
            function.of_one(x, y, &re, &im);
            exact = function.exact_of_one(exact_z);
        } else {
            function.of_two(x, y, u, v, &re, &im);
            exact = function.exact_of_two(exact_z, exact_w);
        }
        if (!counts(exact, upper)) continue;
        const std::complex<double> computed(static_cast<double>(re), static_cast<double>(im));
        errors.whole.push_back(error(computed, exact, bits));
        errors.part.push_back(error_of_parts(computed, exact, bits));
    }
    return errors;
}

constexpr Function<double> double_functions[] = {
    {"`gmath_cdnomlt`", nullptr, gmath_cdnomlt, nullptr, multiply, false},
    {"`gmath_cdnodiv`", nullptr, gmath_cdnodiv, nullptr, divide, false},
    {"`gmath_cdnopwr`", nullptr, gmath_cdnopwr, nullptr, power, true},
    {"`gmath_cdnoexp`", gmath_cdnoexp, nullptr, exp, nullptr, true},
    {"`gmath_cdno10x`", gmath_cdno10x, nullptr, power_of_ten, nullptr, true},
    {"`gmath_cdnolog`", gmath_cdnolog, nullptr, log, nullptr, false},
    {"`gmath_cdnolog10`", gmath_cdnolog10, nullptr, log10, nullptr, false},
    {"`gmath_cdnosqr`", gmath_cdnosqr, nullptr, square, nullptr, false},
    {"`gmath_cdnosqrt`", gmath_cdnosqrt, nullptr, sqrt, nullptr, false},
    {"`gmath_cdnocos`", gmath_cdnocos, nullptr, cos, nullptr, true},
    {"`gmath_cdnosin`", gmath_cdnosin, nullptr, sin, nullptr, true},
    {"`gmath_cdnotan`", gmath_cdnotan, nullptr, tan, nullptr, true},
    {"`gmath_cdnoacos`", gmath_cdnoacos, nullptr, acos, nullptr, false},
    {"`gmath_cdnoasin`", gmath_cdnoasin, nullptr, asin, nullptr, false},
    {"`gmath_cdnoatan`", gmath_cdnoatan, nullptr, atan, nullptr, false},
    {"`gmath_cdnocosh`", gmath_cdnocosh, nullptr, cosh, nullptr, true},
    {"`gmath_cdnosinh`", gmath_cdnosinh, nullptr, sinh, nullptr, true},
    {"`gmath_cdnotanh`", gmath_cdnotanh, nullptr, tanh, nullptr, true},
    {"`gmath_cdnoacosh`", gmath_cdnoacosh, nullptr, acosh_of_two_roots, nullptr, false},
    {"`gmath_cdnoasinh`", gmath_cdnoasinh, nullptr, asinh, nullptr, false},
    {"`gmath_cdnoatanh`", gmath_cdnoatanh, nullptr, atanh, nullptr, false},
};

constexpr Function<float> single_functions[] = {
    {"`gmath_csnomlt`", nullptr, gmath_csnomlt, nullptr, multiply, false},
    {"`gmath_csnodiv`", nullptr, gmath_csnodiv, nullptr, divide, false},
    {"`gmath_csnopwr`", nullptr, gmath_csnopwr, nullptr, power, true},
    {"`gmath_csnoexp`", gmath_csnoexp, nullptr, exp, nullptr, true},
    {"`gmath_csno10x`", gmath_csno10x, nullptr, power_of_ten, nullptr, true},
    {"`gmath_csnolog`", gmath_csnolog, nullptr, log, nullptr, false},
    {"`gmath_csnolog10`", gmath_csnolog10, nullptr, log10, nullptr, false},
    {"`gmath_csnosqr`", gmath_csnosqr, nullptr, square, nullptr, false},
    {"`gmath_csnosqrt`", gmath_csnosqrt, nullptr, sqrt, nullptr, false},
    {"`gmath_csnocos`", gmath_csnocos, nullptr, cos, nullptr, true},
    {"`gmath_csnosin`", gmath_csnosin, nullptr, sin, nullptr, true},
    {"`gmath_csnotan`", gmath_csnotan, nullptr, tan, nullptr, true},
    {"`gmath_csnoacos`", gmath_csnoacos, nullptr, acos, nullptr, false},
    {"`gmath_csnoasin`", gmath_csnoasin, nullptr, asin, nullptr, false},
    {"`gmath_csnoatan`", gmath_csnoatan, nullptr, atan, nullptr, false},
    {"`gmath_csnocosh`", gmath_csnocosh, nullptr, cosh, nullptr, true},
    {"`gmath_csnosinh`", gmath_csnosinh, nullptr, sinh, nullptr, true},
    {"`gmath_csnotanh`", gmath_csnotanh, nullptr, tanh, nullptr, true},
    {"`gmath_csnoacosh`", gmath_csnoacosh, nullptr, acosh_of_one_root, nullptr, false},
    {"`gmath_csnoasinh`", gmath_csnoasinh, nullptr, asinh, nullptr, false},
    {"`gmath_csnoatanh`", gmath_csnoatanh, nullptr, atanh, nullptr, false},
};

using Table = std::vector<std::vector<std::string>>;

void print_table(const char* title, const Table& table) {
    std::printf("\n%s\n\n", title);
    std::vector<std::string> head = {"function"};
    for (const Region& region : regions) head.emplace_back(region.name);
    print_head(head);
    for (const auto& row : table) print_row(row);
}

template <class Real, std::size_t count>
void print_tables(const char* precision, const Function<Real> (&functions)[count]) {
    constexpr int bits = std::numeric_limits<Real>::digits;
    Table whole;
    Table part;
    for (const Function<Real>& function : functions) {
        whole.push_back({function.name});
        part.push_back({function.name});
        for (std::size_t i = 0; i < std::size(regions); ++i) {
            const bool leaves_range = function.is_exponential && i == far_region;
            const Errors errors = leaves_range ? Errors{} : errors_in(regions[i], function);
            whole.back().push_back(cell(errors.whole, bits));
            part.back().push_back(cell(errors.part, bits));
        }
    }
    const std::string title = std::string("### Complex functions in ") + precision + " precision, ";
    print_table((title + "the whole result").c_str(), whole);
    print_table((title + "the worse part").c_str(), part);
}

}  // namespace

void print_complex_tables() {
    print_tables("double", double_functions);
    print_tables("single", single_functions);
}

}  // namespace orvix::accuracy
