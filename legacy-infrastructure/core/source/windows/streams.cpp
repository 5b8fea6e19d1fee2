#include <orvix/core/streams.h>

#include <cerrno>

#include <io.h>
#include <stdio.h>

namespace orvix::core {

int descriptor_of(std::FILE* stream) {
    const int descriptor = _fileno(stream);
    if (descriptor >= 0) return descriptor;
    errno = EBADF;
    return -1;
}

std::int64_t position_of(std::FILE* stream) { return _ftelli64(stream); }

// Line feeds are written as the stream would write them.
void write_standard_error(std::string_view text) {
    constexpr int standard_error = 2;
    const int saved = errno;
    _write(standard_error, text.data(), static_cast<unsigned>(text.size()));
    errno = saved;
}

}  // namespace orvix::core
