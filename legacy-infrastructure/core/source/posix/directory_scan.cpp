#include <orvix/core/directory_scan.h>

#include "posix/descriptor.h"
#include "posix/entry_reader.h"
#include "posix/host_name.h"

#include <new>

#include <fcntl.h>

namespace orvix::core {

struct DirectoryScan::Walk {
    explicit Walk(Descriptor opened) : directory(std::move(opened)) {}

    Descriptor directory;
    EntryReader entries;
};

DirectoryScan::DirectoryScan() = default;

DirectoryScan::~DirectoryScan() { close(); }

bool DirectoryScan::open(const Path& directory) {
    close();
    Descriptor descriptor(
        call_on_existing(directory, [](const char* host) { return ::open(host, O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!descriptor.valid()) return false;
    walk_.reset(new (std::nothrow) Walk(std::move(descriptor)));
    if (walk_ != nullptr && walk_->entries.prepare()) return true;
    walk_.reset();
    errno = ENOMEM;
    return false;
}

bool DirectoryScan::next(std::string_view* name) {
    EntryReader::Record record;
    if (walk_ == nullptr || !walk_->entries.next(walk_->directory.number(), &record)) return false;
    *name = record.name;
    return true;
}

bool DirectoryScan::close() {
    if (walk_ == nullptr) return true;
    const int descriptor = walk_->directory.release();
    walk_.reset();
    return ::close(descriptor) == 0;
}

}  // namespace orvix::core
