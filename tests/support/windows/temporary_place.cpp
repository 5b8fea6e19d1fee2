#include "support/temporary_place.h"

#include "support/windows/imports.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace orvix::test {

const char* const temporary_place = "TMP";

// Under Wine the host's files are on this drive.
fs::path fast_place() {
    const fs::path in_memory = R"(Z:\dev\shm)";
    return fs::is_directory(in_memory) ? in_memory : fs::temp_directory_path();
}

NoTemporaryPlace::NoTemporaryPlace()
    : first_("TMP", R"(C:\no\such\directory)"),
      second_("TEMP", R"(C:\no\such\directory)"),
      third_("USERPROFILE", R"(C:\no\such\directory)") {}

// Every name is taken.
struct NoTemporaryName::State {
    ImportReplacement replacement;
};

NoTemporaryName::NoTemporaryName() : state_(new State) {
    const auto is_there = [](const wchar_t*) -> DWORD { return FILE_ATTRIBUTE_NORMAL; };
    DWORD (*const function)(const wchar_t*) = is_there;
    state_->replacement.replace("GetFileAttributesW", reinterpret_cast<void*>(function));
}

NoTemporaryName::~NoTemporaryName() { delete state_; }

fs::path last_temporary_place() {
    wchar_t name[MAX_PATH];
    GetWindowsDirectoryW(name, MAX_PATH);
    return fs::path(name) / "Temp";
}

}  // namespace orvix::test
