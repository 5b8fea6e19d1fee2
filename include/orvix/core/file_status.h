/// @file
/// The status of files: kind, size, times.
#pragma once

#include <orvix/core/export.h>

#include <cstdint>
#include <string_view>

#if defined(_WIN32)
#include <wchar.h>  // has the status records, and less beside them than <sys/stat.h>
#else
#include <sys/stat.h>
/// The platform's status record under the name that callers of 32-bit sizes know. Here one record serves both widths.
using _stat64i32 = struct stat;
/// The same under the name that callers of 64-bit sizes know.
using _stat64 = struct stat;
#endif

namespace orvix {
class Path;
}

namespace orvix::core {

#if defined(_WIN32)
/// The platform's status record with a 64-bit size. (There a function bears the same name and hides it.)
using FileStatus = struct ::_stat64;
/// The platform's status record with a 32-bit size.
using FileStatus32 = struct ::_stat64i32;
#else
/// The platform's status record with a 64-bit size.
using FileStatus = struct stat;
/// The platform's status record with a 32-bit size, where there is one.
using FileStatus32 = struct stat;
#endif

/// Reads the status of what a name leads to, with a 64-bit size.
///
/// @param name    file or directory
/// @param status  receives the status; not null
/// @return 0, or -1 with `errno` set and the record unspecified
ORVIX_CORE_API int read_status(const Path& name, FileStatus* status);

/// True if a status is that of a directory.
inline bool is_directory(const FileStatus& status) { return (status.st_mode & 0xf000U) == 0x4000U; }

/// Tells whether a name exists, links followed, without reading its status.
/// @return 0, or -1 with `errno` set
ORVIX_CORE_API int test_existence(const Path& name);

/// The same as `read_status` on the text of a name, for callers that ask for many.
ORVIX_CORE_API int read_status_utf8(std::string_view name, FileStatus* status);

#if defined(_WIN32)
/// The same with a 32-bit size: a larger file is told to have the largest that it holds.
inline int read_status_utf8(std::string_view name, FileStatus32* status) {
    FileStatus wide;
    if (read_status_utf8(name, &wide) != 0) return -1;
    *status = {wide.st_dev,  wide.st_ino, wide.st_mode,  wide.st_nlink, wide.st_uid,  wide.st_gid,
               wide.st_rdev, INT32_MAX,   wide.st_atime, wide.st_mtime, wide.st_ctime};
    if (wide.st_size < INT32_MAX) status->st_size = static_cast<std::int32_t>(wide.st_size);
    return 0;
}
#endif

/// The same as `test_existence` on the text of a name, for callers that test many.
ORVIX_CORE_API int test_existence_utf8(std::string_view name);

/// Kinds of file as the name itself has it, links not followed.
enum class FileKind : std::int32_t { missing, regular, directory, link, other };

/// Reads the kind of the name itself.
/// @return `missing` with `errno` set for a name that is not there or cannot be read
ORVIX_CORE_API FileKind kind_of_name(const Path& name);

/// Reads the kind of what a name leads to, links followed, for callers that have more than one question about it.
/// @return never `link`; `missing` with `errno` set for a name that leads to nothing or cannot be read
ORVIX_CORE_API FileKind kind_of_target(const Path& name);

/// True if the name itself is a symbolic link (a mount point is none); false if the name is not there.
/// @throw std::filesystem::filesystem_error  with "symlink_status", for any failure but a missing name
ORVIX_CORE_API bool is_symbolic_link(const Path& name);

/// Sets the access and the modification time of a file, in whole seconds since 1970.
/// @return 0, or -1 with `errno` set
ORVIX_CORE_API int set_file_times(const Path& name, std::int64_t access_time, std::int64_t modification_time);

}  // namespace orvix::core
