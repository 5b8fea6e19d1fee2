#include <orvix/core/clock.h>

#include <algorithm>
#include <cstring>

#include <time.h>

#include <sys/timeb.h>
#include <windows.h>

namespace orvix::core {

std::int64_t milliseconds_since_1970() {
    __timeb64 now{};
    _ftime64(&now);
    return now.time * 1000 + now.millitm;
}

CalendarDay local_day() {
    const __time64_t now = _time64(nullptr);
    const tm* calendar = _localtime64(&now);  // in memory of the calling thread
    if (calendar == nullptr) return {};
    return {calendar->tm_year, calendar->tm_yday};
}

bool local_time_text(char* buffer) {
    constexpr std::size_t text_bytes = 25;
    const __time64_t now = _time64(nullptr);
    const char* text = _ctime64(&now);  // in memory of the calling thread
    buffer[0] = '\0';
    if (text == nullptr || std::strlen(text) != text_bytes) return false;
    std::memcpy(buffer, text, text_bytes + 1);
    return true;
}

void sleep_seconds(std::uint32_t seconds) {
    constexpr std::uint32_t longest_step = 1'000'000;  // the system counts milliseconds in 32 bits
    while (seconds > 0) {
        const std::uint32_t step = std::min(seconds, longest_step);
        Sleep(step * 1000);
        seconds -= step;
    }
}

}  // namespace orvix::core
