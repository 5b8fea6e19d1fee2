#include "system/day_number.h"

#include <gtest/gtest.h>

namespace {

using orvix::gsl::day_number;

TEST(DayNumber, TheFirstOfJanuary1970IsDayOne) { EXPECT_EQ(day_number(70, 0), 1); }

TEST(DayNumber, TheFirstOfJanuary2025IsDay20089) { EXPECT_EQ(day_number(125, 0), 20089); }

TEST(DayNumber, TheYearAfterALeapYearBeginsWithTheNumberOfTheDayBefore) {
    EXPECT_EQ(day_number(72, 365), 1096);  // the last of December 1972
    EXPECT_EQ(day_number(73, 0), 1096);
    EXPECT_EQ(day_number(73, 364), 1460);
    EXPECT_EQ(day_number(74, 0), 1462);
}

TEST(DayNumber, TurnsNegativeInTheYear2059) {
    EXPECT_EQ(day_number(158, 364), 32507);
    EXPECT_EQ(day_number(159, 259), 32767);
    EXPECT_EQ(day_number(159, 260), -32768);
}

// The quarters of a day wrap below zero before they are shifted; the low 16 bits hide it.
TEST(DayNumber, DaysBefore1970AreNotPositive) {
    EXPECT_EQ(day_number(69, 364), -1);
    EXPECT_EQ(day_number(69, 0), -365);
    EXPECT_EQ(day_number(0, 0), -25567);
}

}  // namespace
