#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/complex_functions_single.h>
#include <orvix/gsl/real_functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float not_a_number = std::numeric_limits<float>::quiet_NaN();

class ComplexSingle : public testing::Test {
protected:
    // What no function leaves behind.
    float re = 47;
    float im = 47;
};

}  // namespace

TEST_F(ComplexSingle, LogarithmOfZeroIsZeroWithTheFlag) {
    gmath_csnolog(0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, LogarithmOfAModulusBelowTheLowerLimitIsZeroWithTheFlag) {
    gmath_csnolog(5e-38F, 5e-38F, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, LogarithmOfInfinityIsThatOfTheUpperLimit) {
    gmath_csnolog(infinity, 0, &re, &im);
    EXPECT_EQ(re, 87.498233F);
}

TEST_F(ComplexSingle, AngleOfALogarithmIsClamped) {
    gmath_csnolog(1, 1e-38F, &re, &im);
    EXPECT_EQ(im, 0);
}

TEST_F(ComplexSingle, LogarithmOfNanIsZeroWithTheFlag) {
    gmath_csnolog(0, not_a_number, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, PowerOfZeroIsZeroWithoutTheFlag) {
    gmath_csnopwr(0, 0, 2, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_FALSE(gmath_ematherr());
}

TEST_F(ComplexSingle, PowerOfABaseBelowTheLowerLimitIsZeroWithoutTheFlag) {
    gmath_csnopwr(5e-38F, -5e-38F, 0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_FALSE(gmath_ematherr());
}

TEST_F(ComplexSingle, PowerOfNanCarriesOnWithAZeroLogarithmAndSetsTheFlag) {
    gmath_csnopwr(not_a_number, 0, 2, 0, &re, &im);
    EXPECT_EQ(re, 1);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, ExponentialOfAThousandIsTheUpperLimit) {
    gmath_csnoexp(1000, 0, &re, &im);
    EXPECT_EQ(re, 1e38F);
    EXPECT_EQ(im, 0);
}

TEST_F(ComplexSingle, ExponentialOfAThousandIsClampedBeforeTheProduct) {
    gmath_csnoexp(1000, 1, &re, &im);
    EXPECT_FLOAT_EQ(re, 0.54030231e38F);
    EXPECT_FLOAT_EQ(im, 0.84147098e38F);
}

TEST_F(ComplexSingle, QuotientByANumberWhoseSquareVanishesIsZeroWithTheFlag) {
    gmath_csnodiv(1, 0, 1e-30F, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, QuotientByANumberWhoseSquareLiesBelowTheLowerLimitIsZeroWithTheFlag) {
    gmath_csnodiv(1, 0, 3.1e-19F, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, QuotientIsTheProductWithTheReciprocal) {
    gmath_csnodiv(1, 2, 3, 4, &re, &im);
    EXPECT_FLOAT_EQ(re, 0.44F);
    EXPECT_FLOAT_EQ(im, 0.08F);
}

TEST_F(ComplexSingle, ProductThatOverflowsIsTheUpperLimit) {
    gmath_csnomlt(1e30F, 0, 1e30F, 0, &re, &im);
    EXPECT_EQ(re, 1e38F);
    EXPECT_EQ(im, 0);
}

TEST_F(ComplexSingle, SumIsNotClamped) {
    gmath_csnoadd(2e38F, 1e-40F, 1e38F, 0, &re, &im);
    EXPECT_EQ(re, 3e38F);
    EXPECT_EQ(im, 1e-40F);
}

TEST_F(ComplexSingle, DifferenceIsNotClamped) {
    gmath_csnosub(2e38F, 1e-40F, -1e38F, 0, &re, &im);
    EXPECT_EQ(re, 3e38F);
    EXPECT_EQ(im, 1e-40F);
}

TEST_F(ComplexSingle, DecimalLogarithmHasAFullDivisor) {
    gmath_csnolog10(1000, 0, &re, &im);
    EXPECT_FLOAT_EQ(re, 3);
    EXPECT_EQ(im, 0);
}

TEST_F(ComplexSingle, RootOfMinusFourLiesOnTheImaginaryAxisButForRounding) {
    gmath_csnosqrt(-4, 0, &re, &im);
    EXPECT_NEAR(re, 0, 1e-6);
    EXPECT_FLOAT_EQ(im, 2);
}

TEST_F(ComplexSingle, PowerOfTenOfFiftyIsTheUpperLimit) {
    gmath_csno10x(50, 0, &re, &im);
    EXPECT_EQ(re, 1e38F);
}

TEST_F(ComplexSingle, CosineFarFromTheRealAxisSaturates) {
    gmath_csnocos(0, 1000, &re, &im);
    EXPECT_EQ(re, 0.5e38F);
    EXPECT_EQ(im, 0);
}

TEST_F(ComplexSingle, InverseTangentAtAPoleIsZeroWithTheFlag) {
    gmath_csnoatan(0, 1, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexSingle, InverseHyperbolicCosineHasOneRootAndSoAnotherCutThanTheDoubleOne) {
    gmath_csnoacosh(-2, 0.5F, &re, &im);
    double double_re = 0;
    double double_im = 0;
    gmath_cdnoacosh(-2, 0.5, &double_re, &double_im);
    EXPECT_LT(re, 0);
    EXPECT_GT(double_re, 0);
    EXPECT_NEAR(static_cast<double>(re), -double_re, 1e-6);
    EXPECT_NEAR(static_cast<double>(im), -double_im, 1e-6);
}
