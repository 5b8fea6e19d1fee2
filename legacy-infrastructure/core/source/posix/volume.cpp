#include <orvix/core/volume.h>

#include "posix/host_name.h"

#include <sys/statvfs.h>

namespace orvix::core {

bool total_free_bytes(const Path& directory, std::uint64_t* free_bytes) {
    struct statvfs volume;
    if (call_on_existing(directory, [&](const char* host) { return statvfs(host, &volume); }) != 0) return false;
    *free_bytes = static_cast<std::uint64_t>(volume.f_bfree) * volume.f_frsize;
    return true;
}

}  // namespace orvix::core
