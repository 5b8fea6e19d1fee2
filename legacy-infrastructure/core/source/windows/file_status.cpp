#include <orvix/core/file_status.h>

#include "windows/attributes.h"
#include "windows/file_opening.h"
#include "windows/followed_links.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>

namespace orvix::core {

namespace {

int status_through_handle(const WideName& wide, FileStatus* status) {
    const Handle file = open_existing(wide.c_str(), FILE_READ_ATTRIBUTES);
    return file.valid() && fill_status(file.get(), wide.view(), status) ? 0 : fail_with_last_error();
}

int status_of_name(const Name& name, FileStatus* status) {
    WideName wide;
    if (!translate(name, &wide)) return -1;
    WIN32_FILE_ATTRIBUTE_DATA told;
    if (GetFileAttributesExW(wide.c_str(), GetFileExInfoStandard, &told) == 0) {
        // What is neither file nor directory tells nothing unless it is opened.
        const DWORD reason = GetLastError();
        const bool is_missing = reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND;
        return is_missing ? fail_with_last_error() : status_through_handle(wide, status);
    }
    if ((told.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return status_through_handle(wide, status);
    fill_status(told, wide.view(), status);
    return 0;
}

int existence_of_name(const Name& name) {
    WideName wide;
    if (!translate(name, &wide)) return -1;
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return fail_with_last_error();
    const bool may_be_link = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return may_be_link && !open_existing(wide.c_str(), FILE_READ_ATTRIBUTES).valid() ? fail_with_last_error() : 0;
}

FileKind kind_of_mode(unsigned mode) {
    constexpr unsigned type_bits = S_IFMT;
    if ((mode & type_bits) == S_IFREG) return FileKind::regular;
    return (mode & type_bits) == S_IFDIR ? FileKind::directory : FileKind::other;
}

// What the name itself is, links not followed: its attributes, and the tag of a reparse point.
struct Own {
    DWORD attributes = INVALID_FILE_ATTRIBUTES;
    DWORD tag = 0;
};

// Attributes that say so for a name that is missing, with the last error set.
Own own_kind(const WideName& wide) {
    Own own{GetFileAttributesW(wide.c_str())};
    if (own.attributes == INVALID_FILE_ATTRIBUTES) return own;
    const bool marked = (own.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (!marked && !links_are_followed_always()) return own;
    const Handle file = open_existing(wide.c_str(), FILE_READ_ATTRIBUTES, FILE_FLAG_OPEN_REPARSE_POINT);
    if (file.valid() && marked) own.tag = tag_of(file.get());
    if (file.valid() && was_followed(file.get(), wide.c_str())) own.attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    return own;
}

}  // namespace

int read_status(const Path& name, FileStatus* status) { return status_of_name(name, status); }

int read_status_utf8(std::string_view name, FileStatus* status) { return status_of_name(name, status); }

int test_existence(const Path& name) { return existence_of_name(name); }

int test_existence_utf8(std::string_view name) { return existence_of_name(name); }

FileKind kind_of_name(const Path& name) {
    WideName wide;
    if (!translate(name, &wide)) return FileKind::missing;
    const Own own = own_kind(wide);
    if (own.attributes != INVALID_FILE_ATTRIBUTES) return kind_of(own.attributes, own.tag);
    fail_with_last_error();
    return FileKind::missing;
}

FileKind kind_of_target(const Path& name) {
    FileStatus status;
    return read_status(name, &status) == 0 ? kind_of_mode(status.st_mode) : FileKind::missing;
}

bool is_symbolic_link(const Path& name) {
    WideName wide;
    if (!translate(name, &wide)) return false;
    const Own own = own_kind(wide);
    if (own.attributes != INVALID_FILE_ATTRIBUTES) {
        return own.tag != IO_REPARSE_TAG_MOUNT_POINT && is_link(own.attributes, own.tag);
    }
    const int reason = errno_of(GetLastError());
    if (reason == ENOENT || reason == ENOTDIR) return false;
    throw std::filesystem::filesystem_error("symlink_status", PathAccess::text(name),
                                            std::error_code(reason, std::generic_category()));
}

int set_file_times(const Path& name, std::int64_t access_time, std::int64_t modification_time) {
    WideName wide;
    if (!translate(name, &wide)) return -1;
    FILETIME access;
    FILETIME modification;
    if (!to_file_time(access_time, &access) || !to_file_time(modification_time, &modification)) {
        errno = EINVAL;
        return -1;
    }
    const Handle file = open_existing(wide.c_str(), FILE_WRITE_ATTRIBUTES);
    return file.valid() && SetFileTime(file.get(), nullptr, &access, &modification) != 0 ? 0 : fail_with_last_error();
}

}  // namespace orvix::core
