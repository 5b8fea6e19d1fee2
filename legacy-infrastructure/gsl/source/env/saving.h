// Writing tables back to their files.
#pragma once

#include <orvix/core/file.h>
#include <orvix/core/path.h>
#include <orvix/gsl/environment.h>

namespace orvix::gsl::env {

// Writes the changes of a table to its file. The lines of the file that nothing was done to keep their place, their
// comments and their text. Nothing is written if nothing was changed or removed. False if the file could not be
// written, or not be read; up to the final copy it is then as it was.
bool env_save_table(EnvTable* table);

// Makes the two directories above a user's file, if they are missing. Failures show in the save that follows.
void env_prepare_user_directories(const char* path);

// Copies the rest of the text of `source` over `target`, which stays the file that it is (a link, an owner,
// permissions).
bool env_replace_file(const Path& target, core::File& source);

}  // namespace orvix::gsl::env
