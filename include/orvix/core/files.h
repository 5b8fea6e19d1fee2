/// @file
/// System calls on UTF-8 names, in the library's name form (see path.h). They fail as the system's own calls do, with
/// `errno` set; `ENOENT` is also the answer for a name that can stand for nothing on this host.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace orvix {

/// @return the current directory in the library's form; empty if it cannot be told or no drive holds it
ORVIX_CORE_API std::string getcwd_utf8();

namespace core {
/// Writes what `getcwd_utf8` gives, for callers that ask often.
///
/// @param to  receives the text without a zero byte; must hold it
/// @return the bytes written
ORVIX_CORE_API std::size_t put_current_directory(char* to);
}  // namespace core

/// Changes the current directory of the whole process.
/// @return 0 on success, else -1
ORVIX_CORE_API int chdir_utf8(const Path& directory);

/// The system's `open`. The descriptor is not inherited by child processes.
///
/// @param name        file to open
/// @param flags       the system's flags (`O_RDONLY` and so on)
/// @param permission  permission bits of a file that this call makes, before the process's mask
/// @return a descriptor, which the caller closes; -1 on failure
ORVIX_CORE_API int open_utf8(const std::string& name, int flags, int permission);

/// The system's `access`.
///
/// @param name  file to test
/// @param mode  0 for existence, 2 for writing, 4 for reading, 6 for both
/// @return 0 if the process may, else -1
ORVIX_CORE_API int access_utf8(const std::string& name, int mode);

/// @return the size in bytes, links followed; 0 with `errno` set if the name cannot be read
ORVIX_CORE_API std::uint64_t filesize_utf8(const std::string& name);

/// The system's `chmod`.
/// @return 0 on success, else -1
ORVIX_CORE_API int chmod_utf8(const std::string& name, int mode);

/// The system's `unlink`: removes a file or a link.
/// @return 0 on success, else -1
ORVIX_CORE_API int unlink_utf8(const std::string& name);

/// @return a copy of `name` with every separator in the library's form, the backslash
ORVIX_CORE_API std::string fixFilenameSlashes(const std::string& name);

}  // namespace orvix
