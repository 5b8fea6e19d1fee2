// How files are opened, the same for a whole name and for an entry of an open directory.
#pragma once

#include "common/path_access.h"
#include "windows/handle.h"

#include <orvix/core/file.h>

#include <windows.h>

namespace orvix::core {

// Others may read, write, rename and remove what this process has open: nobody waits for somebody else's reader.
constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct FileOpening {
    // Takes over what was opened to be read. A directory is refused with EISDIR.
    static File to_read(Handle handle);

    // Takes over what was opened to be written. `made`: the file was missing. A directory is refused with EISDIR, and a
    // read-only file with EACCES: Wine lets users with special rights open it.
    static File to_write(Handle handle, bool made);
};

// Opens an existing name, links followed, for its attributes or the like. Directories can be opened. Not valid on
// failure, with the last error set.
Handle open_existing(const wchar_t* name, DWORD access, DWORD further_flags = 0);

// Opens a name itself: a link and not what it leads to, where the system can do that. Not valid on failure, with the
// last error set.
Handle open_itself(const wchar_t* name, DWORD access);

// Sets errno from the last error of a file that could not be opened, and gives -1. The system refuses to open a
// directory as it refuses a file that others hold; and it refuses to make a file under a name that goes as soon as its
// last user has closed it, which is still there.
int fail_to_open(const wchar_t* name);

// The system's open on a path; no child process inherits the descriptor. -1 with errno set on failure.
int open_path(const Name& name, int flags, int permission);

}  // namespace orvix::core
