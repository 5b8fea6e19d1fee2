// Removal of what is open.
#pragma once

#include <windows.h>

namespace orvix::core {

// The rights that remove_open needs.
constexpr DWORD removal_access = DELETE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;

// Removes an open file, link or empty directory, also if it is marked read-only: the mark guards what a file holds and
// not its name. The name is gone at once where the system can do so, else when the last handle is closed. False with
// the last error set.
bool remove_open(HANDLE file);

}  // namespace orvix::core
