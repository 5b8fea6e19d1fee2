// Long names for short ones, part by part.
#pragma once

#include <string>
#include <string_view>

namespace orvix::gsl::paths {

// Spells each part of a rooted name as it is stored in its directory. A part that is not there stays as it is. A name
// on no drive gets the current one. The server of a network name is not looked up.
//
// Empty for the empty name. A name that is neither rooted nor a network name is a fault of the program and aborts; it
// is only given what the system calls the current directory.
std::string long_name_walk(std::string_view name);

}  // namespace orvix::gsl::paths
