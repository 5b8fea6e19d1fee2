// What ends the program early, and the status that it ends with.
#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace gslstore {

enum Status : int {
    well = 0,
    found_wanting = 1,  // a key that is not there, or faults
    failed = 2,         // the command could not be carried out, or was no command
};

class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What the system says of the call that just failed.
inline std::string system_text(int error = errno) { return std::generic_category().message(error); }

}  // namespace gslstore
