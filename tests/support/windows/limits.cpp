#include "support/limits.h"

#include "support/windows/imports.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>

#include <malloc.h>

namespace orvix::test {

namespace {

std::optional<ImportReplacement> replacement;

// A function of a library itself, past the tables that are written over.
template <class Function>
Function* original(const wchar_t* library, const char* name) {
    void* const address = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name));
    return reinterpret_cast<Function*>(address);
}

constexpr const wchar_t* c_library = L"msvcrt.dll";

std::size_t bytes_left;

void take(std::size_t bytes) { bytes_left -= std::min(bytes, bytes_left); }

// What the C library does with a block or without one.
void* taken(void* block) {
    if (block != nullptr) {
        take(_msize(block));
    } else {
        errno = ENOMEM;
    }
    return block;
}

void* limited_malloc(std::size_t bytes) {
    static const auto allocate = original<void*(std::size_t)>(c_library, "malloc");
    void* const block = bytes <= bytes_left ? allocate(bytes) : nullptr;
    return taken(block);
}

void* limited_calloc(std::size_t count, std::size_t size) {
    static const auto allocate = original<void*(std::size_t, std::size_t)>(c_library, "calloc");
    void* const block = size == 0 || count <= bytes_left / size ? allocate(count, size) : nullptr;
    return taken(block);
}

void limited_free(void* block) {
    static const auto release = original<void(void*)>(c_library, "free");
    if (block != nullptr) bytes_left += _msize(block);
    release(block);
}

void* limited_realloc(void* block, std::size_t bytes) {
    static const auto reallocate = original<void*(void*, std::size_t)>(c_library, "realloc");
    const std::size_t before = block != nullptr ? _msize(block) : 0;
    if (bytes > before && bytes - before > bytes_left) return taken(nullptr);
    void* const other = reallocate(block, bytes);
    if (other != nullptr) {
        bytes_left += before;
        take(_msize(other));
    }
    return other;
}

void* WINAPI limited_virtual_alloc(void* place, std::size_t bytes, DWORD type, DWORD protection) {
    static const auto allocate = original<decltype(VirtualAlloc)>(L"kernel32.dll", "VirtualAlloc");
    if ((type & MEM_COMMIT) == 0) return allocate(place, bytes, type, protection);
    void* const block = bytes <= bytes_left ? allocate(place, bytes, type, protection) : nullptr;
    if (block != nullptr) take(bytes);
    return block;
}

std::int64_t file_limit;

// Where a write to a file begins; none if it is no file.
std::optional<std::int64_t> place_of_write(HANDLE file, const OVERLAPPED* overlapped) {
    if (overlapped != nullptr) return static_cast<std::int64_t>(overlapped->OffsetHigh) << 32 | overlapped->Offset;
    LARGE_INTEGER position{};
    if (SetFilePointerEx(file, {}, &position, FILE_CURRENT) == 0) return std::nullopt;
    return position.QuadPart;
}

BOOL WINAPI limited_write(HANDLE file, const void* buffer, DWORD bytes, DWORD* written, OVERLAPPED* overlapped) {
    static const auto write = original<decltype(WriteFile)>(L"kernel32.dll", "WriteFile");
    if (const std::optional<std::int64_t> place = place_of_write(file, overlapped)) {
        if (*place >= file_limit && bytes > 0) {
            SetLastError(ERROR_DISK_FULL);
            return FALSE;
        }
        bytes = static_cast<DWORD>(std::min<std::int64_t>(bytes, file_limit - *place));
    }
    return write(file, buffer, bytes, written, overlapped);
}

template <class Function>
void replace(const char* name, Function* function) {
    replacement->replace(name, reinterpret_cast<void*>(function));
}

}  // namespace

const bool memory_can_be_limited = true;

MemoryLimit::MemoryLimit(std::size_t more_bytes) {
    bytes_left = more_bytes;
    replacement.emplace();
    replace("free", limited_free);
    replace("malloc", limited_malloc);
    replace("calloc", limited_calloc);
    replace("realloc", limited_realloc);
    replace("VirtualAlloc", limited_virtual_alloc);
}

MemoryLimit::~MemoryLimit() { replacement.reset(); }

void MemoryLimit::use_up(std::size_t smallest) {
    if (bytes_left >= smallest) bytes_left = smallest - 1;
}

FileSizeLimit::FileSizeLimit(std::size_t bytes) {
    file_limit = static_cast<std::int64_t>(bytes);
    replacement.emplace();
    replace("WriteFile", limited_write);
}

FileSizeLimit::~FileSizeLimit() { replacement.reset(); }

const int FileSizeLimit::error = ENOSPC;

const bool open_files_are_limited = false;

OpenFileLimit::OpenFileLimit(std::size_t) {}

OpenFileLimit::~OpenFileLimit() = default;

}  // namespace orvix::test
