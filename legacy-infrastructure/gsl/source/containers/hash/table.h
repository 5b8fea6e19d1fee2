// Opening and closing tables.
#pragma once

#include "containers/hash/format.h"

namespace orvix::gsl::hash {

// Opens a table. `flags` are the system's, all of them in force. Null with `errno` set on failure.
htab* open_table(const char* file, int flags, int mode, const HASHINFO* info);

// Writes what the file lacks and frees the table, also if that fails. The first failure stands in `errno`.
bool close_table(htab* table);

// Writes what the file lacks.
bool sync_table(htab* table);

// Opens a store with flags that are not looked at any further.
__db* open_store(const char* file, int flags, int mode, const HASHINFO* info);

}  // namespace orvix::gsl::hash
