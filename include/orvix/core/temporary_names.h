/// @file
/// Names for temporary files.
#pragma once

#include <orvix/core/export.h>

#include <string>

namespace orvix::core {

/// Makes up a name that no file bears at this moment. Nothing is created: whoever opens the name must do so
/// exclusively, or better use `orvix::TemporaryFile`.
///
/// @param directory  directory for the name; null, or one that is missing or not writable, selects the system's
///                   directory for temporary files
/// @param prefix     how the last part begins; null for nothing
/// @return the name in the library's form; empty on failure
ORVIX_CORE_API std::string temporary_name(const char* directory, const char* prefix);

}  // namespace orvix::core
