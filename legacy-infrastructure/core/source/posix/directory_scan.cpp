#include <orvix/core/directory_scan.h>

#include "posix/descriptor.h"
#include "posix/host_name.h"

#include <dirent.h>
#include <fcntl.h>

namespace orvix::core {

DirectoryScan::~DirectoryScan() { close(); }

bool DirectoryScan::open(const Path& directory) {
    close();
    Descriptor descriptor(
        call_on_existing(directory, [](const char* host) { return ::open(host, O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!descriptor.valid()) return false;
    handle_ = fdopendir(descriptor.number());
    if (handle_ == nullptr) return false;
    descriptor.release();
    return true;
}

bool DirectoryScan::next(std::string_view* name) {
    if (handle_ == nullptr) return false;
    const struct dirent* entry = readdir(static_cast<DIR*>(handle_));
    if (entry == nullptr) return false;
    *name = entry->d_name;
    return true;
}

bool DirectoryScan::close() {
    if (handle_ == nullptr) return true;
    DIR* stream = static_cast<DIR*>(handle_);
    handle_ = nullptr;
    return closedir(stream) == 0;
}

}  // namespace orvix::core
