/// @file
/// Clocks: measured intervals, the time of day as text, and day numbers.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

/// The timer that `gtime_clock` is asked for. There are no timers to tell apart, so no value has a name.
enum GtimerType : std::int32_t {};

/// A remainder of old timers, kept for the programs that are linked against it.
///
/// @param timer  ignored
/// @return 0
ORVIX_GSL_API std::int32_t gtime_clock(GtimerType timer);

/// `gtime_clock` under an older name.
///
/// @return 0
ORVIX_GSL_API int gfile_cstat(void);

/// Measures time by the system's clock, which somebody may set meanwhile. The starting point belongs to the process and
/// is not synchronised.
///
/// @param start  true sets the starting point to now; false asks for the time since then
/// @return 0 for true; for false the seconds since the starting point, in steps of milliseconds, or since the first of
///         January 1970 UTC if none has been set
ORVIX_GSL_API float gtime_eetime_interval(bool start);

/// Does nothing, and so does not wait: kept for the programs that are linked against it. `gsl_sleep` waits.
///
/// @param seconds  ignored
ORVIX_GSL_API void gtime_eewait(float seconds);

/// Writes the present local time in the form "Thu Jan  1 00:00:00 1970", in English whatever the locale.
///
/// @param buffer  receives the text and its zero byte; at least 26 bytes; empty if the time cannot be told. Null is
///                left alone.
ORVIX_GSL_API void gtime_eewhen(char* buffer);

/// Tells the number of the present local day: 1 for the first of January 1970, 20089 for the first of January 2025.
///
/// Days count up by one, but the year after a leap year begins with the number of the day before it, and stays one
/// short.
///
/// @return the number in 16 bits, which turns negative in the course of the year 2059; before 1970, 0 and less
ORVIX_GSL_API short gtime_jdays(void);
