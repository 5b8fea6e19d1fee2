#include "support/host.h"

#include "support/temporary_directory.h"
#include "support/windows/wine.h"

#include <stdlib.h>
#include <windows.h>

namespace orvix::test {

namespace {

std::wstring wide(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).wstring();
}

}  // namespace

std::optional<std::string> process_variable(const char* name) {
    wchar_t value[32767];
    SetLastError(ERROR_SUCCESS);
    const DWORD size = GetEnvironmentVariableW(wide(name).c_str(), value, 32767);
    if (size == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
    const std::u8string text = std::filesystem::path(std::wstring(value, size)).u8string();
    return std::string(text.begin(), text.end());
}

void set_process_variable(const char* name, const std::optional<std::string>& value) {
    // The C library's copy first: it takes an empty value for none, and hands that on to the system.
    _wputenv_s(wide(name).c_str(), value ? wide(*value).c_str() : L"");
    SetEnvironmentVariableW(wide(name).c_str(), value ? wide(*value).c_str() : nullptr);
}

std::string name_of_host(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

void remove_tree(const std::filesystem::path& directory) {
    if (holds_what_only_the_host_sees()) {
        run_on_host(L"rm", {L"-rf", host_name(directory)});
        return;
    }
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory, ignored)) {
        // Nobody removes a read-only file here before it is writable.
        std::filesystem::permissions(entry.path(), std::filesystem::perms::all, ignored);
    }
    std::filesystem::remove_all(directory, ignored);
}

const char* const root_drive = "";

const char* const letters_of_names = "aAbB.~ $%'\xc3\xa4";

}  // namespace orvix::test
