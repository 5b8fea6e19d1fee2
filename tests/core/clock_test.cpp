#include <orvix/core/clock.h>
#include <orvix/core/floating_point.h>
#include <orvix/core/variables.h>

#include "support/temporary_directory.h"
#include "support/traps.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <ctime>
#include <string>

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

using orvix::test::ScopedVariable;

TEST(Clock, MillisecondsAgreeWithTheSecondsOfTheSystem) {
    const std::time_t before = std::time(nullptr);
    const std::int64_t now = orvix::core::milliseconds_since_1970();
    const std::time_t after = std::time(nullptr);
    EXPECT_GE(now / 1000 + 1, before);
    EXPECT_LE(now / 1000, after);
}

TEST(Clock, TheLocalDayIsTheCalendars) {
    const std::time_t now = std::time(nullptr);
    const std::tm calendar = *std::localtime(&now);
    const orvix::core::CalendarDay day = orvix::core::local_day();
    EXPECT_EQ(day.year, calendar.tm_year);
    EXPECT_EQ(day.year_day, calendar.tm_yday);
}

TEST(Clock, TheLocalTimeTextHasTwentyFiveCharacters) {
    char buffer[26];
    ASSERT_TRUE(orvix::core::local_time_text(buffer));
    const std::string text = buffer;
    EXPECT_EQ(text.size(), 25U);
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(text[13], ':');
}

TEST(Clock, SleepingForNoTimeReturnsAtOnce) { orvix::core::sleep_seconds(0); }

TEST(FloatingPoint, MaskedTrapsStayMasked) {
    orvix::test::trap_divisions_by_zero();
    orvix::core::mask_floating_point_traps();
    EXPECT_FALSE(orvix::test::anything_traps());
}

TEST(FloatingPoint, MaskingTrapsKeepsTheStatus) {
    std::feclearexcept(FE_ALL_EXCEPT);
    std::feraiseexcept(FE_DIVBYZERO);
    orvix::core::mask_floating_point_traps();
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), FE_DIVBYZERO);
}

#if defined(__SSE__)
TEST(FloatingPoint, TheTrapOfSubnormalOperandsIsMaskedToo) {
    _mm_setcsr(_mm_getcsr() & ~static_cast<unsigned>(_MM_MASK_DENORM));
    orvix::core::mask_floating_point_traps();
    EXPECT_EQ(_mm_getcsr() & _MM_MASK_MASK, static_cast<unsigned>(_MM_MASK_MASK));
}
#endif

TEST(Variables, AMissingVariableDiffersFromAnEmptyOne) {
    const ScopedVariable empty("ORVIX_TEST_EMPTY", "");
    const ScopedVariable missing("ORVIX_TEST_MISSING", nullptr);
    std::string value = "before";
    EXPECT_TRUE(orvix::getenv_check_registry_stdstring_allow_empty("ORVIX_TEST_EMPTY", &value));
    EXPECT_EQ(value, "");
    value = "before";
    EXPECT_FALSE(orvix::getenv_check_registry_stdstring_allow_empty("ORVIX_TEST_MISSING", &value));
    EXPECT_EQ(value, "");
    EXPECT_FALSE(orvix::getenv_check_registry_stdstring_allow_empty("ORVIX_TEST_MISSING", nullptr));
}

TEST(Variables, AValueIsGivenAsItIs) {
    const ScopedVariable set("ORVIX_TEST_SET", " a b ");
    EXPECT_EQ(orvix::getenv_check_registry_stdstring("ORVIX_TEST_SET"), " a b ");
    EXPECT_EQ(orvix::getenv_check_registry_stdstring("ORVIX_TEST_NOT_SET"), "");
}
