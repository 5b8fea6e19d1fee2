/// @file
/// The system's numbers for ways of opening a file.
#pragma once

#include <orvix/core/export.h>

namespace orvix::core {

/// Flags of `orvix::open_utf8`.
struct OpenFlags {
    int read_only;   ///< to be read
    int write_only;  ///< to be written
    int read_write;  ///< to be read and written
    int access;      ///< covers the three ways above, of which a caller chooses one
    int create;      ///< make the file if it is missing
    int truncate;    ///< drop what it holds
    int exclusive;   ///< together with `create`: fail if it is there
    int binary;      ///< bytes untranslated; 0 where the system never translates
};

/// @return the system's numbers
ORVIX_CORE_API OpenFlags open_flags();

/// @return the flags of `orvix::open_utf8` for a file that must not be there yet: create, exclusive, read and write,
///         bytes untranslated
ORVIX_CORE_API int create_exclusive_flags();

}  // namespace orvix::core
