// The small text files that mark project directories.
#pragma once

#include <string>

namespace orvix::gsl::system {

// Finds a key in a file of `key=value` lines. Blanks (and no other white space) around a line and around its key do not
// count; of the value, those in front do.
//
// False, with the value empty, if the file cannot be opened or does not hold the key. The first match counts, also one
// without a `=`, whose value is empty.
bool gprj_read_value(const std::string& directory, const std::string& file, const char* key, std::string* value);

}  // namespace orvix::gsl::system
