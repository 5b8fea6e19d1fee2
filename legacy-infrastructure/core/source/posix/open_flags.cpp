#include <orvix/core/open_flags.h>

#include <fcntl.h>

namespace orvix::core {

int create_exclusive_flags() { return O_CREAT | O_EXCL | O_RDWR; }

}  // namespace orvix::core
