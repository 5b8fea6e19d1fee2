#include "windows/last_error.h"

#include <cerrno>

#include <winternl.h>

namespace orvix::core {

namespace {

struct Pair {
    DWORD error;
    int number;
};

constexpr Pair pairs[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},
    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_INVALID_DRIVE, ENOENT},
    {ERROR_NO_MORE_FILES, ENOENT},
    {ERROR_BAD_NETPATH, ENOENT},
    {ERROR_BAD_NET_NAME, ENOENT},
    {ERROR_BAD_DEV_TYPE, ENOENT},
    {ERROR_BAD_PATHNAME, ENOENT},
    {ERROR_INVALID_NAME, ENOENT},
    {ERROR_NOT_READY, ENOENT},
    {ERROR_DELETE_PENDING, ENOENT},
    {ERROR_TOO_MANY_OPEN_FILES, EMFILE},
    {ERROR_ACCESS_DENIED, EACCES},
    {ERROR_SHARING_VIOLATION, EACCES},
    {ERROR_LOCK_VIOLATION, EACCES},
    {ERROR_CURRENT_DIRECTORY, EACCES},
    {ERROR_CANNOT_MAKE, EACCES},
    {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_INVALID_HANDLE, EBADF},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
    {ERROR_OUTOFMEMORY, ENOMEM},
    {ERROR_NO_SYSTEM_RESOURCES, ENOMEM},
    {ERROR_NOT_SAME_DEVICE, EXDEV},
    {ERROR_FILE_EXISTS, EEXIST},
    {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_BROKEN_PIPE, EPIPE},
    {ERROR_NO_DATA, EPIPE},
    {ERROR_DISK_FULL, ENOSPC},
    {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {ERROR_DIR_NOT_EMPTY, ENOTEMPTY},
    {ERROR_DIRECTORY, ENOTDIR},
    {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
    {ERROR_BUFFER_OVERFLOW, ENAMETOOLONG},
    {ERROR_CANT_RESOLVE_FILENAME, ELOOP},
    {ERROR_NOT_SUPPORTED, ENOSYS},
    {ERROR_CALL_NOT_IMPLEMENTED, ENOSYS},
    {ERROR_IO_DEVICE, EIO},
    {ERROR_CRC, EIO},
};

}  // namespace

int errno_of(DWORD error) {
    for (const Pair& pair : pairs) {
        if (pair.error == error) return pair.number;
    }
    return EINVAL;
}

int fail_with_last_error() {
    errno = errno_of(GetLastError());
    return -1;
}

int fail_with_status(LONG status) {
    errno = errno_of(RtlNtStatusToDosError(status));
    return -1;
}

}  // namespace orvix::core
