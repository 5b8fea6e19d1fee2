// The system's errors as `errno` numbers.
#pragma once

#include <windows.h>

namespace orvix::core {

// The number for an error of the system; `EINVAL` for one that has no counterpart.
int errno_of(DWORD error);

// Sets `errno` from the calling thread's last error. Gives -1, the result of a failed call.
int fail_with_last_error();

// The same for the status that a native call gave.
int fail_with_status(LONG status);

}  // namespace orvix::core
