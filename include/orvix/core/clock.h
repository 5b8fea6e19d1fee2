/// @file
/// Time of day and waiting.
#pragma once

#include <orvix/core/export.h>

#include <cstdint>

namespace orvix::core {

/// A moment as the local calendar shows it.
struct CalendarDay {
    std::int32_t year;      ///< years since 1900
    std::int32_t year_day;  ///< days since the first of January, from 0
};

/// @return milliseconds since the first of January 1970, UTC
ORVIX_CORE_API std::int64_t milliseconds_since_1970();

/// @return today, by the process's time zone
ORVIX_CORE_API CalendarDay local_day();

/// Writes the present local time in the form "Thu Jan  1 00:00:00 1970\n".
/// @param buffer  receives 25 characters and a zero byte; not null
/// @return false if the time cannot be told, with `buffer` set to the empty string
ORVIX_CORE_API bool local_time_text(char* buffer);

/// Waits for so many seconds; a signal does not cut the wait short.
ORVIX_CORE_API void sleep_seconds(std::uint32_t seconds);

}  // namespace orvix::core
