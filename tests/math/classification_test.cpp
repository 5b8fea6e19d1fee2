#include "support/traps.h"

#include <orvix/gsl/real_functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace

TEST(Finite, IsOneForFiniteValuesAndZeroForOthers) {
    EXPECT_EQ(orvix::gsl::finite(0.0), 1.0);
    EXPECT_EQ(orvix::gsl::finite(-1.7976931348623157e+308), 1.0);
    EXPECT_EQ(orvix::gsl::finite(5e-324), 1.0);
    EXPECT_EQ(orvix::gsl::finite(infinity), 0.0);
    EXPECT_EQ(orvix::gsl::finite(-infinity), 0.0);
    EXPECT_EQ(orvix::gsl::finite(not_a_number), 0.0);
}

TEST(Isnan, TellsNanFromNumbersAndInfinities) {
    EXPECT_NE(orvix::gsl::isnan(not_a_number), 0);
    EXPECT_NE(orvix::gsl::isnan(-not_a_number), 0);
    EXPECT_EQ(orvix::gsl::isnan(infinity), 0);
    EXPECT_EQ(orvix::gsl::isnan(0.0), 0);
}

TEST(Square, HasNoGuard) {
    EXPECT_EQ(square(-3), 9);
    EXPECT_EQ(square(1e200), infinity);
    EXPECT_EQ(square(1e-200), 0);
}

TEST(GmathQuietNan, IsNan) { EXPECT_TRUE(std::isnan(gmath_quiet_nan())); }

TEST(GmathQuietNan, IsMadeWithoutATrapAndLeavesTrapsMasked) {
    orvix::test::trap_everything();
    gmath_quiet_nan();
    EXPECT_FALSE(orvix::test::anything_traps());
}
