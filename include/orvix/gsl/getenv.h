/// @file
/// The reader of process variables, which every family may use.
#pragma once

#include <orvix/gsl/export.h>

/// Reads a process variable; where the system has a registry and the process environment does not hold the variable,
/// the registry is asked. The layered `.cfg` settings play no part.
///
/// Not synchronised: the library keeps one copy for the whole process.
///
/// @param name  variable to read, exact in letter case on systems that tell case apart; null is never found
/// @return the value, possibly empty, in a buffer of the library that stays good until the next successful call
///         anywhere in the process and must not be freed; null if the variable is not set, which leaves the earlier
///         result alive
ORVIX_GSL_API char* gsl_getenv(const char* name);
