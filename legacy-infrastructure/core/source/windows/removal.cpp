#include "windows/removal.h"

#include "windows/attributes.h"

namespace orvix::core {

namespace {

// Of Windows 10 in its form of 2018; the headers do not know it at every place.
constexpr auto disposition_class = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
struct Disposition {
    DWORD flags;
};
constexpr DWORD flag_delete = 1;
constexpr DWORD flag_name_is_gone_at_once = 2;
constexpr DWORD flag_ignore_read_only = 16;

// Systems before 2018, and file systems that know no better.
bool remove_in_the_old_way(HANDLE file) {
    FILE_BASIC_INFO told;
    if (GetFileInformationByHandleEx(file, FileBasicInfo, &told, sizeof told) == 0) return false;
    const bool read_only = (told.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (read_only && !set_writable(file, true)) return false;
    FILE_DISPOSITION_INFO disposition{TRUE};
    if (SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition) != 0) return true;
    const DWORD reason = GetLastError();
    if (read_only) set_writable(file, false);
    SetLastError(reason);
    return false;
}

bool is_unknown_here(DWORD reason) {
    return reason == ERROR_INVALID_PARAMETER || reason == ERROR_INVALID_FUNCTION || reason == ERROR_NOT_SUPPORTED ||
           reason == ERROR_CALL_NOT_IMPLEMENTED;
}

}  // namespace

bool remove_open(HANDLE file) {
    Disposition disposition{flag_delete | flag_name_is_gone_at_once | flag_ignore_read_only};
    if (SetFileInformationByHandle(file, disposition_class, &disposition, sizeof disposition) != 0) return true;
    return is_unknown_here(GetLastError()) && remove_in_the_old_way(file);
}

}  // namespace orvix::core
