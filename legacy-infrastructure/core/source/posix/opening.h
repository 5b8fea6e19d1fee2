// How files are opened: case of letters, creation, inheritance.
#pragma once

#include "common/path_access.h"

namespace orvix::core {

// The system's open on a path; no child process inherits the descriptor. -1 with errno set on failure.
int open_path(const Name& name, int flags, int permission);

}  // namespace orvix::core
