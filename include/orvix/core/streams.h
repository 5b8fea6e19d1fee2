/// @file
/// What the system knows of open streams.
#pragma once

#include <orvix/core/export.h>

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace orvix::core {

/// @param stream  an open stream; not null
/// @return the system's descriptor under it; -1 with `errno` set if it has none
ORVIX_CORE_API int descriptor_of(std::FILE* stream);

/// @param stream  an open stream; not null
/// @return its position in bytes from the start of the file; -1 with `errno` set if it has none, as a pipe
ORVIX_CORE_API std::int64_t position_of(std::FILE* stream);

/// Writes to the process's standard error stream in a single call of the system, past every buffer. What cannot be
/// written is lost, and `errno` stays as it was.
ORVIX_CORE_API void write_standard_error(std::string_view text);

}  // namespace orvix::core
