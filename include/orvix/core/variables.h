/// @file
/// Process variables, with the system's registry behind them where there is one.
#pragma once

#include <orvix/core/export.h>

#include <string>

namespace orvix {

/// @param name  variable to read
/// @return its value in the process environment or, failing that, in the system's registry; empty if it has none
ORVIX_CORE_API std::string getenv_check_registry_stdstring(const std::string& name);

/// The same, for callers that must tell a variable that is set but empty from one that is missing.
///
/// @param name   variable to read
/// @param value  receives the value, or the empty string if there is none; may be null
/// @return true if the variable is set, also if it is set to nothing
ORVIX_CORE_API bool getenv_check_registry_stdstring_allow_empty(const std::string& name, std::string* value);

}  // namespace orvix
