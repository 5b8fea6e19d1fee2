#include <orvix/gsl/real_functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr float float_infinity = std::numeric_limits<float>::infinity();
constexpr float not_a_float = std::numeric_limits<float>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

// Each test begins with the flag cleared, also where one process runs them all.
class ClearedFlag : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { gmath_clr_ematherr(); }
};

const bool flag_at_start = gmath_ematherr();
const bool registered = (testing::UnitTest::GetInstance()->listeners().Append(new ClearedFlag), true);

}  // namespace

TEST(GmathEmatherr, IsFalseWhenTheProcessStarts) { EXPECT_FALSE(flag_at_start); }

TEST(GmathEmatherr, StaysSetUntilItIsCleared) {
    gmath_snolog(0);
    gmath_snolog(1);
    EXPECT_TRUE(gmath_ematherr());
    gmath_clr_ematherr();
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnoexp, OfAThousandIsTheUpperLimitAndNotInfinity) { EXPECT_EQ(gmath_snoexp(1000), 1e38F); }

TEST(GmathSnoexp, OfMinusAThousandIsExactlyZero) { EXPECT_EQ(gmath_snoexp(-1000), 0); }

TEST(GmathSnoexp, SetsNoFlagWhenItSaturates) {
    gmath_snoexp(1000);
    gmath_snoexp(-1000);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnolog, OfZeroIsZeroWithTheFlag) {
    EXPECT_EQ(gmath_snolog(0), 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnolog, OfNegativeZeroIsZeroWithTheFlag) {
    EXPECT_EQ(gmath_snolog(-0.0F), 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnolog, OfNanIsNanWithoutTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_snolog(not_a_float)));
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnolog, OfTheSmallestFloatHasNoError) {
    EXPECT_FLOAT_EQ(gmath_snolog(std::numeric_limits<float>::denorm_min()), -103.278929903F);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnolog, OfInfinityIsTheUpperLimit) { EXPECT_EQ(gmath_snolog(float_infinity), 1e38F); }

TEST(GmathSnolog10, OfANegativeNumberIsZeroWithTheFlag) {
    EXPECT_EQ(gmath_snolog10(-100), 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnolog10, OfAThousandIsThree) { EXPECT_EQ(gmath_snolog10(1000), 3); }

TEST(GmathSnoasin, OfOneAndAHalfIsZeroWithTheFlag) {
    EXPECT_EQ(gmath_snoasin(1.5F), 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnoasin, OfMinusOneHasNoError) {
    EXPECT_EQ(gmath_snoasin(-1), -1.5707964F);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnoasin, OfNanIsNanWithoutTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_snoasin(not_a_float)));
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnoacos, JustBelowMinusOneIsZeroWithTheFlag) {
    EXPECT_EQ(gmath_snoacos(std::nextafter(-1.0F, -2.0F)), 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnoatan, OfAMagnitudeBelowTheLowerLimitIsZero) { EXPECT_EQ(gmath_snoatan(9e-38F), 0); }

TEST(GmathSnosin, IsNotClampedAndKeepsSubnormalNumbers) { EXPECT_EQ(gmath_snosin(1e-40F), 1e-40F); }

TEST(GmathSnosin, OfInfinityIsNanWithoutTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_snosin(float_infinity)));
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnocos, OfZeroIsOne) { EXPECT_EQ(gmath_snocos(0), 1); }

TEST(GmathSnotan, OfAQuarterTurnInSinglePrecisionIsLargeAndFinite) {
    EXPECT_FLOAT_EQ(gmath_snotan(1.5707964F), -22877332.0F);
}

TEST(GmathSnocosh, OfAHundredIsTheUpperLimit) { EXPECT_EQ(gmath_snocosh(100), 1e38F); }

TEST(GmathSnosinh, OfMinusAHundredIsMinusTheUpperLimit) { EXPECT_EQ(gmath_snosinh(-100), -1e38F); }

TEST(GmathSnotanh, OfANegativeNumberBelowTheLowerLimitIsPositiveZero) {
    EXPECT_EQ(gmath_snotanh(-9e-38F), 0);
    EXPECT_FALSE(std::signbit(gmath_snotanh(-9e-38F)));
}

TEST(GmathSnotanh, OfNegativeZeroKeepsTheSign) { EXPECT_TRUE(std::signbit(gmath_snotanh(-0.0F))); }

TEST(GmathSno10x, OfThirtyEightIsTheUpperLimit) { EXPECT_EQ(gmath_sno10x(38), 1e38F); }

TEST(GmathSno10x, OfMinusThirtySevenIsTheLowerLimitAndStays) { EXPECT_EQ(gmath_sno10x(-37), 1e-37F); }

TEST(GmathSno10x, OfMinusThirtyEightIsZero) { EXPECT_EQ(gmath_sno10x(-38), 0); }

TEST(GmathSnosqr, OfALargeNumberIsTheUpperLimit) { EXPECT_EQ(gmath_snosqr(1e30F), 1e38F); }

TEST(GmathSnosqr, OfASmallNumberIsZero) { EXPECT_EQ(gmath_snosqr(-1e-30F), 0); }

TEST(GmathSnosqrt, OfANegativeNumberIsNanWithoutTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_snosqrt(-1)));
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnosqrt, OfInfinityIsTheUpperLimit) { EXPECT_EQ(gmath_snosqrt(float_infinity), 1e38F); }

TEST(GmathSnopwr, OfANegativeBaseAndAFractionIsNanWithoutTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_snopwr(-2, 0.5F)));
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnopwr, OfZeroToAMinusOneIsTheUpperLimitWithoutTheFlag) {
    EXPECT_EQ(gmath_snopwr(0, -1), 1e38F);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnopwr, OfANegativeBaseAndAnOddIntegerIsNegative) { EXPECT_EQ(gmath_snopwr(-2, 3), -8); }

TEST(GmathMagxy, OfTwoZerosIsPositiveZero) { EXPECT_FALSE(std::signbit(gmath_magxy(-0.0F, -0.0F))); }

TEST(GmathMagxy, OfThreeAndFourIsFive) { EXPECT_EQ(gmath_magxy(3, -4), 5); }

TEST(GmathMagxy, OfLargeComponentsIsTheUpperLimit) { EXPECT_EQ(gmath_magxy(3e38F, 3e38F), 1e38F); }

TEST(GmathMagxy, OfSmallComponentsIsZero) { EXPECT_EQ(gmath_magxy(1e-38F, 1e-38F), 0); }

TEST(GmathDnoerf, OfOneIsTheLibrarys) { EXPECT_DOUBLE_EQ(gmath_dnoerf(1), 0.84270079294971489); }

TEST(GmathDnoerfc, KeepsSubnormalResults) { EXPECT_GT(gmath_dnoerfc(26.7), 0); }

// ---------------------------------------------------------------------------------------------------------------------
// Inverse hyperbolic functions

TEST(GmathSnoasinh, OfOneIsTheLogarithmOfTheSilverRatio) { EXPECT_FLOAT_EQ(gmath_snoasinh(1), 0.88137359F); }

TEST(GmathDnoasinh, StopsAtTheLogarithmOfTheUpperSingleLimit) {
    EXPECT_DOUBLE_EQ(gmath_dnoasinh(1e100), 87.498233533773742);
    EXPECT_EQ(gmath_dnoasinh(infinity), gmath_dnoasinh(1e38));
}

TEST(GmathDnoasinh, OfAVeryNegativeNumberIsMinusInfinityWithoutTheFlag) {
    EXPECT_EQ(gmath_dnoasinh(-1e10), -infinity);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathDnoasinh, OfAHugeNegativeNumberWhoseSquareOverflowsStopsAtTheUpperLimit) {
    EXPECT_EQ(gmath_dnoasinh(-1e200), gmath_dnoasinh(1e38));
}

TEST(GmathSnoasinh, OfAVeryNegativeNumberIsMinusInfinityWithoutTheFlag) {
    EXPECT_EQ(gmath_snoasinh(-1e10F), -float_infinity);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnoacosh, OfOneIsZeroWithoutTheFlag) {
    EXPECT_EQ(gmath_snoacosh(1), 0);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathSnoacosh, OfMinusOneIsZeroWithTheFlag) {
    EXPECT_EQ(gmath_snoacosh(-1), 0);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathDnoacosh, BetweenMinusOneAndOneIsZeroWithTheFlag) {
    for (const double x : {-0.999, 0.0, 0.5, 0.9999999999999999}) {
        SCOPED_TRACE(x);
        gmath_clr_ematherr();
        EXPECT_EQ(gmath_dnoacosh(x), 0);
        EXPECT_TRUE(gmath_ematherr());
    }
}

TEST(GmathDnoacosh, FromMinusOneDownIsZeroWithTheFlag) {
    for (const double x : {-1.0, -1.5, -1e8, -1e10, -1e154, -1e200, -infinity}) {
        SCOPED_TRACE(x);
        gmath_clr_ematherr();
        EXPECT_EQ(gmath_dnoacosh(x), 0);
        EXPECT_TRUE(gmath_ematherr());
    }
}

TEST(GmathDnoacosh, OfTwoIsTheLogarithmOfTwoAndTheRootOfThree) {
    EXPECT_DOUBLE_EQ(gmath_dnoacosh(2), 1.3169578969248167);
}

TEST(GmathDnoacosh, OfAHugeNumberTakesTheRootOfTheLargestDouble) {
    EXPECT_DOUBLE_EQ(gmath_dnoacosh(1e200), std::log(1e200));
    EXPECT_DOUBLE_EQ(gmath_dnoacosh(1e155), std::log(1e155 + std::sqrt(1.7976931348623157e+308)));
}

TEST(GmathDnoacosh, OfNanIsNanWithoutTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_dnoacosh(not_a_number)));
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathDnoatanh, OfMinusOneIsPositiveInfinityWithTheFlag) {
    EXPECT_EQ(gmath_dnoatanh(-1), infinity);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathDnoatanh, OfOneIsPositiveInfinityWithTheFlag) {
    EXPECT_EQ(gmath_dnoatanh(1), infinity);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathDnoatanh, BeyondOneIsNanWithTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_dnoatanh(-1.5)));
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathDnoatanh, OfNanIsNanWithTheFlag) {
    EXPECT_TRUE(std::isnan(gmath_dnoatanh(not_a_number)));
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnoatanh, OfMinusOneIsPositiveInfinityWithTheFlag) {
    EXPECT_EQ(gmath_snoatanh(-1), float_infinity);
    EXPECT_TRUE(gmath_ematherr());
}

TEST(GmathSnoatanh, OfAHalfHasNoError) {
    EXPECT_FLOAT_EQ(gmath_snoatanh(0.5F), 0.54930614F);
    EXPECT_FALSE(gmath_ematherr());
}

// ---------------------------------------------------------------------------------------------------------------------
// Angles

TEST(GmathDnoatan2, OfTwoZerosIsZeroWithoutTheFlag) {
    EXPECT_EQ(gmath_dnoatan2(0, 0), 0);
    EXPECT_EQ(gmath_dnoatan2(-0.0, -0.0), 0);
    EXPECT_FALSE(gmath_ematherr());
}

TEST(GmathDnoatan2, IsExactOnTheAxes) {
    EXPECT_EQ(gmath_dnoatan2(2, 0), 1.5707963267948966);
    EXPECT_EQ(gmath_dnoatan2(-2, 0), -1.5707963267948966);
    EXPECT_EQ(gmath_dnoatan2(0, 2), 0);
    EXPECT_EQ(gmath_dnoatan2(0, -2), 3.141592653589793);
}

TEST(GmathDnoatan2, OfANegativeZeroOverANegativeNumberIsPlusPi) {
    EXPECT_EQ(gmath_dnoatan2(-0.0, -2), 3.141592653589793);
}

TEST(GmathDnoatan2, IsNotClamped) { EXPECT_EQ(gmath_dnoatan2(1e-310, 1), 1e-310); }

TEST(GmathDnoatan2, OfNanOnAnAxisIsNan) {
    EXPECT_TRUE(std::isnan(gmath_dnoatan2(not_a_number, 0)));
    EXPECT_TRUE(std::isnan(gmath_dnoatan2(0, not_a_number)));
}

TEST(GmathSnoatan2, IsClamped) { EXPECT_EQ(gmath_snoatan2(1e-38F, 1), 0); }

TEST(GmathSnoatan2, IsExactOnTheAxes) {
    EXPECT_EQ(gmath_snoatan2(0, -2), 3.14159274F);
    EXPECT_EQ(gmath_snoatan2(-2, 0), -1.57079637F);
}
