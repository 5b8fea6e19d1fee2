#include "support/denial.h"

#include "support/temporary_directory.h"
#include "support/windows/imports.h"

#include <stdexcept>
#include <utility>

#include <windows.h>

namespace fs = std::filesystem;

namespace orvix::test {

namespace {

// Holds a file or directory so that others may do no more with it than `share` says.
void* hold(const fs::path& name, DWORD access, DWORD share) {
    const HANDLE held =
        CreateFileW(name.c_str(), access, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (held == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot hold " + name.string());
    return held;
}

}  // namespace

Denial::Denial(fs::path name, unsigned) : name_(std::move(name)) {}

Denial::Denial(Denial&& other) noexcept : name_(std::move(other.name_)), held_(std::exchange(other.held_, {})) {}

Denial::~Denial() {
    for (void* held : held_) CloseHandle(held);
}

Denial Denial::of_reading(const fs::path& name) {
    Denial denial(name, 0);
    denial.held_.push_back(hold(name, GENERIC_READ, 0));
    return denial;
}

Denial Denial::of_changing(const fs::path& directory) {
    Denial denial(directory, 0);
    for (const auto& entry : fs::directory_iterator(directory)) {
        denial.held_.push_back(hold(entry.path(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE));
    }
    denial.held_.push_back(hold(directory, FILE_LIST_DIRECTORY, FILE_SHARE_READ));
    return denial;
}

void make_name_without_permissions(const fs::path& name) {
    static ImportReplacement replacement;  // to the end of the process
    const auto refuse = [](HANDLE, FILE_INFO_BY_HANDLE_CLASS, void*, DWORD) -> BOOL {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    };
    BOOL (*const function)(HANDLE, FILE_INFO_BY_HANDLE_CLASS, void*, DWORD) = refuse;
    write_file(name, "");
    SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_READONLY);
    replacement.replace("SetFileInformationByHandle", reinterpret_cast<void*>(function));
}

std::string file_that_nobody_writes(const fs::path& scratch) {
    write_file(scratch, "");
    SetFileAttributesW(scratch.c_str(), FILE_ATTRIBUTE_READONLY);
    return library_name(scratch);
}

bool holds_for_ordinary_user(const std::function<bool()>& check) { return check(); }

}  // namespace orvix::test
