#include <orvix/core/file_status.h>

#include "posix/file_kind.h"
#include "posix/host_name.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace orvix::core {

int read_status_utf8(std::string_view name, struct stat* status) {
    return call_on_existing(name, [status](const char* host) { return stat(host, status); });
}

int test_existence_utf8(std::string_view name) {
    return call_on_existing(name, [](const char* host) { return access(host, F_OK); });
}

int read_status(const Path& name, struct stat* status) {
    return call_on_existing(name, [status](const char* host) { return stat(host, status); });
}

int test_existence(const Path& name) {
    return call_on_existing(name, [](const char* host) { return access(host, F_OK); });
}

FileKind kind_of_name(const Path& name) {
    struct stat status;
    if (call_on_existing(name, [&](const char* host) { return lstat(host, &status); }) != 0) return FileKind::missing;
    return kind_of_mode(status.st_mode);
}

FileKind kind_of_target(const Path& name) {
    struct stat status;
    return read_status(name, &status) == 0 ? kind_of_mode(status.st_mode) : FileKind::missing;
}

bool is_symbolic_link(const Path& name) {
    const FileKind kind = kind_of_name(name);
    if (kind == FileKind::missing && errno != ENOENT && errno != ENOTDIR) {
        throw std::filesystem::filesystem_error("symlink_status", PathAccess::text(name),
                                                std::error_code(errno, std::generic_category()));
    }
    return kind == FileKind::link;
}

int set_file_times(const Path& name, std::int64_t access_time, std::int64_t modification_time) {
    const timespec times[2] = {{.tv_sec = access_time, .tv_nsec = 0}, {.tv_sec = modification_time, .tv_nsec = 0}};
    return call_on_existing(name, [&](const char* host) { return utimensat(AT_FDCWD, host, times, 0); });
}

}  // namespace orvix::core
