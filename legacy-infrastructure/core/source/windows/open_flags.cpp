#include <orvix/core/open_flags.h>

#include <fcntl.h>

namespace orvix::core {

OpenFlags open_flags() {
    return {_O_RDONLY, _O_WRONLY, _O_RDWR, _O_RDONLY | _O_WRONLY | _O_RDWR, _O_CREAT, _O_TRUNC, _O_EXCL, _O_BINARY};
}

int create_exclusive_flags() { return _O_CREAT | _O_EXCL | _O_RDWR | _O_BINARY; }

}  // namespace orvix::core
