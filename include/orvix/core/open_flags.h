/// @file
/// The system's numbers for ways of opening a file.
#pragma once

#include <orvix/core/export.h>

namespace orvix::core {

/// @return the flags of `orvix::open_utf8` for a file that must not be there yet: create, exclusive, read and write,
///         bytes untranslated
ORVIX_CORE_API int create_exclusive_flags();

}  // namespace orvix::core
