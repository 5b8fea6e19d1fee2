// Work on entries of a directory that is held open: the system resolves the name of one entry and no path.
#pragma once

#include "windows/handle.h"

#include <string_view>

#include <windows.h>

namespace orvix::core {

// What becomes of a name that is there already, or is not.
enum class Disposition { open, create, open_or_create };

// How an entry is opened.
struct EntryUse {
    DWORD access = 0;
    Disposition disposition = Disposition::open;
    bool directory_alone = false;  // nothing but a directory will do
    bool link_itself = false;      // a link is opened and not what it leads to
};

// Opens an entry of a directory. `made`, which may be null, receives whether the entry was missing before. Not valid on
// failure, with errno set: ENOENT for a text that is no name of an entry.
Handle open_entry(HANDLE directory, std::string_view entry, const EntryUse& use, bool* made = nullptr);

}  // namespace orvix::core
