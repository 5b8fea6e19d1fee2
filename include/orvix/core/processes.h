/// @file
/// Child processes behind a pipe, and the number of this process.
#pragma once

#include <orvix/core/export.h>

#include <cstdio>

namespace orvix::core {

/// Starts a command through the system's command processor, with a pipe to its input or from its output.
///
/// @param command  UTF-8 command line; the caller quotes its arguments
/// @param mode     "r" to read what the command prints, "w" to write what it reads
/// @return the pipe, to be closed with `close_pipe`; null on failure with `errno` set
ORVIX_CORE_API std::FILE* open_pipe(const char* command, const char* mode);

/// Closes a pipe of `open_pipe` and waits for its command.
/// @return the status that the system reports for the command, or -1
ORVIX_CORE_API int close_pipe(std::FILE* pipe);

/// @return the number of this process
ORVIX_CORE_API int process_number();

}  // namespace orvix::core
