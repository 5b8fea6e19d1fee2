#include <orvix/gsl/complex_functions.h>
#include <orvix/gsl/real_functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double pi = 3.141592653589793;

class ComplexDouble : public testing::Test {
protected:
    // What no function leaves behind.
    double re = 47;
    double im = 47;
};

}  // namespace

TEST_F(ComplexDouble, QuotientByZeroIsZeroWithTheFlag) {
    gmath_cdnodiv(1, 2, 0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, QuotientByANumberWhoseSquareVanishesIsZeroWithTheFlag) {
    gmath_cdnodiv(1, 0, 1e-200, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, QuotientByANumberWhoseSquareIsSubnormalIsZeroWithTheFlag) {
    gmath_cdnodiv(1, 0, 1e-154, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, QuotientByNanIsZeroWithTheFlag) {
    gmath_cdnodiv(1, 0, not_a_number, 1, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, QuotientIsTheProductWithTheReciprocal) {
    gmath_cdnodiv(1, 2, 3, 4, &re, &im);
    EXPECT_DOUBLE_EQ(re, 0.44);
    EXPECT_DOUBLE_EQ(im, 0.08);
}

TEST_F(ComplexDouble, SumIsNotClamped) {
    gmath_cdnoadd(largest, 1e-310, largest, 0, &re, &im);
    EXPECT_EQ(re, infinity);
    EXPECT_EQ(im, 1e-310);
}

TEST_F(ComplexDouble, DifferenceIsNotClamped) {
    gmath_cdnosub(-largest, 1e-310, largest, 0, &re, &im);
    EXPECT_EQ(re, -infinity);
    EXPECT_EQ(im, 1e-310);
}

TEST_F(ComplexDouble, ProductStopsAtTheLargestDoubleAndFlushesSubnormalParts) {
    gmath_cdnomlt(1e200, 1e-155, 1e155, 0, &re, &im);
    EXPECT_EQ(re, largest);
    gmath_cdnomlt(1e-155, 0, -1e-155, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_FALSE(std::signbit(re));
}

TEST_F(ComplexDouble, ResultsMayGoToTheOperandsPlaces) {
    re = 3;
    im = 4;
    gmath_cdnomlt(re, im, re, im, &re, &im);
    EXPECT_EQ(re, -7);
    EXPECT_EQ(im, 24);
}

TEST_F(ComplexDouble, LogarithmOfZeroIsZeroWithTheFlag) {
    gmath_cdnolog(0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, LogarithmOfNanIsZeroWithTheFlag) {
    gmath_cdnolog(not_a_number, 1, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, LogarithmOfMinusOneIsPiOnTheImaginaryAxis) {
    gmath_cdnolog(-1, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, pi);
}

TEST_F(ComplexDouble, LogarithmBelowTheCutIsPiAsWell) {
    gmath_cdnolog(-1, -0.0, &re, &im);
    EXPECT_EQ(im, pi);
}

TEST_F(ComplexDouble, LogarithmOnTheImaginaryAxisIsExact) {
    gmath_cdnolog(0, 1, &re, &im);
    EXPECT_EQ(im, pi / 2);
    gmath_cdnolog(-0.0, -1, &re, &im);
    EXPECT_EQ(im, -pi / 2);
}

TEST_F(ComplexDouble, LogarithmIsNotClamped) {
    gmath_cdnolog(infinity, 0, &re, &im);
    EXPECT_EQ(re, infinity);
    gmath_cdnolog(1, 1e-310, &re, &im);
    EXPECT_EQ(im, 1e-310);
}

TEST_F(ComplexDouble, DecimalLogarithmDividesByNineDigits) {
    gmath_cdnolog10(10, 0, &re, &im);
    EXPECT_NEAR(re, 1.0000000013002977, 1e-15);
}

TEST_F(ComplexDouble, DecimalLogarithmOfZeroIsZeroWithTheFlag) {
    gmath_cdnolog10(0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, ExponentialOfAThousandIsTheLargestDouble) {
    gmath_cdnoexp(1000, 0, &re, &im);
    EXPECT_EQ(re, largest);
}

TEST_F(ComplexDouble, ExponentialThatOverflowsIsNanInTheVanishingPart) {
    gmath_cdnoexp(1000, 0, &re, &im);
    EXPECT_TRUE(std::isnan(im));
}

TEST_F(ComplexDouble, ExponentialOfAnInfiniteAngleIsNan) {
    gmath_cdnoexp(0, infinity, &re, &im);
    EXPECT_TRUE(std::isnan(re));
    EXPECT_TRUE(std::isnan(im));
    EXPECT_FALSE(gmath_ematherr());
}

TEST_F(ComplexDouble, PowerOfZeroToZeroIsZeroWithoutTheFlag) {
    gmath_cdnopwr(0, 0, 0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_EQ(im, 0);
    EXPECT_FALSE(gmath_ematherr());
}

TEST_F(ComplexDouble, PowerOfNanCarriesOnWithAZeroLogarithmAndSetsTheFlag) {
    gmath_cdnopwr(not_a_number, 0, 2, 0, &re, &im);
    EXPECT_EQ(re, 1);
    EXPECT_EQ(im, 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST_F(ComplexDouble, SquareIsRoundedAsAPower) {
    gmath_cdnosqr(3, 4, &re, &im);
    EXPECT_NE(re, -7);
    EXPECT_NEAR(re, -7, 1e-13);
    EXPECT_NEAR(im, 24, 1e-13);
}

TEST_F(ComplexDouble, RootOfMinusFourLiesOnTheImaginaryAxisButForRounding) {
    gmath_cdnosqrt(-4, 0, &re, &im);
    EXPECT_NEAR(re, 0, 1e-15);
    EXPECT_NEAR(im, 2, 1e-15);
}

TEST_F(ComplexDouble, RootOfZeroIsZeroWithoutTheFlag) {
    gmath_cdnosqrt(0, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_FALSE(gmath_ematherr());
}

TEST_F(ComplexDouble, PowerOfTenOfTwoIsAHundredButForRounding) {
    gmath_cdno10x(2, 0, &re, &im);
    EXPECT_NEAR(re, 100, 1e-12);
    EXPECT_EQ(im, 0);
}

TEST_F(ComplexDouble, PowerOfTenOfALargeExponentIsTheLargestDouble) {
    gmath_cdno10x(1000, 0, &re, &im);
    EXPECT_EQ(re, largest);
}

TEST_F(ComplexDouble, InverseTangentAtThePolesIsZeroWithTheFlag) {
    for (const double y : {1.0, -1.0}) {
        SCOPED_TRACE(y);
        gmath_clr_ematherr();
        gmath_cdnoatan(0, y, &re, &im);
        EXPECT_EQ(re, 0);
        EXPECT_EQ(im, 0);
        EXPECT_TRUE(gmath_ematherr());
    }
}

TEST_F(ComplexDouble, InverseHyperbolicTangentAtThePolesIsZeroWithTheFlag) {
    for (const double x : {1.0, -1.0}) {
        SCOPED_TRACE(x);
        gmath_clr_ematherr();
        gmath_cdnoatanh(x, 0, &re, &im);
        EXPECT_EQ(re, 0);
        EXPECT_EQ(im, 0);
        EXPECT_TRUE(gmath_ematherr());
    }
}

TEST_F(ComplexDouble, CosineFarFromTheRealAxisKeepsAFiniteRealPart) {
    gmath_cdnocos(0, 1000, &re, &im);
    EXPECT_EQ(re, largest / 2);
}

TEST_F(ComplexDouble, TangentFarFromTheRealAxisIsFinite) {
    gmath_cdnotan(1, 1000, &re, &im);
    EXPECT_TRUE(std::isfinite(re));
    EXPECT_TRUE(std::isfinite(im));
}

// The one root of z^2 - 1 would give a negative real part.
TEST_F(ComplexDouble, InverseHyperbolicCosineHasTwoRoots) {
    gmath_cdnoacosh(-2, 0, &re, &im);
    EXPECT_NEAR(re, 1.3169578969248166, 1e-15);
    EXPECT_NEAR(im, pi, 1e-15);
}

TEST_F(ComplexDouble, InverseCosineOfTwoLeavesTheRealAxis) {
    gmath_cdnoacos(2, 0, &re, &im);
    EXPECT_EQ(re, 0);
    EXPECT_NEAR(im, -1.3169578969248166, 1e-15);
}

TEST_F(ComplexDouble, NothingButDivisionAndLogarithmSetsTheFlag) {
    gmath_cdnoexp(not_a_number, not_a_number, &re, &im);
    gmath_cdnomlt(not_a_number, infinity, 0, 0, &re, &im);
    gmath_cdnocos(infinity, 0, &re, &im);
    gmath_cdnosin(not_a_number, not_a_number, &re, &im);
    gmath_cdnosinh(1e300, 1e300, &re, &im);
    EXPECT_FALSE(gmath_ematherr());
}
