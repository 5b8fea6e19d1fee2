// Copying within trees.
#pragma once

#include <orvix/core/directory.h>

namespace orvix::gsl {

// Does for an entry of one directory and the entry of that name in another what gfile_copy does for two names, with the
// same report.
bool copy_entry(const core::Directory& from, const core::Directory& to, const char* entry);

}  // namespace orvix::gsl
