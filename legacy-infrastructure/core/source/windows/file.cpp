#include <orvix/core/file.h>

#include "windows/attributes.h"
#include "windows/file_opening.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/stat.h>

namespace orvix::core {

namespace {

static_assert(sizeof(HANDLE) == sizeof(std::intptr_t));

HANDLE handle_of(std::intptr_t number) { return reinterpret_cast<HANDLE>(number); }

constexpr std::size_t longest_step = std::size_t{1} << 30;  // the system counts in 32 bits

DWORD step_of(std::size_t bytes) { return static_cast<DWORD>(std::min(bytes, longest_step)); }

bool set_position(HANDLE file, std::int64_t position) {
    LARGE_INTEGER to;
    to.QuadPart = position;
    return SetFilePointerEx(file, to, nullptr, FILE_BEGIN) != 0;
}

}  // namespace

File FileOpening::to_read(Handle handle) {
    File file;
    if (!handle.valid() || !fill_status(handle.get(), {}, &file.status_)) {
        fail_with_last_error();
        return File();
    }
    if (S_ISDIR(file.status_.st_mode)) {
        errno = EISDIR;
        return File();
    }
    file.handle_ = reinterpret_cast<std::intptr_t>(handle.release());
    return file;
}

File FileOpening::to_write(Handle handle, bool made) {
    File file;
    if (!handle.valid() || (!made && !fill_status(handle.get(), {}, &file.status_))) {
        fail_with_last_error();
        return File();
    }
    if (!made && (S_ISDIR(file.status_.st_mode) || (file.status_.st_mode & S_IWUSR) == 0)) {
        errno = S_ISDIR(file.status_.st_mode) ? EISDIR : EACCES;
        return File();
    }
    file.handle_ = reinterpret_cast<std::intptr_t>(handle.release());
    return file;
}

File::~File() {
    if (is_open()) CloseHandle(handle_of(handle_));
}

File File::open_to_read(const Path& name) {
    WideName wide;
    if (!translate(name, &wide)) return File();
    return FileOpening::to_read(open_existing(wide.c_str(), GENERIC_READ));
}

File File::open_to_write(const Path& name) {
    WideName wide;
    if (!translate(name, &wide)) return File();
    Handle handle(CreateFileW(wide.c_str(), GENERIC_READ | GENERIC_WRITE, share_all, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle.valid()) {
        fail_to_open(wide.c_str());
        return File();
    }
    const bool made = GetLastError() != ERROR_ALREADY_EXISTS;
    return FileOpening::to_write(std::move(handle), made);
}

bool File::is_same_file(const File& other) const {
    BY_HANDLE_FILE_INFORMATION ours;
    BY_HANDLE_FILE_INFORMATION theirs;
    return GetFileInformationByHandle(handle_of(handle_), &ours) != 0 &&
           GetFileInformationByHandle(handle_of(other.handle_), &theirs) != 0 &&
           FileIdentity(ours) == FileIdentity(theirs);
}

std::size_t File::read(char* buffer, std::size_t bytes) {
    // The file's size spares a call to be told of its end.
    const std::uint64_t size = S_ISREG(status_.st_mode) ? static_cast<std::uint64_t>(status_.st_size) : 0;
    std::size_t done = 0;
    while (done < bytes) {
        DWORD step = 0;
        if (ReadFile(handle_of(handle_), buffer + done, step_of(bytes - done), &step, nullptr) == 0) {
            // A pipe ends when its writer has gone.
            if (GetLastError() != ERROR_BROKEN_PIPE) fail_with_last_error();
            break;
        }
        if (step == 0) break;
        done += step;
        bytes_read_ += step;
        if (bytes_read_ == size) break;
    }
    return done;
}

std::size_t File::write(const char* buffer, std::size_t bytes) {
    std::size_t done = 0;
    while (done < bytes) {
        DWORD step = 0;
        if (WriteFile(handle_of(handle_), buffer + done, step_of(bytes - done), &step, nullptr) == 0) {
            fail_with_last_error();
            break;
        }
        done += step;
    }
    return done;
}

bool File::rewind() {
    bytes_read_ = 0;
    if (set_position(handle_of(handle_), 0)) return true;
    fail_with_last_error();
    return false;
}

bool File::shorten(std::uint64_t bytes) {
    if (!S_ISREG(status_.st_mode) || static_cast<std::uint64_t>(status_.st_size) <= bytes) return true;
    FILE_END_OF_FILE_INFO end;
    end.EndOfFile.QuadPart = static_cast<std::int64_t>(bytes);
    if (SetFileInformationByHandle(handle_of(handle_), FileEndOfFileInfo, &end, sizeof end) != 0) return true;
    fail_with_last_error();
    return false;
}

bool File::set_times(const FileStatus& status) {
    FILETIME access;
    FILETIME modification;
    if (!to_file_time(status.st_atime, &access) || !to_file_time(status.st_mtime, &modification)) {
        errno = EINVAL;
        return false;
    }
    if (SetFileTime(handle_of(handle_), nullptr, &access, &modification) != 0) return true;
    fail_with_last_error();
    return false;
}

bool File::close() {
    if (!is_open() || CloseHandle(handle_of(std::exchange(handle_, -1))) != 0) return true;
    fail_with_last_error();
    return false;
}

}  // namespace orvix::core
