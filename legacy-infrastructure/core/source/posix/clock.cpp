#include <orvix/core/clock.h>

#include <time.h>

#include <cerrno>

namespace orvix::core {

std::int64_t milliseconds_since_1970() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

CalendarDay local_day() {
    const time_t now = time(nullptr);
    tm calendar{};
    localtime_r(&now, &calendar);
    return {calendar.tm_year, calendar.tm_yday};
}

bool local_time_text(char* buffer) {
    const time_t now = time(nullptr);
    if (ctime_r(&now, buffer) != nullptr) return true;
    buffer[0] = '\0';
    return false;
}

void sleep_seconds(std::uint32_t seconds) {
    timespec rest{};
    rest.tv_sec = seconds;
    while (nanosleep(&rest, &rest) == -1 && errno == EINTR) {
    }
}

}  // namespace orvix::core
