#include "windows/attributes.h"

#include <algorithm>
#include <cwctype>
#include <iterator>

#include <sys/stat.h>

namespace orvix::core {

namespace {

constexpr std::int64_t ticks_per_second = 10'000'000;       // of 100 nanoseconds
constexpr std::int64_t from_1601_to_1970 = 11'644'473'600;  // seconds
constexpr std::int64_t last_second = INT64_MAX / ticks_per_second - from_1601_to_1970;

// What the command processor starts by its name alone.
constexpr std::wstring_view program_endings[] = {L".exe", L".com", L".bat", L".cmd"};

bool names_program(std::wstring_view name) {
    constexpr std::size_t ending_size = 4;
    if (name.size() < ending_size) return false;
    const std::wstring_view ending = name.substr(name.size() - ending_size);
    const auto equal = [](wchar_t a, wchar_t b) { return (a >= L'A' && a <= L'Z' ? a + (L'a' - L'A') : a) == b; };
    return std::any_of(std::begin(program_endings), std::end(program_endings), [&](std::wstring_view known) {
        return std::equal(ending.begin(), ending.end(), known.begin(), known.end(), equal);
    });
}

constexpr unsigned may_read = 0444;
constexpr unsigned may_write = 0222;
constexpr unsigned may_run = 0111;

unsigned short mode_of(DWORD attributes, std::wstring_view name) {
    unsigned mode = may_read;
    if ((attributes & FILE_ATTRIBUTE_READONLY) == 0) mode |= may_write;
    if (is_directory(attributes)) {
        mode |= S_IFDIR | may_run;
    } else {
        mode |= S_IFREG | (names_program(name) ? may_run : 0U);
    }
    return static_cast<unsigned short>(mode);
}

struct Times {
    FILETIME access, modification, creation;
};

void fill(DWORD attributes, std::wstring_view name, DWORD size_high, DWORD size_low, const Times& times,
          FileStatus* status) {
    *status = {};
    status->st_mode = mode_of(attributes, name);
    status->st_nlink = 1;
    if (!is_directory(attributes)) {
        status->st_size = static_cast<std::int64_t>(static_cast<std::uint64_t>(size_high) << 32 | size_low);
    }
    status->st_atime = seconds_of(times.access);
    status->st_mtime = seconds_of(times.modification);
    status->st_ctime = seconds_of(times.creation);
}

}  // namespace

FileKind kind_of(DWORD attributes, DWORD tag) {
    if (is_link(attributes, tag)) return FileKind::link;
    return is_directory(attributes) ? FileKind::directory : FileKind::regular;
}

DWORD tag_of(HANDLE file) {
    FILE_ATTRIBUTE_TAG_INFO told{};
    return GetFileInformationByHandleEx(file, FileAttributeTagInfo, &told, sizeof told) != 0 ? told.ReparseTag : 0;
}

bool is_plain_directory(HANDLE file) {
    FILE_ATTRIBUTE_TAG_INFO told{};
    return GetFileInformationByHandleEx(file, FileAttributeTagInfo, &told, sizeof told) != 0 &&
           kind_of(told.FileAttributes, told.ReparseTag) == FileKind::directory;
}

bool is_read_only_file(HANDLE file) {
    FILE_BASIC_INFO told;
    if (GetFileInformationByHandleEx(file, FileBasicInfo, &told, sizeof told) == 0) return false;
    return (told.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0 && !is_directory(told.FileAttributes);
}

bool set_writable(HANDLE file, bool writable) {
    FILE_BASIC_INFO info;
    if (GetFileInformationByHandleEx(file, FileBasicInfo, &info, sizeof info) == 0) return false;
    constexpr DWORD read_only = FILE_ATTRIBUTE_READONLY;
    const DWORD attributes = writable ? info.FileAttributes & ~read_only : info.FileAttributes | read_only;
    if (attributes == info.FileAttributes) return true;
    info.FileAttributes = attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
    return SetFileInformationByHandle(file, FileBasicInfo, &info, sizeof info) != 0;
}

bool fill_status(HANDLE file, std::wstring_view name, FileStatus* status) {
    BY_HANDLE_FILE_INFORMATION told;
    if (GetFileInformationByHandle(file, &told) != 0) {
        fill(told.dwFileAttributes, name, told.nFileSizeHigh, told.nFileSizeLow,
             {told.ftLastAccessTime, told.ftLastWriteTime, told.ftCreationTime}, status);
        status->st_nlink = static_cast<short>(std::min<DWORD>(told.nNumberOfLinks, INT16_MAX));
        return true;
    }
    const DWORD type = GetFileType(file);
    if (type != FILE_TYPE_CHAR && type != FILE_TYPE_PIPE) return false;
    *status = {};
    status->st_mode = static_cast<unsigned short>((type == FILE_TYPE_CHAR ? S_IFCHR : S_IFIFO) | may_read | may_write);
    status->st_nlink = 1;
    return true;
}

void fill_status(const WIN32_FILE_ATTRIBUTE_DATA& told, std::wstring_view name, FileStatus* status) {
    fill(told.dwFileAttributes, name, told.nFileSizeHigh, told.nFileSizeLow,
         {told.ftLastAccessTime, told.ftLastWriteTime, told.ftCreationTime}, status);
}

std::int64_t seconds_of(FILETIME time) {
    const auto ticks = static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return static_cast<std::int64_t>(ticks / ticks_per_second) - from_1601_to_1970;
}

bool to_file_time(std::int64_t seconds, FILETIME* time) {
    if (seconds < -from_1601_to_1970 || seconds > last_second) return false;
    const auto ticks = static_cast<std::uint64_t>((seconds + from_1601_to_1970) * ticks_per_second);
    *time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    return true;
}

}  // namespace orvix::core
