#include "support/letter_case.h"

#include "support/temporary_directory.h"
#include "support/windows/wine.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace orvix::test {

namespace {

// From then on the names in an empty directory are taken as they are spelled. (Windows 10 of 2018 and later.)
void tell_letter_case_apart(const fs::path& directory) {
    constexpr auto case_class = static_cast<FILE_INFO_BY_HANDLE_CLASS>(23);
    ULONG flags = 1;
    const HANDLE opened = CreateFileW(directory.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    SetFileInformationByHandle(opened, case_class, &flags, sizeof flags);
    CloseHandle(opened);
}

}  // namespace

const bool letter_case_counts = false;

void write_beside(const fs::path& file, std::string_view bytes) {
    const fs::path full = fs::absolute(file);
    fs::create_directories(full.parent_path());
    if (!is_wine()) {
        tell_letter_case_apart(full.parent_path());
        write_file(full, bytes);
        return;
    }
    const fs::path other = full.parent_path() / "written_to_be_renamed";
    write_file(other, bytes);
    run_on_host(L"mv", {host_name(other), host_name(full)});
}

}  // namespace orvix::test
