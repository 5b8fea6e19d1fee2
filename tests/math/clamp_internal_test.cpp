#include "math/clamp.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

using orvix::gsl::math::clamped_to_double;
using orvix::gsl::math::clamped_to_single;
using orvix::gsl::math::double_range;
using orvix::gsl::math::single_range;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr float float_infinity = std::numeric_limits<float>::infinity();

double below(double x) { return std::nextafter(x, 0.0); }
double above(double x) { return std::nextafter(x, infinity); }

}  // namespace

TEST(Ranges, HaveTheirLimitsToTheLastBit) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(single_range.upper), 0x47D2CED32A16A1B1U);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(single_range.lower), 0x3841039D428A8B8FU);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(double_range.upper), 0x7FEFFFFFFFFFFFFFU);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(double_range.lower), 0x0010000000000000U);
}

TEST(DoubleClamp, LeavesTheLimits) {
    EXPECT_EQ(clamped_to_double(1.7976931348623157e+308), 1.7976931348623157e+308);
    EXPECT_EQ(clamped_to_double(-2.2250738585072014e-308), -2.2250738585072014e-308);
}

TEST(DoubleClamp, StopsInfinitiesAtTheLargestDouble) {
    EXPECT_EQ(clamped_to_double(infinity), 1.7976931348623157e+308);
    EXPECT_EQ(clamped_to_double(-infinity), -1.7976931348623157e+308);
}

TEST(DoubleClamp, MakesSubnormalNumbersPositiveZeros) {
    EXPECT_EQ(clamped_to_double(below(2.2250738585072014e-308)), 0);
    EXPECT_EQ(clamped_to_double(-5e-324), 0);
    EXPECT_FALSE(std::signbit(clamped_to_double(-5e-324)));
}

TEST(DoubleClamp, LeavesZerosAndNan) {
    EXPECT_TRUE(std::signbit(clamped_to_double(-0.0)));
    EXPECT_FALSE(std::signbit(clamped_to_double(0.0)));
    EXPECT_TRUE(std::isnan(clamped_to_double(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_TRUE(std::isnan(clamped_to_double(-std::numeric_limits<double>::quiet_NaN())));
}

TEST(SingleClampOfADouble, LeavesTheLimitsAndNarrowsThem) {
    EXPECT_EQ(clamped_to_single(1e38), 1e38F);
    EXPECT_EQ(clamped_to_single(-1e38), -1e38F);
    EXPECT_EQ(clamped_to_single(1e-37), 1e-37F);
    EXPECT_EQ(clamped_to_single(-1e-37), -1e-37F);
}

TEST(SingleClampOfADouble, StopsWhatLiesAboveTheUpperLimit) {
    EXPECT_EQ(clamped_to_single(above(1e38)), 1e38F);
    EXPECT_EQ(clamped_to_single(3e38), 1e38F);
    EXPECT_EQ(clamped_to_single(-1e300), -1e38F);
    EXPECT_EQ(clamped_to_single(infinity), 1e38F);
}

// 1e-37 and the double below it narrow to the same float.
TEST(SingleClampOfADouble, JudgesTheValueBeforeItIsNarrowed) {
    EXPECT_EQ(clamped_to_single(below(1e-37)), 0);
    EXPECT_EQ(clamped_to_single(-below(1e-37)), 0);
    EXPECT_FALSE(std::signbit(clamped_to_single(-below(1e-37))));
}

TEST(SingleClampOfADouble, LeavesZerosAndNan) {
    EXPECT_TRUE(std::signbit(clamped_to_single(-0.0)));
    EXPECT_TRUE(std::isnan(clamped_to_single(std::numeric_limits<double>::quiet_NaN())));
}

// The float nearest to 1e-37 is a little less than 1e-37.
TEST(SingleClampOfAFloat, FlushesTheFloatNearestToTheLowerLimit) {
    EXPECT_EQ(clamped_to_single(1e-37F), 0);
    EXPECT_EQ(clamped_to_single(std::nextafter(1e-37F, 1.0F)), std::nextafter(1e-37F, 1.0F));
}

TEST(SingleClampOfAFloat, StopsWhatLiesAboveTheUpperLimit) {
    EXPECT_EQ(clamped_to_single(1e38F), 1e38F);
    EXPECT_EQ(clamped_to_single(std::nextafter(1e38F, float_infinity)), 1e38F);
    EXPECT_EQ(clamped_to_single(-float_infinity), -1e38F);
}
