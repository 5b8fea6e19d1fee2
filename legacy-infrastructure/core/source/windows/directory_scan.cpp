#include <orvix/core/directory_scan.h>

#include "common/name_text.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <orvix/core/file_status.h>

#include <cerrno>
#include <new>
#include <utility>

namespace orvix::core {

// One entry is always read ahead, because starting a search gives the first.
struct DirectoryScan::Walk {
    HANDLE search = INVALID_HANDLE_VALUE;  // invalid also for a directory that is empty, as the root of a drive may be
    WIN32_FIND_DATAW found{};
    bool has_entry = false;
    std::string name;

    bool start(const wchar_t* pattern) {
        search = FindFirstFileW(pattern, &found);
        has_entry = search != INVALID_HANDLE_VALUE;
        return has_entry;
    }

    bool next() {
        if (!has_entry) return false;
        name = narrow(found.cFileName);
        has_entry = FindNextFileW(search, &found) != 0;
        return true;
    }

    bool close() {
        const HANDLE open = std::exchange(search, INVALID_HANDLE_VALUE);
        return open == INVALID_HANDLE_VALUE || FindClose(open) != 0;
    }
};

DirectoryScan::DirectoryScan() = default;

DirectoryScan::~DirectoryScan() { close(); }

bool DirectoryScan::open(const Path& directory) {
    close();
    WideName pattern;
    if (!translate(directory, &pattern)) return false;
    const wchar_t last = pattern.view().back();
    pattern.append(last == L'\\' || last == L':' ? L"*" : L"\\*");
    walk_.reset(new (std::nothrow) Walk);
    if (walk_ == nullptr) {
        errno = ENOMEM;
        return false;
    }
    if (walk_->start(pattern.c_str())) return true;
    const DWORD reason = GetLastError();
    if (reason == ERROR_FILE_NOT_FOUND && directory.is_directory()) return true;
    walk_.reset();
    errno = errno_of(reason);
    return false;
}

bool DirectoryScan::next(std::string_view* name) {
    if (walk_ == nullptr || !walk_->next()) return false;
    *name = walk_->name;
    return true;
}

bool DirectoryScan::close() {
    const std::unique_ptr<Walk> walk = std::move(walk_);
    return walk == nullptr || walk->close();
}

}  // namespace orvix::core
