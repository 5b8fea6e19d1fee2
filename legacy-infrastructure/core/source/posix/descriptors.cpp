#include <orvix/core/descriptors.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace orvix::core {

namespace {

// Takes up again a transfer that a signal interrupted before the first byte.
template <class Transfer>
std::ptrdiff_t uninterrupted(Transfer transfer) {
    std::ptrdiff_t done;
    do {
        done = transfer();
    } while (done == -1 && errno == EINTR);
    return done;
}

}  // namespace

std::ptrdiff_t read_at(int descriptor, void* buffer, std::size_t bytes, std::uint64_t offset) {
    return uninterrupted([&] { return ::pread(descriptor, buffer, bytes, static_cast<off_t>(offset)); });
}

std::ptrdiff_t write_at(int descriptor, const void* buffer, std::size_t bytes, std::uint64_t offset) {
    return uninterrupted([&] { return ::pwrite(descriptor, buffer, bytes, static_cast<off_t>(offset)); });
}

std::ptrdiff_t write_pieces_at(int descriptor, std::span<const Piece> pieces, std::uint64_t offset) {
    std::array<iovec, most_pieces> vector;
    const std::size_t count = std::min(pieces.size(), vector.size());
    for (std::size_t i = 0; i < count; ++i) {
        vector[i] = {const_cast<void*>(pieces[i].data), pieces[i].bytes};  // which the call only reads
    }
    return uninterrupted(
        [&] { return ::pwritev(descriptor, vector.data(), static_cast<int>(count), static_cast<off_t>(offset)); });
}

std::int64_t size_of_descriptor(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 ? status.st_size : -1;
}

int close_descriptor(int descriptor) {
    // Interrupted or not, the descriptor is gone afterwards.
    return ::close(descriptor) == 0 || errno == EINTR ? 0 : -1;
}

}  // namespace orvix::core
