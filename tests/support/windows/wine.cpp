#include "support/windows/wine.h"

#include <stdexcept>

#include <windows.h>

namespace orvix::test {

namespace {

bool host_was_at_work = false;

}  // namespace

bool holds_what_only_the_host_sees() { return host_was_at_work; }

bool is_wine() { return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr; }

// Wine starts programs of the host, but does not tell when they end: a shell around them leaves a mark.
void run_on_host(const std::wstring& program, std::initializer_list<std::wstring> arguments) {
    if (!is_wine()) throw std::runtime_error("there is no host below this system");
    host_was_at_work = true;
    const std::filesystem::path mark =
        std::filesystem::temp_directory_path() / ("host_program_done_" + std::to_string(GetCurrentProcessId()));
    std::wstring command = LR"(sh -c "\"$@\"; : > \"$0\"" ")" + host_name(mark) + L"\" " + program;
    for (const std::wstring& argument : arguments) command += L" \"" + argument + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(LR"(Z:\bin\sh)", command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == 0) {
        throw std::runtime_error("no program of the host can be started");
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    while (!std::filesystem::exists(mark)) Sleep(1);
    std::filesystem::remove(mark);
}

std::wstring host_name(const std::filesystem::path& path) {
    if (!path.is_absolute()) return path.generic_wstring();
    const HANDLE directory =
        CreateFileW(path.parent_path().c_str(), 0, 7, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    wchar_t final_name[4096];
    const DWORD size = GetFinalPathNameByHandleW(directory, final_name, 4096, VOLUME_NAME_DOS);
    CloseHandle(directory);
    constexpr std::size_t prefix_size = 4;
    if (size <= prefix_size) throw std::runtime_error("the directory of " + path.string() + " is missing");
    const std::filesystem::path full = std::filesystem::path(std::wstring(final_name + prefix_size)) / path.filename();
    const std::wstring rest = full.generic_wstring().substr(2);
    return full.root_name() == L"Z:" ? rest : host_prefix() + L"/drive_c" + rest;
}

std::wstring host_prefix() {
    wchar_t prefix[4096] = L"";
    GetEnvironmentVariableW(L"WINEPREFIX", prefix, 4096);
    return prefix;
}

}  // namespace orvix::test
