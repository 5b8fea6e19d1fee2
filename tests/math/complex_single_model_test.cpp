#include <orvix/gsl/complex_functions_single.h>

#include "math/complex_agreement.h"
#include "support/complex_single_model.h"

using namespace orvix::test;

class ComplexSingleOneOperand : public testing::TestWithParam<OneOperand<float>> {};

TEST_P(ComplexSingleOneOperand, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, ComplexSingleOneOperand,
                         testing::Values(OneOperand<float>{"10x", gmath_csno10x, model::csno10x},
                                         OneOperand<float>{"acos", gmath_csnoacos, model::csnoacos},
                                         OneOperand<float>{"acosh", gmath_csnoacosh, model::csnoacosh},
                                         OneOperand<float>{"asin", gmath_csnoasin, model::csnoasin},
                                         OneOperand<float>{"asinh", gmath_csnoasinh, model::csnoasinh},
                                         OneOperand<float>{"atan", gmath_csnoatan, model::csnoatan},
                                         OneOperand<float>{"atanh", gmath_csnoatanh, model::csnoatanh},
                                         OneOperand<float>{"cos", gmath_csnocos, model::csnocos},
                                         OneOperand<float>{"cosh", gmath_csnocosh, model::csnocosh},
                                         OneOperand<float>{"exp", gmath_csnoexp, model::csnoexp},
                                         OneOperand<float>{"log", gmath_csnolog, model::csnolog},
                                         OneOperand<float>{"log10", gmath_csnolog10, model::csnolog10},
                                         OneOperand<float>{"sin", gmath_csnosin, model::csnosin},
                                         OneOperand<float>{"sinh", gmath_csnosinh, model::csnosinh},
                                         OneOperand<float>{"sqr", gmath_csnosqr, model::csnosqr},
                                         OneOperand<float>{"sqrt", gmath_csnosqrt, model::csnosqrt},
                                         OneOperand<float>{"tan", gmath_csnotan, model::csnotan},
                                         OneOperand<float>{"tanh", gmath_csnotanh, model::csnotanh}),
                         function_name);

class ComplexSingleTwoOperands : public testing::TestWithParam<TwoOperands<float>> {};

TEST_P(ComplexSingleTwoOperands, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, ComplexSingleTwoOperands,
                         testing::Values(TwoOperands<float>{"add", gmath_csnoadd, model::csnoadd},
                                         TwoOperands<float>{"sub", gmath_csnosub, model::csnosub},
                                         TwoOperands<float>{"mlt", gmath_csnomlt, model::csnomlt},
                                         TwoOperands<float>{"div", gmath_csnodiv, model::csnodiv},
                                         TwoOperands<float>{"pwr", gmath_csnopwr, model::csnopwr}),
                         function_name);
