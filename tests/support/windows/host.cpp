#include "support/host.h"

#include "support/temporary_directory.h"
#include "support/windows/wine.h"

#include <string_view>

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
    const std::filesystem::path top = of_any_length(directory, true);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top, ignored)) {
        // Nobody removes a read-only file here before it is writable.
        std::filesystem::permissions(entry.path(), std::filesystem::perms::all, ignored);
    }
    std::filesystem::remove_all(top, ignored);
}

std::filesystem::path of_any_length(const std::filesystem::path& host, bool with_all_below) {
    constexpr std::size_t usual_length = 200;
    if ((host.native().size() < usual_length && !with_all_below) || host.native().starts_with(LR"(\\?\)")) return host;
    return LR"(\\?\)" + std::filesystem::absolute(host).lexically_normal().make_preferred().native();
}

bool set_length(const std::filesystem::path& host, std::uintmax_t bytes) {
    const HANDLE file = CreateFileW(host.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    LARGE_INTEGER end;
    end.QuadPart = static_cast<std::int64_t>(bytes);
    const bool done = SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(file) != 0;
    CloseHandle(file);
    return done;
}

const char* const root_drive = "";

const bool variables_fold_letter_case = true;

const bool entered_links_are_resolved = false;

// Windows 10 lets them go; Wine does not know that yet.
bool removed_names_go_at_once() { return !is_wine(); }

const std::size_t longest_current_directory = MAX_PATH - 2;

bool may_stand_in_names(char character) {
    return static_cast<unsigned char>(character) >= ' ' &&
           std::string_view("<>:\"/\\|?*").find(character) == std::string_view::npos;
}

const char* const locale_with_comma = "German";

// Dots and blanks at the end of a name count for nothing, and names are UTF-16.
bool host_takes_name(const std::string& name) {
    const bool is_utf8 = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name.c_str(), -1, nullptr, 0) != 0;
    return is_utf8 && !name.empty() && name.back() != '.' && name.back() != ' ';
}

const char* const letters_of_names = "aAbB.~ $%'";

}  // namespace orvix::test
