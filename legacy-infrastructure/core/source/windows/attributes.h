// What the system tells of files: attributes, links, times, as the library's records have them.
#pragma once

#include <orvix/core/file_status.h>

#include <cstdint>
#include <string_view>

#include <windows.h>

namespace orvix::core {

// The volume and the number of a file on it: the same for all names of one file, and for no other.
struct FileIdentity {
    std::uint64_t volume = 0;
    std::uint64_t number = 0;

    FileIdentity() = default;
    explicit FileIdentity(const BY_HANDLE_FILE_INFORMATION& told)
        : volume(told.dwVolumeSerialNumber),
          number(static_cast<std::uint64_t>(told.nFileIndexHigh) << 32 | told.nFileIndexLow) {}
    bool operator==(const FileIdentity&) const = default;
};

// True for what leads somewhere else: a symbolic link or a mount point, and not a file that merely lies elsewhere. The
// tag is that of the reparse point. One whose tag cannot be told is taken for a link, so that nothing goes through it.
constexpr bool is_link(DWORD attributes, DWORD tag) {
    constexpr DWORD stands_for_another_name = 0x20000000;
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && (tag == 0 || (tag & stands_for_another_name) != 0);
}

constexpr bool is_directory(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

FileKind kind_of(DWORD attributes, DWORD tag);

// The tag of an open reparse point; 0 if there is none.
DWORD tag_of(HANDLE file);

// True for a directory that is no link to one.
bool is_plain_directory(HANDLE file);

// True for a file with the mark that nobody may write it. The mark of a directory means nothing of the kind.
bool is_read_only_file(HANDLE file);

// Takes the mark of a read-only file off, or puts it on; nothing else of a permission is known here. Takes the right to
// read and write attributes. False with the last error set.
bool set_writable(HANDLE file, bool writable);

// Fills a record from what an open file's handle tells. `name` gives the bit of a program, by its ending; it may be
// empty. False with the last error set.
bool fill_status(HANDLE file, std::wstring_view name, FileStatus* status);

// The same from what the system tells of a name without opening it.
void fill_status(const WIN32_FILE_ATTRIBUTE_DATA& told, std::wstring_view name, FileStatus* status);

// Seconds since 1970 of a time of the system, rounded down.
std::int64_t seconds_of(FILETIME time);

// False if the system has no such time.
bool to_file_time(std::int64_t seconds, FILETIME* time);

}  // namespace orvix::core
