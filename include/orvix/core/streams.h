/// @file
/// What the system knows of an open stream.
#pragma once

#include <orvix/core/export.h>

#include <cstdio>

namespace orvix::core {

/// @param stream  an open stream; not null
/// @return the system's descriptor under it; -1 with `errno` set if it has none
ORVIX_CORE_API int descriptor_of(std::FILE* stream);

}  // namespace orvix::core
