#include <orvix/core/descriptors.h>

#include "windows/last_error.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <io.h>

namespace orvix::core {

namespace {

// Looks a descriptor up; not valid with errno EBADF for one that is closed.
HANDLE handle_of(int descriptor) { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); }

// A transfer at a place moves the position of the file. Puts it back at the end of its scope.
class KeptPosition {
public:
    explicit KeptPosition(HANDLE file) : file_(file) {
        is_known_ = SetFilePointerEx(file, LARGE_INTEGER{}, &before_, FILE_CURRENT) != 0;
    }
    ~KeptPosition() {
        const DWORD saved = GetLastError();
        if (is_known_) SetFilePointerEx(file_, before_, nullptr, FILE_BEGIN);
        SetLastError(saved);
    }
    KeptPosition(const KeptPosition&) = delete;
    KeptPosition& operator=(const KeptPosition&) = delete;

private:
    HANDLE file_;
    LARGE_INTEGER before_{};
    bool is_known_ = false;
};

OVERLAPPED place_at(std::uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

constexpr std::size_t longest_transfer = std::size_t{1} << 30;  // the system counts in 32 bits

DWORD length_of(std::size_t bytes) { return static_cast<DWORD>(std::min(bytes, longest_transfer)); }

// How many bytes were written; -1 with the last error set.
std::ptrdiff_t write_once(HANDLE file, const char* data, std::size_t bytes, std::uint64_t offset) {
    OVERLAPPED place = place_at(offset);
    DWORD done = 0;
    return WriteFile(file, data, length_of(bytes), &done, &place) != 0 ? static_cast<std::ptrdiff_t>(done) : -1;
}

// Writes pieces one behind the other. The system gathers nothing but whole pages, so small pieces are put together
// first. Stops at the first write that does not take all it is given.
class Gathering {
public:
    Gathering(HANDLE file, std::uint64_t offset) : file_(file), offset_(offset) {}

    void write(const Piece& piece) {
        if (piece.bytes > buffer_.size() - used_) flush();
        if (piece.bytes > buffer_.size()) {
            put(static_cast<const char*>(piece.data), piece.bytes);
        } else if (piece.bytes != 0) {
            std::memcpy(buffer_.data() + used_, piece.data, piece.bytes);
            used_ += piece.bytes;
        }
    }

    // How many bytes were written altogether; -1 with the last error set if none were because of a failure.
    std::ptrdiff_t finish() {
        flush();
        return has_failed_ && done_ == 0 ? -1 : done_;
    }

private:
    void flush() {
        if (used_ != 0) put(buffer_.data(), used_);
        used_ = 0;
    }

    void put(const char* data, std::size_t bytes) {
        if (is_over_) return;
        const std::ptrdiff_t written = write_once(file_, data, bytes, offset_ + static_cast<std::uint64_t>(done_));
        has_failed_ = written == -1;
        is_over_ = has_failed_ || static_cast<std::size_t>(written) != bytes;
        if (!has_failed_) done_ += written;
    }

    HANDLE file_;
    std::uint64_t offset_;
    std::ptrdiff_t done_ = 0;
    bool is_over_ = false;
    bool has_failed_ = false;
    std::size_t used_ = 0;
    std::array<char, std::size_t{64} << 10> buffer_;
};

}  // namespace

std::ptrdiff_t read_at(int descriptor, void* buffer, std::size_t bytes, std::uint64_t offset) {
    const HANDLE file = handle_of(descriptor);
    if (file == INVALID_HANDLE_VALUE) return -1;
    const KeptPosition position(file);
    OVERLAPPED place = place_at(offset);
    DWORD done = 0;
    if (ReadFile(file, buffer, length_of(bytes), &done, &place) != 0) return static_cast<std::ptrdiff_t>(done);
    return GetLastError() == ERROR_HANDLE_EOF ? 0 : fail_with_last_error();
}

std::ptrdiff_t write_at(int descriptor, const void* buffer, std::size_t bytes, std::uint64_t offset) {
    const HANDLE file = handle_of(descriptor);
    if (file == INVALID_HANDLE_VALUE) return -1;
    const KeptPosition position(file);
    const std::ptrdiff_t done = write_once(file, static_cast<const char*>(buffer), bytes, offset);
    return done != -1 ? done : fail_with_last_error();
}

std::ptrdiff_t write_pieces_at(int descriptor, std::span<const Piece> pieces, std::uint64_t offset) {
    const HANDLE file = handle_of(descriptor);
    if (file == INVALID_HANDLE_VALUE) return -1;
    const KeptPosition position(file);
    Gathering gathering(file, offset);
    for (const Piece& piece : pieces.first(std::min(pieces.size(), most_pieces))) gathering.write(piece);
    const std::ptrdiff_t done = gathering.finish();
    return done != -1 ? done : fail_with_last_error();
}

std::int64_t size_of_descriptor(int descriptor) {
    const HANDLE file = handle_of(descriptor);
    if (file == INVALID_HANDLE_VALUE) return -1;
    LARGE_INTEGER size;
    return GetFileSizeEx(file, &size) != 0 ? size.QuadPart : fail_with_last_error();
}

int close_descriptor(int descriptor) { return _close(descriptor); }

}  // namespace orvix::core
