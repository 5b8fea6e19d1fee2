#include "windows/entry_opening.h"

#include "windows/file_opening.h"
#include "windows/followed_links.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <cerrno>

#include <winternl.h>

namespace orvix::core {

namespace {

ULONG number_of(Disposition disposition) {
    switch (disposition) {
        case Disposition::create:
            return FILE_CREATE;
        case Disposition::open_or_create:
            return FILE_OPEN_IF;
        case Disposition::open:
            break;
    }
    return FILE_OPEN;
}

ULONG options_of(const EntryUse& use) {
    ULONG options = FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_FOR_BACKUP_INTENT;
    if (use.directory_alone) options |= FILE_DIRECTORY_FILE;
    if (use.link_itself) options |= FILE_OPEN_REPARSE_POINT;
    return options;
}

bool is_entry_name(std::string_view text) {
    return !text.empty() && text.find_first_of(std::string_view("\\/\0", 3)) == std::string_view::npos;
}

constexpr std::size_t longest_name_units = 32766;  // the system counts its bytes in 16 bits

}  // namespace

Handle open_entry(HANDLE directory, std::string_view entry, const EntryUse& use, bool* made) {
    WideName wide;
    if (is_entry_name(entry)) append_wide(&wide, entry);
    if (wide.size() == 0 || wide.size() > longest_name_units) {
        errno = wide.size() == 0 ? ENOENT : ENAMETOOLONG;
        return Handle();
    }
    UNICODE_STRING name;
    name.Buffer = wide.grow_to(wide.size());
    name.Length = static_cast<USHORT>(wide.size() * sizeof(wchar_t));
    name.MaximumLength = name.Length;
    OBJECT_ATTRIBUTES attributes{};
    attributes.Length = sizeof attributes;
    attributes.RootDirectory = directory;
    attributes.ObjectName = &name;

    HANDLE opened = INVALID_HANDLE_VALUE;
    IO_STATUS_BLOCK result{};
    const NTSTATUS status =
        NtCreateFile(&opened, use.access | SYNCHRONIZE | FILE_READ_ATTRIBUTES, &attributes, &result, nullptr,
                     FILE_ATTRIBUTE_NORMAL, share_all, number_of(use.disposition), options_of(use), nullptr, 0);
    if (status < 0) {
        fail_with_status(status);
        return Handle();
    }
    if (made != nullptr) *made = result.Information == FILE_CREATED;
    Handle handle(opened);
    if (use.link_itself && was_followed(opened, directory, entry)) {
        errno = EACCES;
        return Handle();
    }
    return handle;
}

}  // namespace orvix::core
