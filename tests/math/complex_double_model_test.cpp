#include <orvix/gsl/complex_functions.h>

#include "math/complex_agreement.h"
#include "support/complex_double_model.h"

using namespace orvix::test;

class ComplexDoubleOneOperand : public testing::TestWithParam<OneOperand<double>> {};

TEST_P(ComplexDoubleOneOperand, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, ComplexDoubleOneOperand,
                         testing::Values(OneOperand<double>{"10x", gmath_cdno10x, model::cdno10x},
                                         OneOperand<double>{"acos", gmath_cdnoacos, model::cdnoacos},
                                         OneOperand<double>{"acosh", gmath_cdnoacosh, model::cdnoacosh},
                                         OneOperand<double>{"asin", gmath_cdnoasin, model::cdnoasin},
                                         OneOperand<double>{"asinh", gmath_cdnoasinh, model::cdnoasinh},
                                         OneOperand<double>{"atan", gmath_cdnoatan, model::cdnoatan},
                                         OneOperand<double>{"atanh", gmath_cdnoatanh, model::cdnoatanh},
                                         OneOperand<double>{"cos", gmath_cdnocos, model::cdnocos},
                                         OneOperand<double>{"cosh", gmath_cdnocosh, model::cdnocosh},
                                         OneOperand<double>{"exp", gmath_cdnoexp, model::cdnoexp},
                                         OneOperand<double>{"log", gmath_cdnolog, model::cdnolog},
                                         OneOperand<double>{"log10", gmath_cdnolog10, model::cdnolog10},
                                         OneOperand<double>{"sin", gmath_cdnosin, model::cdnosin},
                                         OneOperand<double>{"sinh", gmath_cdnosinh, model::cdnosinh},
                                         OneOperand<double>{"sqr", gmath_cdnosqr, model::cdnosqr},
                                         OneOperand<double>{"sqrt", gmath_cdnosqrt, model::cdnosqrt},
                                         OneOperand<double>{"tan", gmath_cdnotan, model::cdnotan},
                                         OneOperand<double>{"tanh", gmath_cdnotanh, model::cdnotanh}),
                         function_name);

class ComplexDoubleTwoOperands : public testing::TestWithParam<TwoOperands<double>> {};

TEST_P(ComplexDoubleTwoOperands, AgreesWithTheModelBitForBit) { expect_agreement_everywhere(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Functions, ComplexDoubleTwoOperands,
                         testing::Values(TwoOperands<double>{"add", gmath_cdnoadd, model::cdnoadd},
                                         TwoOperands<double>{"sub", gmath_cdnosub, model::cdnosub},
                                         TwoOperands<double>{"mlt", gmath_cdnomlt, model::cdnomlt},
                                         TwoOperands<double>{"div", gmath_cdnodiv, model::cdnodiv},
                                         TwoOperands<double>{"pwr", gmath_cdnopwr, model::cdnopwr}),
                         function_name);
