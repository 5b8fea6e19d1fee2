#include <orvix/gsl/time.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <ctime>
#include <string>

namespace {

TEST(GtimeClock, GivesZeroForEveryTimer) {
    EXPECT_EQ(gtime_clock(GtimerType{}), 0);
    EXPECT_EQ(gtime_clock(static_cast<GtimerType>(7)), 0);
    EXPECT_EQ(gtime_clock(static_cast<GtimerType>(-1)), 0);
}

TEST(GfileCstat, GivesZero) { EXPECT_EQ(gfile_cstat(), 0); }

// Each test is a process of its own under ctest, so nobody has set a starting point here.
TEST(GtimeEetimeInterval, CountsFrom1970AtFirstAndFromTheStartingPointThen) {
    const auto now = static_cast<float>(std::time(nullptr));
    EXPECT_NEAR(gtime_eetime_interval(false), now, 1000);
    EXPECT_EQ(gtime_eetime_interval(true), 0.0F);
    EXPECT_LT(gtime_eetime_interval(false), 1000.0F);
    EXPECT_EQ(gtime_eetime_interval(true), 0.0F);
}

TEST(GtimeEetimeInterval, TellsPartsOfASecond) {
    gtime_eetime_interval(true);
    float interval = 0;
    while (interval < 3 && interval == std::floor(interval)) interval = gtime_eetime_interval(false);
    EXPECT_NE(interval, std::floor(interval));
}

TEST(GtimeEewait, ReturnsAtOnce) {
    const std::time_t before = std::time(nullptr);
    gtime_eewait(3600.0F);
    EXPECT_LT(std::time(nullptr) - before, 3600);
}

TEST(GtimeEewhen, GivesTheLocalTimeWithoutALineEnd) {
    char buffer[26];
    std::memset(buffer, '#', sizeof buffer);
    const std::time_t before = std::time(nullptr);
    gtime_eewhen(buffer);
    const std::time_t after = std::time(nullptr);
    const auto text_of = [](std::time_t time) { return std::string(std::ctime(&time), 24); };
    EXPECT_THAT(buffer, testing::AnyOf(text_of(before), text_of(after)));
}

TEST(GtimeEewhen, WithoutABufferDoesNothing) { gtime_eewhen(nullptr); }

TEST(GtimeJdays, IsTheNumberOfTheLocalDay) {
    const auto days_since_1970 = [] {
        const std::time_t now = std::time(nullptr);
        const std::tm today = *std::localtime(&now);
        const std::chrono::year year(today.tm_year + 1900);
        const std::chrono::sys_days day = year / (today.tm_mon + 1) / today.tm_mday;
        const bool after_a_leap_year = (year - std::chrono::years(1)).is_leap();
        return day.time_since_epoch().count() - (after_a_leap_year ? 1 : 0);
    };
    const auto before = days_since_1970();
    const short number = gtime_jdays();
    const auto after = days_since_1970();
    EXPECT_THAT(number, testing::AnyOf(static_cast<short>(before + 1), static_cast<short>(after + 1)));
}

}  // namespace
