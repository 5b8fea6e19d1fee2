// Kinds of file from the bits of a status record.
#pragma once

#include <orvix/core/file_status.h>

#include <sys/stat.h>

namespace orvix::core {

inline FileKind kind_of_mode(mode_t mode) {
    if (S_ISREG(mode)) return FileKind::regular;
    if (S_ISDIR(mode)) return FileKind::directory;
    if (S_ISLNK(mode)) return FileKind::link;
    return FileKind::other;
}

}  // namespace orvix::core
