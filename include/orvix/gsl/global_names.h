/// @file
/// Brings the names that the host's own C headers declare as well to global scope. Include it only where those headers
/// are not included, directly or through others (`<cstring>` brings `<strings.h>` on many systems); elsewhere name
/// `orvix::gsl` in full. No header of the library includes it.
#pragma once

#include <orvix/gsl/string_utilities.h>

using orvix::gsl::strcasecmp;
using orvix::gsl::strncasecmp;
