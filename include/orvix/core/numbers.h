/// @file
/// Number text under the rules of the "C" locale, whatever the locale of the process.
#pragma once

#include <orvix/core/export.h>

namespace orvix::core {

/// The C library's `strtod` in the "C" locale: leading white space, decimal and hexadecimal numbers, "inf" and "nan".
///
/// @param text  zero-ended text
/// @param end   receives where the number ends: `text` if there is none; not null
/// @return the value, correctly rounded; infinite with `errno` `ERANGE` if it is too large
ORVIX_CORE_API double strtod_c(const char* text, const char** end);

}  // namespace orvix::core
