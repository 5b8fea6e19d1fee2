// Names of directories as the system knows them.
#pragma once

#include <string>

namespace orvix::gsl {

// The global function of that name, on a string, which has the room for any name.
bool gfile_setdefpath(std::string* directory);

}  // namespace orvix::gsl
