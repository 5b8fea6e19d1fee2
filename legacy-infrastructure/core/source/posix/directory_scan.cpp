#include <orvix/core/directory_scan.h>

#include "posix/descriptor.h"
#include "posix/host_name.h"

#include <cstring>
#include <new>

#include <dirent.h>
#include <fcntl.h>

namespace orvix::core {

// The system fills a buffer with records of varying length; reading it in place spares a call and a copy for each
// entry.
struct DirectoryScan::Walk {
    explicit Walk(Descriptor opened) : directory(std::move(opened)) {}

    bool fill() {
        position = 0;
        const ssize_t bytes = getdents64(directory.number(), buffer, sizeof buffer);
        filled = bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
        return filled > 0;
    }

    Descriptor directory;
    std::size_t position = 0;
    std::size_t filled = 0;
    alignas(dirent64) char buffer[32768];
};

DirectoryScan::DirectoryScan() = default;

DirectoryScan::~DirectoryScan() { close(); }

bool DirectoryScan::open(const Path& directory) {
    close();
    Descriptor descriptor(
        call_on_existing(directory, [](const char* host) { return ::open(host, O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!descriptor.valid()) return false;
    walk_.reset(new (std::nothrow) Walk(std::move(descriptor)));
    if (walk_ == nullptr) errno = ENOMEM;
    return walk_ != nullptr;
}

bool DirectoryScan::next(std::string_view* name) {
    if (walk_ == nullptr) return false;
    if (walk_->position == walk_->filled && !walk_->fill()) return false;
    const char* record = walk_->buffer + walk_->position;
    unsigned short record_bytes;
    std::memcpy(&record_bytes, record + offsetof(dirent64, d_reclen), sizeof record_bytes);
    walk_->position += record_bytes;
    *name = record + offsetof(dirent64, d_name);
    return true;
}

bool DirectoryScan::close() {
    if (walk_ == nullptr) return true;
    const int descriptor = walk_->directory.release();
    walk_.reset();
    return ::close(descriptor) == 0;
}

}  // namespace orvix::core
