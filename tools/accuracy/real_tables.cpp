#include "oracle.h"
#include "tables.h"

#include <orvix/gsl/real_functions.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace orvix::accuracy {

namespace {

constexpr int argument_count = 10'000;

// Positive arguments, and negative ones of common size. The logarithm of the magnitude is spread evenly; near 1 it is
// that of the distance, which goes both ways.
struct Region {
    const char* name;
    double low;
    double high;
};

constexpr Region regions[] = {{"1e-8 to 0.01", 1e-8, 1e-2}, {"0.01 to 0.99", 0.01, 0.99}, {"near 1", 0, 0},
                              {"1.01 to 40", 1.01, 40},     {"-40 to -0.01", -40, -0.01}, {"1e3 to 1e8", 1e3, 1e8}};

double next_argument(const Region& region, std::mt19937_64& random) {
    const auto spread = [&](double low, double high) {
        return std::exp(std::uniform_real_distribution<double>(std::log(low), std::log(high))(random));
    };
    if (region.low == 0) return 1 + spread(1e-6, 1e-2) * (random() % 2 == 0 ? -1 : 1);
    return region.low < 0 ? -spread(-region.high, -region.low) : spread(region.low, region.high);
}

using Exact = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
using ExactOfTwo = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t);

template <class Argument>
struct Function {
    const char* name;
    Argument (*of_one)(Argument);
    Argument (*of_two)(Argument, Argument);
    Exact exact_of_one;
    ExactOfTwo exact_of_two;
};

// A result that is clamped, or outside the function's domain, says nothing about accuracy.
bool counts(const Real& exact) {
    if (mpfr_number_p(exact.get()) == 0) return false;
    const double magnitude = std::fabs(mpfr_get_d(exact.get(), MPFR_RNDN));
    return magnitude < 1e38 && magnitude > 1e-37;
}

template <class Argument>
void print_function(const Function<Argument>& function) {
    std::vector<std::string> cells = {function.name};
    for (const Region& region : regions) {
        std::mt19937_64 random(1);
        std::vector<double> errors;
        for (int n = 0; n < argument_count; ++n) {
            const auto x = static_cast<Argument>(next_argument(region, random));
            const auto y = static_cast<Argument>(next_argument(regions[1], random));
            const Real exact_x(static_cast<double>(x));
            const Real exact_y(static_cast<double>(y));
            Real exact;
            Argument computed;
            if (function.of_one != nullptr) {
                computed = function.of_one(x);
                function.exact_of_one(exact.get(), exact_x.get(), MPFR_RNDN);
            } else {
                computed = function.of_two(x, y);
                function.exact_of_two(exact.get(), exact_x.get(), exact_y.get(), MPFR_RNDN);
            }
            if (!counts(exact)) continue;
            errors.push_back(error(static_cast<double>(computed), exact.get(), std::numeric_limits<Argument>::digits));
        }
        cells.push_back(cell(errors, std::numeric_limits<Argument>::digits));
    }
    print_row(cells);
}

constexpr Function<float> single_functions[] = {
    {"`gmath_snoexp`", gmath_snoexp, nullptr, mpfr_exp, nullptr},
    {"`gmath_sno10x`", gmath_sno10x, nullptr, mpfr_exp10, nullptr},
    {"`gmath_snolog`", gmath_snolog, nullptr, mpfr_log, nullptr},
    {"`gmath_snolog10`", gmath_snolog10, nullptr, mpfr_log10, nullptr},
    {"`gmath_snopwr`", nullptr, gmath_snopwr, nullptr, mpfr_pow},
    {"`gmath_snosqr`", gmath_snosqr, nullptr, mpfr_sqr, nullptr},
    {"`gmath_snosqrt`", gmath_snosqrt, nullptr, mpfr_sqrt, nullptr},
    {"`gmath_magxy`", nullptr, gmath_magxy, nullptr, mpfr_hypot},
    {"`gmath_snocos`", gmath_snocos, nullptr, mpfr_cos, nullptr},
    {"`gmath_snosin`", gmath_snosin, nullptr, mpfr_sin, nullptr},
    {"`gmath_snotan`", gmath_snotan, nullptr, mpfr_tan, nullptr},
    {"`gmath_snoacos`", gmath_snoacos, nullptr, mpfr_acos, nullptr},
    {"`gmath_snoasin`", gmath_snoasin, nullptr, mpfr_asin, nullptr},
    {"`gmath_snoatan`", gmath_snoatan, nullptr, mpfr_atan, nullptr},
    {"`gmath_snoatan2`", nullptr, gmath_snoatan2, nullptr, mpfr_atan2},
    {"`gmath_snocosh`", gmath_snocosh, nullptr, mpfr_cosh, nullptr},
    {"`gmath_snosinh`", gmath_snosinh, nullptr, mpfr_sinh, nullptr},
    {"`gmath_snotanh`", gmath_snotanh, nullptr, mpfr_tanh, nullptr},
    {"`gmath_snoacosh`", gmath_snoacosh, nullptr, mpfr_acosh, nullptr},
    {"`gmath_snoasinh`", gmath_snoasinh, nullptr, mpfr_asinh, nullptr},
    {"`gmath_snoatanh`", gmath_snoatanh, nullptr, mpfr_atanh, nullptr},
};

constexpr Function<double> double_functions[] = {
    {"`gmath_dnoatan2`", nullptr, gmath_dnoatan2, nullptr, mpfr_atan2},
    {"`gmath_dnoacosh`", gmath_dnoacosh, nullptr, mpfr_acosh, nullptr},
    {"`gmath_dnoasinh`", gmath_dnoasinh, nullptr, mpfr_asinh, nullptr},
    {"`gmath_dnoatanh`", gmath_dnoatanh, nullptr, mpfr_atanh, nullptr},
    {"`gmath_dnoerf`", gmath_dnoerf, nullptr, mpfr_erf, nullptr},
    {"`gmath_dnoerfc`", gmath_dnoerfc, nullptr, mpfr_erfc, nullptr},
};

template <class Functions>
void print_table(const char* title, const Functions& functions) {
    std::printf("\n%s\n\n", title);
    std::vector<std::string> head = {"function"};
    for (const Region& region : regions) head.emplace_back(region.name);
    print_head(head);
    for (const auto& function : functions) print_function(function);
}

}  // namespace

void print_real_tables() {
    print_table("### Real functions in single precision", single_functions);
    print_table("### Real functions in double precision", double_functions);
}

}  // namespace orvix::accuracy
