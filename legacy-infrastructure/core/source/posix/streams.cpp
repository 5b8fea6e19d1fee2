#include <orvix/core/streams.h>

#include <cerrno>

#include <stdio.h>
#include <unistd.h>

namespace orvix::core {

int descriptor_of(std::FILE* stream) { return fileno(stream); }

std::int64_t position_of(std::FILE* stream) { return ftello(stream); }

void write_standard_error(std::string_view text) {
    const int saved = errno;
    ssize_t done;
    do {
        done = ::write(STDERR_FILENO, text.data(), text.size());
    } while (done == -1 && errno == EINTR);
    errno = saved;
}

}  // namespace orvix::core
