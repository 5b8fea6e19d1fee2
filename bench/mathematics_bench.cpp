// The tolerant functions beside std::complex, and beside the C library calls that each of them makes, alone: "c_calls"
// makes them on the arguments that they get, "c_calls_in_turn" as the formula does, where one waits for the results of
// another. What a function costs above those is the price of order, clamps and the flag.

#include "plain_formulas.h"
#include "ratio.h"

#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/complex_functions_single.h>
#include <orvix/gsl/real_functions.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <complex>
#include <random>
#include <string>
#include <vector>

#include <gnu/libc-version.h>

namespace {

using orvix::bench::bar;

using orvix::bench::Acos;
using orvix::bench::AcoshOfTwoRoots;
using orvix::bench::Asin;
using orvix::bench::Asinh;
using orvix::bench::Atan;
using orvix::bench::Atanh;
using orvix::bench::Circular;
using orvix::bench::Direct;
using orvix::bench::Exp;
using orvix::bench::Hyperbolic;
using orvix::bench::keep;
using orvix::bench::Log;
using orvix::bench::Pair;
using orvix::bench::Power;
using orvix::bench::PowerOfTen;
using orvix::bench::Recorder;
using orvix::bench::Replay;
using orvix::bench::Sqrt;
using orvix::bench::Square;

// More than a processor can remember the branches of, as in bulk computation.
constexpr std::size_t operand_count = 16384;

// The most that a function may cost over the calls it makes.
constexpr double call_bar = 1.3;

const bool bars = bar("double/log", "std_complex", 0.75) && bar("double/pwr", "std_complex", 0.62) &&
                  bar("double/sin", "std_complex", 0.68) && bar("double/tan", "std_complex", 0.75) &&
                  bar("double/atan", "std_complex", 0.95) && bar("double/asin", "std_complex", 1.10) &&
                  bar("single/exp", "std_complex", 0.55) && bar("single/log", "std_complex", 0.60) &&
                  bar("single/sin", "std_complex", 0.50) && bar("single/atan", "std_complex", 0.65) &&
                  bar("single/acos", "std_complex", 0.60);

const bool versions = orvix::bench::peer_version("c_calls", "(glibc " + std::string(gnu_get_libc_version()) + ")") &&
                      orvix::bench::peer_version("c_calls_in_turn", "(same)") &&
                      orvix::bench::peer_version("std_complex", "(libstdc++ " + std::to_string(_GLIBCXX_RELEASE) + ")");

template <class Real>
struct Operands {
    Real x, y, u, v;
};

template <class Real>
std::vector<Operands<Real>> random_operands(double low, double high) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> value(low, high);
    const auto next = [&] { return static_cast<Real>(value(random)); };
    std::vector<Operands<Real>> all(operand_count);
    for (Operands<Real>& each : all) each = {next(), next(), next(), next()};
    return all;
}

// Registers a benchmark that hands operands between two limits to `work`, one after the other.
template <class Real, class Work>
void add(const std::string& name, double low, double high, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const auto all = random_operands<Real>(low, high);
        for (auto _ : state)
            for (const auto& each : all) work(each);
    });
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex functions

// Around the unit circle.
constexpr double low = -2;
constexpr double high = 2;

template <class Real, void function(Real, Real, Real*, Real*)>
void call(const Operands<Real>& z) {
    Real re;
    Real im;
    function(z.x, z.y, &re, &im);
    keep(re);
    keep(im);
}

template <class Real, void function(Real, Real, Real, Real, Real*, Real*)>
void call(const Operands<Real>& z) {
    Real re;
    Real im;
    function(z.x, z.y, z.u, z.v, &re, &im);
    keep(re);
    keep(im);
}

template <class Real, auto function, class Standard>
void add_beside_standard(const std::string& name, Standard standard) {
    add<Real>(name + "/ours", low, high, [](const Operands<Real>& z) { call<Real, function>(z); });
    add<Real>(name + "/std_complex", low, high, [=](const Operands<Real>& z) {
        const std::complex<Real> result = standard(std::complex<Real>(z.x, z.y), std::complex<Real>(z.u, z.v));
        keep(result.real());
        keep(result.imag());
    });
}

// The C library calls that a formula makes for all operands, on the arguments that it makes them with.
template <class Real, class Formula>
void replay(benchmark::State& state) {
    std::vector<double> arguments;
    Recorder<Real> recorder(arguments);
    for (const Operands<Real>& z : random_operands<Real>(low, high))
        Formula{}(recorder, Pair<Real>{z.x, z.y}, Pair<Real>{z.u, z.v});
    for (auto _ : state) {
        Replay<Real> calls(arguments);
        for (std::size_t i = 0; i < operand_count; ++i) Formula{}(calls, Pair<Real>{1, 1}, Pair<Real>{1, 1});
    }
}

template <class Real, auto function, class Formula, class Standard>
void add_complex(const std::string& name, Standard standard) {
    add_beside_standard<Real, function>(name, standard);
    benchmark::RegisterBenchmark((name + "/c_calls").c_str(), replay<Real, Formula>);
    add<Real>(name + "/c_calls_in_turn", low, high, [](const Operands<Real>& z) {
        Direct<Real> direct;
        const Pair<Real> result = Formula{}(direct, Pair<Real>{z.x, z.y}, Pair<Real>{z.u, z.v});
        keep(result.re);
        keep(result.im);
    });
    bar(name, "c_calls", call_bar);
    bar(name, "c_calls_in_turn", call_bar);
}

const bool double_cases = [] {
    using R = double;
    add_beside_standard<R, gmath_cdnoadd>("double/add", [](auto a, auto b) { return a + b; });
    add_beside_standard<R, gmath_cdnosub>("double/sub", [](auto a, auto b) { return a - b; });
    add_beside_standard<R, gmath_cdnomlt>("double/mlt", [](auto a, auto b) { return a * b; });
    add_beside_standard<R, gmath_cdnodiv>("double/div", [](auto a, auto b) { return a / b; });
    add_complex<R, gmath_cdnopwr, Power>("double/pwr", [](auto a, auto b) { return std::pow(a, b); });
    add_complex<R, gmath_cdnoexp, Exp>("double/exp", [](auto a, auto) { return std::exp(a); });
    add_complex<R, gmath_cdno10x, PowerOfTen>("double/10x", [](auto a, auto) { return std::pow(R{10}, a); });
    add_complex<R, gmath_cdnolog, Log>("double/log", [](auto a, auto) { return std::log(a); });
    add_complex<R, gmath_cdnolog10, Log>("double/log10", [](auto a, auto) { return std::log10(a); });
    add_complex<R, gmath_cdnosqr, Square>("double/sqr", [](auto a, auto) { return a * a; });
    add_complex<R, gmath_cdnosqrt, Sqrt>("double/sqrt", [](auto a, auto) { return std::sqrt(a); });
    add_complex<R, gmath_cdnocos, Circular>("double/cos", [](auto a, auto) { return std::cos(a); });
    add_complex<R, gmath_cdnosin, Circular>("double/sin", [](auto a, auto) { return std::sin(a); });
    add_complex<R, gmath_cdnotan, Circular>("double/tan", [](auto a, auto) { return std::tan(a); });
    add_complex<R, gmath_cdnoacos, Acos>("double/acos", [](auto a, auto) { return std::acos(a); });
    add_complex<R, gmath_cdnoasin, Asin>("double/asin", [](auto a, auto) { return std::asin(a); });
    add_complex<R, gmath_cdnoatan, Atan>("double/atan", [](auto a, auto) { return std::atan(a); });
    add_complex<R, gmath_cdnocosh, Hyperbolic>("double/cosh", [](auto a, auto) { return std::cosh(a); });
    add_complex<R, gmath_cdnosinh, Hyperbolic>("double/sinh", [](auto a, auto) { return std::sinh(a); });
    add_complex<R, gmath_cdnotanh, Hyperbolic>("double/tanh", [](auto a, auto) { return std::tanh(a); });
    add_complex<R, gmath_cdnoacosh, AcoshOfTwoRoots>("double/acosh", [](auto a, auto) { return std::acosh(a); });
    add_complex<R, gmath_cdnoasinh, Asinh>("double/asinh", [](auto a, auto) { return std::asinh(a); });
    add_complex<R, gmath_cdnoatanh, Atanh>("double/atanh", [](auto a, auto) { return std::atanh(a); });
    return true;
}();

const bool single_cases = [] {
    using R = float;
    add_beside_standard<R, gmath_csnoadd>("single/add", [](auto a, auto b) { return a + b; });
    add_beside_standard<R, gmath_csnosub>("single/sub", [](auto a, auto b) { return a - b; });
    add_beside_standard<R, gmath_csnomlt>("single/mlt", [](auto a, auto b) { return a * b; });
    add_beside_standard<R, gmath_csnodiv>("single/div", [](auto a, auto b) { return a / b; });
    add_complex<R, gmath_csnopwr, Power>("single/pwr", [](auto a, auto b) { return std::pow(a, b); });
    add_complex<R, gmath_csnoexp, Exp>("single/exp", [](auto a, auto) { return std::exp(a); });
    add_complex<R, gmath_csno10x, PowerOfTen>("single/10x", [](auto a, auto) { return std::pow(R{10}, a); });
    add_complex<R, gmath_csnolog, Log>("single/log", [](auto a, auto) { return std::log(a); });
    add_complex<R, gmath_csnolog10, Log>("single/log10", [](auto a, auto) { return std::log10(a); });
    add_complex<R, gmath_csnosqr, Square>("single/sqr", [](auto a, auto) { return a * a; });
    add_complex<R, gmath_csnosqrt, Sqrt>("single/sqrt", [](auto a, auto) { return std::sqrt(a); });
    add_complex<R, gmath_csnocos, Circular>("single/cos", [](auto a, auto) { return std::cos(a); });
    add_complex<R, gmath_csnosin, Circular>("single/sin", [](auto a, auto) { return std::sin(a); });
    add_complex<R, gmath_csnotan, Circular>("single/tan", [](auto a, auto) { return std::tan(a); });
    add_complex<R, gmath_csnoacos, Acos>("single/acos", [](auto a, auto) { return std::acos(a); });
    add_complex<R, gmath_csnoasin, Asin>("single/asin", [](auto a, auto) { return std::asin(a); });
    add_complex<R, gmath_csnoatan, Atan>("single/atan", [](auto a, auto) { return std::atan(a); });
    add_complex<R, gmath_csnocosh, Hyperbolic>("single/cosh", [](auto a, auto) { return std::cosh(a); });
    add_complex<R, gmath_csnosinh, Hyperbolic>("single/sinh", [](auto a, auto) { return std::sinh(a); });
    add_complex<R, gmath_csnotanh, Hyperbolic>("single/tanh", [](auto a, auto) { return std::tanh(a); });
    add_complex<R, gmath_csnoacosh, Acos>("single/acosh", [](auto a, auto) { return std::acosh(a); });
    add_complex<R, gmath_csnoasinh, Asinh>("single/asinh", [](auto a, auto) { return std::asinh(a); });
    add_complex<R, gmath_csnoatanh, Atanh>("single/atanh", [](auto a, auto) { return std::atanh(a); });
    return true;
}();

// ---------------------------------------------------------------------------------------------------------------------
// Real functions, with the call that each makes

template <class Real, class Ours, class Call>
void add_real(const std::string& name, double least, double most, Ours ours, Call c_call) {
    add<Real>(name + "/ours", least, most, [=](const Operands<Real>& z) { keep(ours(z.x, z.y)); });
    add<Real>(name + "/c_calls", least, most,
              [=](const Operands<Real>& z) { keep(c_call(static_cast<double>(z.x), static_cast<double>(z.y))); });
    bar(name, "c_calls", call_bar);
}

// Read afresh, or the compiler would put an instruction in the place of the call.
double (*volatile library_sqrt)(double) = std::sqrt;

const bool real_cases = [] {
    using F = float;
    using D = double;
    add_real<F>(
        "real/log", 0.01, 9, [](F x, F) { return gmath_snolog(x); }, [](D x, D) { return std::log(x); });
    add_real<F>(
        "real/log10", 0.01, 9, [](F x, F) { return gmath_snolog10(x); }, [](D x, D) { return std::log10(x); });
    add_real<F>(
        "real/acos", -1, 1, [](F x, F) { return gmath_snoacos(x); }, [](D x, D) { return std::acos(x); });
    add_real<F>(
        "real/asin", -1, 1, [](F x, F) { return gmath_snoasin(x); }, [](D x, D) { return std::asin(x); });
    add_real<F>(
        "real/atan", -3, 3, [](F x, F) { return gmath_snoatan(x); }, [](D x, D) { return std::atan(x); });
    add_real<F>(
        "real/cos", -3, 3, [](F x, F) { return gmath_snocos(x); }, [](D x, D) { return std::cos(x); });
    add_real<F>(
        "real/sin", -3, 3, [](F x, F) { return gmath_snosin(x); }, [](D x, D) { return std::sin(x); });
    add_real<F>(
        "real/tan", -3, 3, [](F x, F) { return gmath_snotan(x); }, [](D x, D) { return std::tan(x); });
    add_real<F>(
        "real/cosh", -3, 3, [](F x, F) { return gmath_snocosh(x); }, [](D x, D) { return std::cosh(x); });
    add_real<F>(
        "real/sinh", -3, 3, [](F x, F) { return gmath_snosinh(x); }, [](D x, D) { return std::sinh(x); });
    add_real<F>(
        "real/tanh", -3, 3, [](F x, F) { return gmath_snotanh(x); }, [](D x, D) { return std::tanh(x); });
    add_real<F>(
        "real/exp", -3, 3, [](F x, F) { return gmath_snoexp(x); }, [](D x, D) { return std::exp(x); });
    add_real<F>(
        "real/10x", -3, 3, [](F x, F) { return gmath_sno10x(x); }, [](D x, D) { return std::pow(10.0, x); });
    add_real<F>(
        "real/pwr", 0.01, 9, [](F x, F y) { return gmath_snopwr(x, y); }, [](D x, D y) { return std::pow(x, y); });
    add_real<F>(
        "real/sqrt", 0, 9, [](F x, F) { return gmath_snosqrt(x); }, [](D x, D) { return library_sqrt(x); });
    add_real<F>(
        "real/magxy", -3, 3, [](F x, F y) { return gmath_magxy(x, y); }, [](D x, D y) { return std::hypot(x, y); });
    add_real<F>(
        "real/atan2", -3, 3, [](F x, F y) { return gmath_snoatan2(x, y); }, [](D x, D y) { return std::atan2(x, y); });
    add_real<D>(
        "real/double_atan2", -3, 3, [](D x, D y) { return gmath_dnoatan2(x, y); },
        [](D x, D y) { return std::atan2(x, y); });
    add_real<D>(
        "real/double_erf", -3, 3, [](D x, D) { return gmath_dnoerf(x); }, [](D x, D) { return std::erf(x); });
    add_real<D>(
        "real/double_erfc", -3, 3, [](D x, D) { return gmath_dnoerfc(x); }, [](D x, D) { return std::erfc(x); });
    const auto root_and_log = [](D x, D) { return std::log(library_sqrt(x) + x); };
    add_real<F>(
        "real/asinh", 0, 9, [](F x, F) { return gmath_snoasinh(x); }, root_and_log);
    add_real<D>(
        "real/double_asinh", 0, 9, [](D x, D) { return gmath_dnoasinh(x); }, root_and_log);
    add_real<F>(
        "real/acosh", 1, 9, [](F x, F) { return gmath_snoacosh(x); }, root_and_log);
    add_real<D>(
        "real/double_acosh", 1, 9, [](D x, D) { return gmath_dnoacosh(x); }, root_and_log);
    const auto log_of_ratio = [](D x, D) { return std::log((x + 1) / (1 - x)); };
    add_real<F>(
        "real/atanh", -1, 1, [](F x, F) { return gmath_snoatanh(x); }, log_of_ratio);
    add_real<D>(
        "real/double_atanh", -1, 1, [](D x, D) { return gmath_dnoatanh(x); }, log_of_ratio);
    return true;
}();

}  // namespace
