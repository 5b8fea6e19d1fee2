#include <orvix/core/file.h>

#include "posix/file_opening.h"
#include "posix/host_name.h"
#include "posix/opening.h"

#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvix::core {

namespace {

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

// Opening did not wait for the other end of a pipe; reading does, as long as there is one.
bool wait_for_input(int number) {
    pollfd input{number, POLLIN, 0};
    return uninterrupted([&] { return poll(&input, 1, -1); }) == 1;
}

}  // namespace

File::~File() {
    if (!is_open()) return;
    const int saved = errno;
    ::close(descriptor(handle_));
    errno = saved;
}

File File::open_to_read(const Path& name) {
    return FileOpening::to_read([&](int flags) { return open_path(name, flags, 0); });
}

File File::open_to_write(const Path& name) {
    return FileOpening::to_write([&](int flags) { return open_path(name, flags, FileOpening::permission); });
}

bool File::is_same_file(const File& other) const {
    const bool was_there = status_.st_ino != 0;
    return was_there && status_.st_dev == other.status_.st_dev && status_.st_ino == other.status_.st_ino;
}

std::size_t File::read(char* buffer, std::size_t bytes) {
    // A regular file tells its size, which spares a call to be told of its end. Files that the system makes up say 0.
    const std::uint64_t size = S_ISREG(status_.st_mode) ? static_cast<std::uint64_t>(status_.st_size) : 0;
    std::size_t done = 0;
    while (done < bytes) {
        const ssize_t step = ::read(descriptor(handle_), buffer + done, bytes - done);
        if (step == -1 && errno == EAGAIN && wait_for_input(descriptor(handle_))) continue;
        if (step == 0 || (step == -1 && errno != EINTR)) break;
        if (step > 0) {
            done += static_cast<std::size_t>(step);
            bytes_read_ += static_cast<std::uint64_t>(step);
            if (bytes_read_ == size) break;
        }
    }
    return done;
}

std::size_t File::write(const char* buffer, std::size_t bytes) {
    std::size_t done = 0;
    while (done < bytes) {
        const ssize_t step = ::write(descriptor(handle_), buffer + done, bytes - done);
        if (step == -1 && errno != EINTR) break;
        if (step > 0) done += static_cast<std::size_t>(step);
    }
    return done;
}

bool File::rewind() {
    bytes_read_ = 0;
    return lseek(descriptor(handle_), 0, SEEK_SET) == 0;
}

bool File::shorten(std::uint64_t bytes) {
    if (!S_ISREG(status_.st_mode) || static_cast<std::uint64_t>(status_.st_size) <= bytes) return true;
    return uninterrupted([&] { return ftruncate(descriptor(handle_), static_cast<off_t>(bytes)); }) == 0;
}

bool File::set_times(const ::_stat64& status) {
    const timespec times[2] = {status.st_atim, status.st_mtim};
    return futimens(descriptor(handle_), times) == 0;
}

bool File::close() {
    if (!is_open()) return true;
    // Interrupted or not, the descriptor is gone afterwards.
    return ::close(descriptor(std::exchange(handle_, -1))) == 0 || errno == EINTR;
}

}  // namespace orvix::core
