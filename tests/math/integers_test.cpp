#include <orvix/gsl/real_functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

}  // namespace

TEST(GmathEeround, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(gmath_eeround(2.5), 3);
    EXPECT_EQ(gmath_eeround(-2.5), -3);
}

TEST(GmathEeround, RoundsWhatLiesBelowAHalfDown) {
    EXPECT_EQ(gmath_eeround(2.4), 2);
    EXPECT_EQ(gmath_eeround(-2.4), -2);
}

TEST(GmathEeround, OfTheNumberJustBelowAHalfIsOneAsTheSumRounds) { EXPECT_EQ(gmath_eeround(0.49999999999999994), 1); }

TEST(GmathEeround, StopsAtTheLimits) {
    EXPECT_EQ(gmath_eeround(2147483646.5), 2147483647);
    EXPECT_EQ(gmath_eeround(2147483647.5), 2147483647);
    EXPECT_EQ(gmath_eeround(-2147483647.5), -2147483647);
    EXPECT_EQ(gmath_eeround(infinity), 2147483647);
    EXPECT_EQ(gmath_eeround(-infinity), -2147483647);
}

TEST(GmathEeround, OfNanIsTheMostNegativeInteger) { EXPECT_EQ(gmath_eeround(not_a_number), lowest); }

TEST(GmathEelround, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(gmath_eelround(2.5), 3);
    EXPECT_EQ(gmath_eelround(-2.5), -3);
}

TEST(GmathEelround, OfNanIsTheMostNegativeInteger) { EXPECT_EQ(gmath_eelround(not_a_number), lowest); }

TEST(GmathEedround, GivesTheIntegerAsADouble) {
    EXPECT_EQ(gmath_eedround(-2.5), -3.0);
    EXPECT_EQ(gmath_eedround(3e9), 2147483647.0);
    EXPECT_EQ(gmath_eedround(not_a_number), -2147483648.0);
}

TEST(GmathEedround, NeverGivesANegativeZero) { EXPECT_FALSE(std::signbit(gmath_eedround(-0.2))); }

TEST(GmathEetrunc, OfMinusThreeMilliardsStopsAboveTheMostNegativeInteger) {
    EXPECT_EQ(gmath_eetrunc(-3e9), -2147483647);
}

TEST(GmathEetrunc, DropsTheFraction) {
    EXPECT_EQ(gmath_eetrunc(2.9), 2);
    EXPECT_EQ(gmath_eetrunc(-2.9), -2);
}

TEST(GmathEetrunc, SaturatesBeyondTheLimitsOnly) {
    EXPECT_EQ(gmath_eetrunc(2147483647.0), 2147483647);
    EXPECT_EQ(gmath_eetrunc(2147483647.5), 2147483647);
    EXPECT_EQ(gmath_eetrunc(-2147483647.0), -2147483647);
    EXPECT_EQ(gmath_eetrunc(-2147483648.0), -2147483647);
    EXPECT_EQ(gmath_eetrunc(-2147483646.9), -2147483646);
}

TEST(GmathEetrunc, OfNanIsTheMostNegativeInteger) { EXPECT_EQ(gmath_eetrunc(not_a_number), lowest); }

TEST(GmathEedtrunc, IsTheSameFunctionAsEetrunc) {
    EXPECT_EQ(gmath_eedtrunc(-3e9), -2147483647);
    EXPECT_EQ(gmath_eedtrunc(-2.9), -2);
    EXPECT_EQ(gmath_eedtrunc(not_a_number), lowest);
}

TEST(GmathEeiabs, LeavesTheMostNegativeIntegerUnchanged) {
    EXPECT_EQ(gmath_eeiabs(std::numeric_limits<int>::min()), std::numeric_limits<int>::min());
}

TEST(GmathEeiabs, DropsTheSign) {
    EXPECT_EQ(gmath_eeiabs(-7), 7);
    EXPECT_EQ(gmath_eeiabs(7), 7);
    EXPECT_EQ(gmath_eeiabs(-2147483647), 2147483647);
}

TEST(GmathEefabs, ClearsTheSignBit) {
    EXPECT_EQ(gmath_eefabs(-1.5F), 1.5F);
    EXPECT_FALSE(std::signbit(gmath_eefabs(-0.0F)));
    EXPECT_FALSE(std::signbit(gmath_eefabs(-std::numeric_limits<float>::quiet_NaN())));
}

TEST(IntegerFunctions, NeverSetTheFlag) {
    gmath_eetrunc(not_a_number);
    gmath_eeround(1e300);
    gmath_eelround(-1e300);
    gmath_eedround(not_a_number);
    EXPECT_FALSE(gmath_ematherr());
}
