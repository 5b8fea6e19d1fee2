#include <orvix/core/temporary_file.h>

#include "common/path_access.h"

#include <cerrno>

namespace orvix {

TemporaryFile::~TemporaryFile() {
    const int saved = errno;
    file_.close();
    if (!core::PathAccess::text(path_).empty()) path_.delete_file_or_directory();
    errno = saved;
}

}  // namespace orvix
