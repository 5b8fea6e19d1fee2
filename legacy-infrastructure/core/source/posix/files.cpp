#include <orvix/core/files.h>

#include "posix/host_name.h"

#include <orvix/core/file_status.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orvix {

int chdir_utf8(const Path& directory) {
    return core::call_on_existing(directory, [](const char* host) { return chdir(host); });
}

int access_utf8(const std::string& name, int mode) {
    static_assert(R_OK == 4 && W_OK == 2 && F_OK == 0);
    return core::call_on_existing(name, [mode](const char* host) { return access(host, mode); });
}

std::uint64_t filesize_utf8(const std::string& name) {
    struct stat status;
    return core::read_status_utf8(name, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

int chmod_utf8(const std::string& name, int mode) {
    return core::call_on_existing(name, [mode](const char* host) { return chmod(host, static_cast<mode_t>(mode)); });
}

int unlink_utf8(const std::string& name) {
    return core::call_on_existing(name, [](const char* host) { return unlink(host); });
}

}  // namespace orvix
