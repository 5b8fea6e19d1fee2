// Every function of the mathematics beside its model, and what a call of either leaves behind.
#pragma once

#include "complex_double_model.h"
#include "complex_single_model.h"
#include "math_arguments.h"
#include "real_functions_model.h"

#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/complex_functions_single.h>
#include <orvix/gsl/real_functions.h>

#include <cstdint>
#include <ostream>
#include <type_traits>

namespace orvix::test {

template <class Result, class... Arguments>
struct Twins {
    const char* name;
    Result (*library)(Arguments...);
    Result (*model)(Arguments...);
};

template <class Real>
using ComplexOfOne = Twins<void, Real, Real, Real*, Real*>;
template <class Real>
using ComplexOfTwo = Twins<void, Real, Real, Real, Real, Real*, Real*>;

inline constexpr ComplexOfOne<double> complex_double_of_one[] = {
    {"exp", gmath_cdnoexp, model::cdnoexp},       {"10x", gmath_cdno10x, model::cdno10x},
    {"log", gmath_cdnolog, model::cdnolog},       {"log10", gmath_cdnolog10, model::cdnolog10},
    {"sqr", gmath_cdnosqr, model::cdnosqr},       {"sqrt", gmath_cdnosqrt, model::cdnosqrt},
    {"cos", gmath_cdnocos, model::cdnocos},       {"sin", gmath_cdnosin, model::cdnosin},
    {"tan", gmath_cdnotan, model::cdnotan},       {"acos", gmath_cdnoacos, model::cdnoacos},
    {"asin", gmath_cdnoasin, model::cdnoasin},    {"atan", gmath_cdnoatan, model::cdnoatan},
    {"cosh", gmath_cdnocosh, model::cdnocosh},    {"sinh", gmath_cdnosinh, model::cdnosinh},
    {"tanh", gmath_cdnotanh, model::cdnotanh},    {"acosh", gmath_cdnoacosh, model::cdnoacosh},
    {"asinh", gmath_cdnoasinh, model::cdnoasinh}, {"atanh", gmath_cdnoatanh, model::cdnoatanh}};

inline constexpr ComplexOfTwo<double> complex_double_of_two[] = {{"add", gmath_cdnoadd, model::cdnoadd},
                                                                 {"sub", gmath_cdnosub, model::cdnosub},
                                                                 {"mlt", gmath_cdnomlt, model::cdnomlt},
                                                                 {"div", gmath_cdnodiv, model::cdnodiv},
                                                                 {"pwr", gmath_cdnopwr, model::cdnopwr}};

inline constexpr ComplexOfOne<float> complex_single_of_one[] = {
    {"exp", gmath_csnoexp, model::csnoexp},       {"10x", gmath_csno10x, model::csno10x},
    {"log", gmath_csnolog, model::csnolog},       {"log10", gmath_csnolog10, model::csnolog10},
    {"sqr", gmath_csnosqr, model::csnosqr},       {"sqrt", gmath_csnosqrt, model::csnosqrt},
    {"cos", gmath_csnocos, model::csnocos},       {"sin", gmath_csnosin, model::csnosin},
    {"tan", gmath_csnotan, model::csnotan},       {"acos", gmath_csnoacos, model::csnoacos},
    {"asin", gmath_csnoasin, model::csnoasin},    {"atan", gmath_csnoatan, model::csnoatan},
    {"cosh", gmath_csnocosh, model::csnocosh},    {"sinh", gmath_csnosinh, model::csnosinh},
    {"tanh", gmath_csnotanh, model::csnotanh},    {"acosh", gmath_csnoacosh, model::csnoacosh},
    {"asinh", gmath_csnoasinh, model::csnoasinh}, {"atanh", gmath_csnoatanh, model::csnoatanh}};

inline constexpr ComplexOfTwo<float> complex_single_of_two[] = {{"add", gmath_csnoadd, model::csnoadd},
                                                                {"sub", gmath_csnosub, model::csnosub},
                                                                {"mlt", gmath_csnomlt, model::csnomlt},
                                                                {"div", gmath_csnodiv, model::csnodiv},
                                                                {"pwr", gmath_csnopwr, model::csnopwr}};

inline constexpr Twins<float, float> real_single[] = {
    {"log", gmath_snolog, model::snolog},       {"log10", gmath_snolog10, model::snolog10},
    {"acos", gmath_snoacos, model::snoacos},    {"asin", gmath_snoasin, model::snoasin},
    {"atan", gmath_snoatan, model::snoatan},    {"cos", gmath_snocos, model::snocos},
    {"sin", gmath_snosin, model::snosin},       {"tan", gmath_snotan, model::snotan},
    {"cosh", gmath_snocosh, model::snocosh},    {"sinh", gmath_snosinh, model::snosinh},
    {"tanh", gmath_snotanh, model::snotanh},    {"exp", gmath_snoexp, model::snoexp},
    {"10x", gmath_sno10x, model::sno10x},       {"sqr", gmath_snosqr, model::snosqr},
    {"sqrt", gmath_snosqrt, model::snosqrt},    {"asinh", gmath_snoasinh, model::snoasinh},
    {"acosh", gmath_snoacosh, model::snoacosh}, {"atanh", gmath_snoatanh, model::snoatanh}};

inline constexpr Twins<float, float, float> real_single_of_two[] = {{"atan2", gmath_snoatan2, model::snoatan2},
                                                                    {"pwr", gmath_snopwr, model::snopwr},
                                                                    {"magxy", gmath_magxy, model::magxy}};

inline constexpr Twins<double, double> real_double[] = {
    {"erf", gmath_dnoerf, model::dnoerf},       {"erfc", gmath_dnoerfc, model::dnoerfc},
    {"asinh", gmath_dnoasinh, model::dnoasinh}, {"acosh", gmath_dnoacosh, model::dnoacosh},
    {"atanh", gmath_dnoatanh, model::dnoatanh}, {"eedround", gmath_eedround, model::eedround}};

inline constexpr Twins<double, double, double> real_double_of_two[] = {{"atan2", gmath_dnoatan2, model::dnoatan2}};

inline constexpr Twins<std::int32_t, double> integers[] = {{"eetrunc", gmath_eetrunc, model::truncate},
                                                           {"eedtrunc", gmath_eedtrunc, model::truncate},
                                                           {"eeround", gmath_eeround, model::eeround},
                                                           {"eelround", gmath_eelround, model::eelround}};

// What a call leaves behind. Results of the real functions have no imaginary part.
template <class Result>
struct Outcome {
    Result re = 47;
    Result im = 47;
    bool flag = false;

    bool operator==(const Outcome& other) const {
        return equal(re, other.re) && equal(im, other.im) && flag == other.flag;
    }

    friend void PrintTo(const Outcome& outcome, std::ostream* out) {
        *out << std::hexfloat << outcome.re << ", " << outcome.im << ", flag " << outcome.flag;
    }

private:
    static bool equal(Result a, Result b) {
        if constexpr (std::is_floating_point_v<Result>)
            return same(a, b);
        else
            return a == b;
    }
};

// Of a complex function, called with the parts of its operands, or of a real one.
template <class Real, class... Parameters, class... Operands>
Outcome<Real> outcome_of(void (*function)(Real, Parameters...), Operands... operands) {
    Outcome<Real> outcome;
    function(operands..., &outcome.re, &outcome.im);
    return outcome;
}

template <class Result, class... Parameters, class... Operands>
requires(!std::is_void_v<Result>) Outcome<Result> outcome_of(Result (*function)(Parameters...), Operands... operands) {
    Outcome<Result> outcome;
    outcome.re = function(operands...);
    return outcome;
}

template <class AnyTwins, class... Operands>
auto library_outcome(const AnyTwins& twins, Operands... operands) {
    gmath_clr_ematherr();
    auto outcome = outcome_of(twins.library, operands...);
    outcome.flag = gmath_ematherr();
    return outcome;
}

template <class AnyTwins, class... Operands>
auto model_outcome(const AnyTwins& twins, Operands... operands) {
    model::flag = false;
    auto outcome = outcome_of(twins.model, operands...);
    outcome.flag = model::flag;
    return outcome;
}

}  // namespace orvix::test
