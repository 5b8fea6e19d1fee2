#include <orvix/gsl/real_functions.h>

#include "support/math_arguments.h"
#include "support/real_functions_model.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <ostream>
#include <string>
#include <vector>

using namespace orvix::test;

namespace {

template <class Result, class... Reals>
struct Functions {
    const char* name;
    Result (*library)(Reals...);
    Result (*model)(Reals...);
};

template <class Result, class... Reals>
void PrintTo(const Functions<Result, Reals...>& functions, std::ostream* out) {
    *out << functions.name;
}

template <class Result>
bool agree(Result library, Result expected) {
    if constexpr (std::is_floating_point_v<Result>)
        return same(library, expected);
    else
        return library == expected;
}

template <class Result, class... Reals>
void expect_agreement(const Functions<Result, Reals...>& functions, Reals... arguments) {
    gmath_clr_ematherr();
    const Result library = functions.library(arguments...);
    model::flag = false;
    const Result expected = functions.model(arguments...);
    if (agree(library, expected) && gmath_ematherr() == model::flag) return;
    std::ostringstream text;
    text << std::hexfloat;
    ((text << arguments << ' '), ...);
    ADD_FAILURE() << functions.name << " of " << text.str() << std::hexfloat << "is " << library << " flag "
                  << gmath_ematherr() << ", expected " << expected << " flag " << model::flag;
}

template <class Result, class Real>
void expect_agreement_everywhere(const Functions<Result, Real>& functions) {
    for (const Real x : special_values<Real>()) expect_agreement(functions, x);
    const std::uint64_t seed = std::random_device{}();
    SCOPED_TRACE(seed);
    RandomReals<Real> random(seed);
    for (int i = 0; i < 200'000 && !testing::Test::HasFailure(); ++i) expect_agreement(functions, random.next());
}

template <class Result, class Real>
void expect_agreement_everywhere(const Functions<Result, Real, Real>& functions) {
    const std::vector<Real> values = special_values<Real>();
    for (const Real x : values)
        for (const Real y : values) expect_agreement(functions, x, y);
    const std::uint64_t seed = std::random_device{}();
    SCOPED_TRACE(seed);
    RandomReals<Real> random(seed);
    for (int i = 0; i < 200'000 && !testing::Test::HasFailure(); ++i) {
        const Real x = random.next();
        expect_agreement(functions, x, random.next());
    }
}

constexpr auto function_name = [](const auto& info) { return std::string(info.param.name); };

using SingleFunctions = Functions<float, float>;
using SingleFunctionsOfTwo = Functions<float, float, float>;
using DoubleFunctions = Functions<double, double>;
using Conversions = Functions<std::int32_t, double>;

}  // namespace

class RealSingle : public testing::TestWithParam<SingleFunctions> {};

TEST_P(RealSingle, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Functions, RealSingle,
    testing::Values(
        SingleFunctions{"log", gmath_snolog, model::snolog}, SingleFunctions{"log10", gmath_snolog10, model::snolog10},
        SingleFunctions{"acos", gmath_snoacos, model::snoacos}, SingleFunctions{"asin", gmath_snoasin, model::snoasin},
        SingleFunctions{"atan", gmath_snoatan, model::snoatan}, SingleFunctions{"cos", gmath_snocos, model::snocos},
        SingleFunctions{"sin", gmath_snosin, model::snosin}, SingleFunctions{"tan", gmath_snotan, model::snotan},
        SingleFunctions{"cosh", gmath_snocosh, model::snocosh}, SingleFunctions{"sinh", gmath_snosinh, model::snosinh},
        SingleFunctions{"tanh", gmath_snotanh, model::snotanh}, SingleFunctions{"exp", gmath_snoexp, model::snoexp},
        SingleFunctions{"power_of_ten", gmath_sno10x, model::sno10x},
        SingleFunctions{"sqr", gmath_snosqr, model::snosqr}, SingleFunctions{"sqrt", gmath_snosqrt, model::snosqrt},
        SingleFunctions{"asinh", gmath_snoasinh, model::snoasinh},
        SingleFunctions{"acosh", gmath_snoacosh, model::snoacosh},
        SingleFunctions{"atanh", gmath_snoatanh, model::snoatanh}),
    function_name);

class RealSingleOfTwo : public testing::TestWithParam<SingleFunctionsOfTwo> {};

TEST_P(RealSingleOfTwo, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, RealSingleOfTwo,
                         testing::Values(SingleFunctionsOfTwo{"atan2", gmath_snoatan2, model::snoatan2},
                                         SingleFunctionsOfTwo{"pwr", gmath_snopwr, model::snopwr},
                                         SingleFunctionsOfTwo{"magxy", gmath_magxy, model::magxy}),
                         function_name);

class RealDouble : public testing::TestWithParam<DoubleFunctions> {};

TEST_P(RealDouble, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, RealDouble,
                         testing::Values(DoubleFunctions{"asinh", gmath_dnoasinh, model::dnoasinh},
                                         DoubleFunctions{"acosh", gmath_dnoacosh, model::dnoacosh},
                                         DoubleFunctions{"atanh", gmath_dnoatanh, model::dnoatanh},
                                         DoubleFunctions{"erf", gmath_dnoerf, model::dnoerf},
                                         DoubleFunctions{"erfc", gmath_dnoerfc, model::dnoerfc},
                                         DoubleFunctions{"eedround", gmath_eedround, model::eedround}),
                         function_name);

TEST(RealDoubleOfTwo, AtanTwoAgreesWithTheModelBitForBit) {
    expect_agreement_everywhere(Functions<double, double, double>{"atan2", gmath_dnoatan2, model::dnoatan2});
}

class IntegerConversion : public testing::TestWithParam<Conversions> {};

TEST_P(IntegerConversion, AgreesWithTheModel) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, IntegerConversion,
                         testing::Values(Conversions{"eetrunc", gmath_eetrunc, model::truncate},
                                         Conversions{"eedtrunc", gmath_eedtrunc, model::truncate},
                                         Conversions{"eeround", gmath_eeround, model::eeround},
                                         Conversions{"eelround", gmath_eelround, model::eelround}),
                         function_name);
