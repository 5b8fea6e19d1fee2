#include "common/open_mode.h"
#include "windows/attributes.h"
#include "windows/file_opening.h"
#include "windows/followed_links.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <orvix/core/files.h>
#include <orvix/core/path.h>

#include <cerrno>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <winternl.h>

// Which the headers lack.
extern "C" NTSTATUS NTAPI RtlGetLastNtStatus(void);

namespace orvix {

namespace core {

namespace {

// How the C library's flags read to the system.
DWORD access_of(int flags) {
    const bool to_write = (flags & (O_WRONLY | O_RDWR)) != 0;
    DWORD access = (flags & O_WRONLY) != 0 ? 0 : FILE_GENERIC_READ;
    if (to_write) access |= FILE_GENERIC_WRITE | FILE_READ_ATTRIBUTES;
    // Without the right to write anywhere else, what is appended goes to the end whoever else writes.
    if (to_write && (flags & (O_APPEND | O_TRUNC)) == O_APPEND) access &= ~static_cast<DWORD>(FILE_WRITE_DATA);
    if ((flags & _O_TEMPORARY) != 0) access |= DELETE;
    return access;
}

// An existing file is opened and cut instead of made anew: its attributes stay.
DWORD disposition_of(int flags) {
    if ((flags & O_CREAT) == 0) return OPEN_EXISTING;
    return (flags & O_EXCL) != 0 ? CREATE_NEW : OPEN_ALWAYS;
}

DWORD attributes_of(int flags, int permission) {
    DWORD attributes = (permission & S_IWUSR) != 0 ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_READONLY;
    if ((flags & _O_SHORT_LIVED) != 0) attributes |= FILE_ATTRIBUTE_TEMPORARY;
    if ((flags & _O_TEMPORARY) != 0) attributes |= FILE_FLAG_DELETE_ON_CLOSE;
    if ((flags & _O_SEQUENTIAL) != 0) attributes |= FILE_FLAG_SEQUENTIAL_SCAN;
    if ((flags & _O_RANDOM) != 0) attributes |= FILE_FLAG_RANDOM_ACCESS;
    return attributes;
}

bool cut_off(HANDLE file) {
    FILE_END_OF_FILE_INFO end{};
    return SetFileInformationByHandle(file, FileEndOfFileInfo, &end, sizeof end) != 0;
}

constexpr NTSTATUS status_delete_pending = static_cast<NTSTATUS>(0xC0000056);

constexpr int any_user_may_read_and_write = 0666;

}  // namespace

Handle open_existing(const wchar_t* name, DWORD access, DWORD further_flags) {
    return Handle(CreateFileW(name, access, share_all, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS | further_flags, nullptr));
}

Handle open_itself(const wchar_t* name, DWORD access) {
    Handle file = open_existing(name, access, FILE_FLAG_OPEN_REPARSE_POINT);
    if (!file.valid() || !was_followed(file.get(), name)) return file;
    SetLastError(ERROR_ACCESS_DENIED);
    return Handle();
}

int fail_to_open(const wchar_t* name) {
    const bool is_going = RtlGetLastNtStatus() == status_delete_pending;
    fail_with_last_error();
    if (errno != EACCES) return -1;
    const DWORD attributes = GetFileAttributesW(name);
    if (attributes != INVALID_FILE_ATTRIBUTES && is_directory(attributes)) errno = EISDIR;
    if (is_going) errno = EEXIST;
    return -1;
}

int open_path(const Name& name, int flags, int permission) {
    WideName wide;
    if (!translate(name, &wide)) return -1;
    Handle file(CreateFileW(wide.c_str(), access_of(flags), share_all, nullptr, disposition_of(flags),
                            attributes_of(flags, permission), nullptr));
    if (!file.valid()) return fail_to_open(wide.c_str());
    const bool writes = (flags & (O_WRONLY | O_RDWR)) != 0;
    if ((flags & O_TRUNC) != 0 && writes && !cut_off(file.get())) return fail_with_last_error();
    const int kept_flags = flags & (O_APPEND | O_RDONLY | O_TEXT | _O_WTEXT | _O_U8TEXT | _O_U16TEXT);
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file.get()), kept_flags | O_NOINHERIT);
    if (descriptor != -1) file.release();
    return descriptor;
}

}  // namespace core

std::FILE* Path::fopen(const char* mode) const {
    const std::optional<int> flags = core::flags_of_mode(mode != nullptr ? mode : "");
    if (!flags) {
        errno = EINVAL;
        return nullptr;
    }
    const int descriptor = core::open_path(*this, *flags, core::any_user_may_read_and_write);
    if (descriptor == -1) return nullptr;
    std::FILE* stream = _fdopen(descriptor, (core::stream_mode(mode) + 'b').c_str());
    if (stream == nullptr) _close(descriptor);
    return stream;
}

int open_utf8(const std::string& name, int flags, int permission) { return core::open_path(name, flags, permission); }

}  // namespace orvix
