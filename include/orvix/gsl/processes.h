/// @file
/// Child processes behind a pipe, and waiting.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdio>

/// Starts a command through the system's command processor, with a pipe from its output or to its input.
///
/// @param command  command line in UTF-8; null fails. Its arguments are the caller's to quote, each with
///                 `HX_quote_argument`: a text from outside that is not quoted may be a command of its own.
/// @param mode     "r" to read what the command prints, "w" to write what it reads; null fails
/// @return the pipe, to be closed with `gsl_pclose`; null on failure with `errno` set. A command that does not exist is
///         no failure here: it shows in the status of `gsl_pclose`.
ORVIX_GSL_API std::FILE* gsl_popen(const char* command, const char* mode);

/// Closes a pipe of `gsl_popen` and waits until its command has ended.
///
/// @param pipe  pipe to close; null fails
/// @return 0 if the command ended with status 0, else the status in the system's form (where processes may end by a
///         signal, the exit status stands in the second byte); -1 on failure with `errno` set
ORVIX_GSL_API int gsl_pclose(std::FILE* pipe);

/// Waits. A signal does not cut the wait short.
///
/// @param seconds  time to wait
/// @return 0
ORVIX_GSL_API unsigned int gsl_sleep(unsigned int seconds);
