#include "support/temporary_place.h"

#include "support/windows/imports.h"

#include <cerrno>

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

// The system has no random numbers to give.
struct NoTemporaryName::State {
    ImportReplacement replacement;
};

NoTemporaryName::NoTemporaryName() : state_(new State) {
    const auto no_number = [](unsigned*) { return EINVAL; };
    int (*const function)(unsigned*) = no_number;
    state_->replacement.replace("rand_s", reinterpret_cast<void*>(function));
}

NoTemporaryName::~NoTemporaryName() { delete state_; }

fs::path last_temporary_place() {
    wchar_t name[MAX_PATH];
    GetWindowsDirectoryW(name, MAX_PATH);
    return fs::path(name) / "Temp";
}

}  // namespace orvix::test
