#include <orvix/core/open_flags.h>

#include <fcntl.h>

namespace orvix::core {

OpenFlags open_flags() { return {O_RDONLY, O_WRONLY, O_RDWR, O_ACCMODE, O_CREAT, O_TRUNC, O_EXCL, 0}; }

int create_exclusive_flags() { return O_CREAT | O_EXCL | O_RDWR; }

}  // namespace orvix::core
