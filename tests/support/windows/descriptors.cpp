#include "support/descriptors.h"

#include <cstdint>

#include <io.h>
#include <stdio.h>
#include <windows.h>

namespace orvix::test {

namespace {

HANDLE handle_of(int descriptor) { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); }

// How many handles have all these flags. They are numbered in steps of four, and new ones take the lowest free number.
std::ptrdiff_t count_handles(DWORD wanted) {
    constexpr std::uintptr_t highest = 0x4000;
    std::ptrdiff_t count = 0;
    for (std::uintptr_t number = 4; number < highest; number += 4) {
        DWORD flags = 0;
        const bool open = GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != 0;
        if (open && (flags & wanted) == wanted) ++count;
    }
    return count;
}

}  // namespace

bool is_inherited(int descriptor) {
    DWORD flags = 0;
    return GetHandleInformation(handle_of(descriptor), &flags) != 0 && (flags & HANDLE_FLAG_INHERIT) != 0;
}

std::string bytes_at_start(int descriptor, std::size_t bytes) {
    std::string text(bytes, '?');
    if (_lseeki64(descriptor, 0, SEEK_SET) != 0) return "";
    const int read = _read(descriptor, text.data(), static_cast<unsigned>(bytes));
    text.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    return text;
}

bool write_bytes(int descriptor, const std::string& bytes) {
    return _write(descriptor, bytes.data(), static_cast<unsigned>(bytes.size())) == static_cast<int>(bytes.size());
}

void close_descriptor(int descriptor) { _close(descriptor); }

std::ptrdiff_t open_files() { return count_handles(0); }

std::ptrdiff_t inherited_files() { return count_handles(HANDLE_FLAG_INHERIT); }

// Under Wine, which the tests run on, the host's files are on this drive.
const char* const full_device = "Z:\\dev\\full";

const char* const short_file = "Z:\\sys\\kernel\\mm\\transparent_hugepage\\enabled";

}  // namespace orvix::test
