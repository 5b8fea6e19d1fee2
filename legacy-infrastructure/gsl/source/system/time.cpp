#include <orvix/gsl/time.h>

#include "system/day_number.h"

#include <orvix/core/clock.h>

#include <cstring>

std::int32_t gtime_clock(GtimerType /*timer*/) { return 0; }

int gfile_cstat(void) { return 0; }

float gtime_eetime_interval(bool start) {
    static constinit double base = 0;
    const std::int64_t milliseconds = orvix::core::milliseconds_since_1970();
    const std::int64_t seconds = milliseconds / 1000;
    const double now = static_cast<double>(seconds) + static_cast<double>(milliseconds % 1000) / 1000.0;
    if (!start) return static_cast<float>(now - base);
    base = now;
    return 0;
}

void gtime_eewait(float /*seconds*/) {}

void gtime_eewhen(char* buffer) {
    if (buffer == nullptr || !orvix::core::local_time_text(buffer)) return;
    buffer[std::strcspn(buffer, "\n")] = '\0';
}

short gtime_jdays(void) {
    const orvix::core::CalendarDay today = orvix::core::local_day();
    return orvix::gsl::day_number(today.year, today.year_day);
}
