#include "support/broken_directory.h"

#include "support/windows/imports.h"

#include <cerrno>

#include <windows.h>

namespace orvix::test {

namespace {

BOOL WINAPI fails_to_list(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind, void* buffer, DWORD bytes) {
    static const auto ask = reinterpret_cast<decltype(GetFileInformationByHandleEx)*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetFileInformationByHandleEx")));
    if (kind != FileIdBothDirectoryInfo) return ask(file, kind, buffer, bytes);
    SetLastError(ERROR_IO_DEVICE);
    return FALSE;
}

HANDLE WINAPI fails_to_search(const wchar_t*, WIN32_FIND_DATAW*) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

HANDLE WINAPI fails_to_make(const wchar_t*, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
}

DWORD WINAPI fails_to_tell(const wchar_t*) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_FILE_ATTRIBUTES;
}

void* replace(const char* function, void* replacement) {
    auto* scope = new ImportReplacement;
    scope->replace(function, replacement);
    return scope;
}

void restore(void* scope) { delete static_cast<ImportReplacement*>(scope); }

}  // namespace

BrokenDirectory::BrokenDirectory(const std::filesystem::path&)
    : replacement_(replace("GetFileInformationByHandleEx", reinterpret_cast<void*>(fails_to_list))) {}

BrokenDirectory::~BrokenDirectory() { restore(replacement_); }

UnlistableDirectory::UnlistableDirectory()
    : replacement_(replace("GetFileInformationByHandleEx", reinterpret_cast<void*>(fails_to_list))) {}

UnlistableDirectory::~UnlistableDirectory() { restore(replacement_); }

bool UnlistableDirectory::exists() const { return true; }

std::string UnlistableDirectory::wildcard() const { return ".\\*"; }

UnscannableDirectory::UnscannableDirectory()
    : replacement_(replace("FindFirstFileW", reinterpret_cast<void*>(fails_to_search))) {}

UnscannableDirectory::~UnscannableDirectory() { restore(replacement_); }

std::string UnscannableDirectory::text() const { return "star"; }

LostDirectory::LostDirectory(const std::filesystem::path&)
    : replacement_(replace("CreateFileW", reinterpret_cast<void*>(fails_to_make))) {}

LostDirectory::~LostDirectory() { restore(replacement_); }

UnreadableStatus::UnreadableStatus()
    : replacement_(replace("GetFileAttributesW", reinterpret_cast<void*>(fails_to_tell))) {}

UnreadableStatus::~UnreadableStatus() { restore(replacement_); }

std::string UnreadableStatus::name() const { return "file"; }

int UnreadableStatus::error() const { return EACCES; }

}  // namespace orvix::test
