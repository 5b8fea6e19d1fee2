#include <orvix/core/files.h>

#include "windows/attributes.h"
#include "windows/file_opening.h"
#include "windows/last_error.h"
#include "windows/removal.h"
#include "windows/wide_name.h"

#include <orvix/core/file_status.h>

#include <cerrno>
#include <cstring>

#include <direct.h>
#include <sys/stat.h>

namespace orvix {

namespace core {

namespace {

// The letter of its drive is a capital, however it was entered.
std::wstring current_directory() {
    std::wstring text;
    DWORD size = GetCurrentDirectoryW(0, nullptr);
    // Another thread may change the directory between two calls.
    while (size > text.size()) {
        text.resize(size);
        size = GetCurrentDirectoryW(size, text.data());
    }
    text.resize(size);
    const bool has_letter = size >= 2 && text[1] == L':' && text[0] >= L'a' && text[0] <= L'z';
    if (has_letter) text[0] = static_cast<wchar_t>(text[0] - L'a' + L'A');
    return text;
}

constexpr int for_existence = 0;
constexpr int for_writing = 2;
constexpr int for_reading = 4;

// Of a directory the same bits mean its list, and the making of entries.
DWORD rights_for(int mode) {
    DWORD rights = FILE_READ_ATTRIBUTES;
    if ((mode & for_reading) != 0) rights |= FILE_READ_DATA;
    if ((mode & for_writing) != 0) rights |= FILE_WRITE_DATA;
    return rights;
}

}  // namespace

std::size_t put_current_directory(char* to) {
    const std::string text = getcwd_utf8();
    std::memcpy(to, text.data(), text.size());
    return text.size();
}

}  // namespace core

std::string getcwd_utf8() { return core::library_name(core::current_directory()); }

int chdir_utf8(const Path& directory) {
    core::WideName wide;
    if (!core::translate(directory, &wide)) return -1;
    // The C library's call also notes the drive's current directory, from which names like "d:x" are taken.
    if (_wchdir(wide.c_str()) == 0) return 0;
    errno = core::errno_of(_doserrno);
    return -1;
}

// The system's own answer looks at the read-only mark alone; what rights and other users of the file leave shows when
// it is opened. Wine lets users with special rights open what is marked.
int access_utf8(const std::string& name, int mode) {
    core::WideName wide;
    if (!core::translate(name, &wide)) return -1;
    if (mode == core::for_existence) return core::test_existence_utf8(name);
    const core::Handle file = core::open_existing(wide.c_str(), core::rights_for(mode));
    if (!file.valid()) return core::fail_with_last_error();
    if ((mode & core::for_writing) == 0 || !core::is_read_only_file(file.get())) return 0;
    errno = EACCES;
    return -1;
}

std::uint64_t filesize_utf8(const std::string& name) {
    core::FileStatus status;
    return core::read_status_utf8(name, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

int chmod_utf8(const std::string& name, int mode) {
    core::WideName wide;
    if (!core::translate(name, &wide)) return -1;
    const core::Handle file = core::open_existing(wide.c_str(), FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
    return file.valid() && core::set_writable(file.get(), (mode & S_IWUSR) != 0) ? 0 : core::fail_with_last_error();
}

int unlink_utf8(const std::string& name) {
    core::WideName wide;
    if (!core::translate(name, &wide)) return -1;
    const core::Handle file = core::open_itself(wide.c_str(), core::removal_access);
    if (!file.valid()) return core::fail_with_last_error();
    if (core::is_plain_directory(file.get())) {
        errno = EISDIR;
        return -1;
    }
    return core::remove_open(file.get()) ? 0 : core::fail_with_last_error();
}

}  // namespace orvix
