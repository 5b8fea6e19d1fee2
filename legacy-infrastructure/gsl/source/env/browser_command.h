// The program in a command line of the registry.
#pragma once

#include <string>
#include <string_view>

namespace orvix::gsl::env {

// A command without its arguments: it ends behind the first ".exe" or ".EXE" that is followed by a blank, a double
// quote or the end, and the double quotes before that are blanks. A command without such a program stays as it is.
//
//     "C:\Program Files\b.exe" -url "%1"   ->   [blank]C:\Program Files\b.exe
std::string program_of_command(std::string_view command);

}  // namespace orvix::gsl::env
