#include <orvix/core/path.h>

#include "common/name_text.h"
#include "windows/attributes.h"
#include "windows/file_opening.h"
#include "windows/last_error.h"
#include "windows/removal.h"
#include "windows/wide_name.h"

#include <orvix/core/files.h>

#include <cerrno>

namespace orvix {

namespace {

// The full form of "\", "c:" and the like, which the system keeps for each drive, in the library's form. Empty if it
// cannot be told.
std::string full_name_of_start(std::string_view start) {
    const std::wstring wide = core::widen(start);
    std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD size = GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return size < full.size() ? core::library_name({full.data(), size}) : "";
}

// True also for a drive without a disk in it.
bool drive_exists(char letter) {
    const wchar_t root[] = {static_cast<wchar_t>(letter), L':', L'\\', L'\0'};
    return GetFileAttributesW(root) != INVALID_FILE_ATTRIBUTES || GetLastError() == ERROR_NOT_READY;
}

}  // namespace

Path Path::from_fs_path(const std::filesystem::path& path) {
    return Path(core::with_backslashes(core::library_name(path.native())));
}

std::wstring Path::wstring() const { return core::widen(text_); }

std::string Path::host() const {
    core::WideName host;
    if (!core::translate(*this, &host)) return "";
    if (!core::has_drive(text_) || drive_exists(text_[0])) return native();
    errno = ENOENT;
    return "";
}

bool Path::create_directory() const {
    core::WideName wide;
    if (!core::translate(*this, &wide)) return false;
    if (CreateDirectoryW(wide.c_str(), nullptr) != 0) return true;
    core::fail_with_last_error();
    return false;
}

bool Path::delete_file_or_directory() const {
    core::WideName wide;
    if (!core::translate(*this, &wide)) return false;
    const core::Handle file = core::open_itself(wide.c_str(), core::removal_access);
    if (file.valid() && core::remove_open(file.get())) return true;
    core::fail_with_last_error();
    return false;
}

Path Path::complete_path() const {
    const std::string text = native();
    std::size_t start = 0;
    if (core::is_network_name(text)) return Path(text, spelling_);
    if (core::has_drive(text)) {
        if (text.size() > 2 && core::is_separator(text[2])) return Path(text, spelling_);
        start = 2;
    } else if (!text.empty() && core::is_separator(text[0])) {
        start = 1;
    }
    std::string complete = start == 0 ? getcwd_utf8() : full_name_of_start(text.substr(0, start));
    if (complete.empty()) return Path(text, spelling_);
    if (text.size() > start && complete.back() != '\\') complete += '\\';
    return Path(complete + text.substr(start), spelling_);
}

}  // namespace orvix
