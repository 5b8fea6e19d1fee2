/// @file
/// Directory scans and file status on UTF-8 names, in the shape that POSIX gave them.
///
/// The names of the scan stand in `orvix::gsl`, because the host's headers may declare them too;
/// `<orvix/gsl/global_names.h>` brings them to global scope for sources that do not include the host's.
#pragma once

#include <orvix/core/file_status.h>
#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>

namespace orvix::gsl {

/// The entry record of a scan; one for each scan, overwritten by each `readdir`.
struct dirent {
    std::size_t d_namlen;  ///< bytes of the name, zero byte not counted
    char d_name[256];      ///< the name in UTF-8, ended by a zero byte
};

/// The system's side of a scan.
struct SearchRecord;

/// A directory scan. Callers pass the pointer on and read nothing but `count`.
struct _dirdesc {
    std::int32_t count;    ///< entries handed out so far
    dirent* current;       ///< the entry record
    SearchRecord* search;  ///< the system's walk over the directory
};

/// Starts a scan over the entries of a directory. The first entry is read at once, so that a directory that is missing
/// shows here.
///
/// A name that ends in "~" stands for the home directory, whatever comes before: the process variable `HOME` or, if
/// that is empty, `HOMEPATH`.
///
/// @param name  directory, with or without a separator at its end
/// @return a scan, to be closed with `closedir`; null for a null or empty name, a name that ends in "*", a name that is
///         no readable directory, an unknown home, or without memory
ORVIX_GSL_API _dirdesc* opendir(const char* name);

/// The same as `opendir` under a second name.
ORVIX_GSL_API _dirdesc* opendir_utf8(const char* name);

/// Steps to the next entry, in the system's order, "." and ".." included. Entries made or removed since the scan began
/// may or may not show up.
///
/// @param scan  open scan, or null
/// @return the scan's one record, good until the next `readdir` or `closedir` on it; null at the end, on failure, and
///         for a null scan
ORVIX_GSL_API dirent* readdir(_dirdesc* scan);

/// Ends a scan and frees it.
///
/// @param scan  open scan, or null
/// @return 0, also for null; -1 if the system reports a failure
ORVIX_GSL_API int closedir(_dirdesc* scan);

}  // namespace orvix::gsl

/// Reads the status of what a name leads to. Separators of both kinds do, one at the end is ignored, and a bare drive
/// (`c:`) means its root; should the name not be found under this reading, it is tried as it is spelled.
///
/// @param name    file or directory; null fails
/// @param record  receives the status, with sizes of 32 bits where the platform has two widths; null only tests whether
///                the name exists
/// @return 0, or -1 with `errno` set
ORVIX_GSL_API int gsl_stat(const char* name, orvix::core::FileStatus32* record);

/// The same as `gsl_stat` with sizes of 64 bits.
ORVIX_GSL_API int gsl_stat_64(const char* name, orvix::core::FileStatus* record);

/// @param record  status of a file; not null
/// @return true if it is that of a directory
ORVIX_GSL_API bool gsl_stat_is_dir(const orvix::core::FileStatus32* record);
