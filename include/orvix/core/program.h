/// @file
/// What a program's `main` asks of the system before anything else.
#pragma once

#include <orvix/core/export.h>

#include <cstdio>
#include <string>
#include <vector>

namespace orvix::core {

/// The arguments of this process in UTF-8. Where the system hands `main` another encoding they come from the system
/// itself, and both parameters are passed over.
///
/// @param argc  that of `main`
/// @param argv  that of `main`
/// @return the program's name and its arguments
ORVIX_CORE_API std::vector<std::string> program_arguments(int argc, char** argv);

/// Has a stream pass bytes as they are. Where the system writes lines with two bytes at their ends it does not do so to
/// this stream any more; elsewhere nothing changes. To be called before the stream is used.
///
/// @param stream  standard input or output, or any other open stream; not null
ORVIX_CORE_API void pass_bytes_untranslated(std::FILE* stream);

}  // namespace orvix::core
