// The subdirectories of projects.
#pragma once

#include <string>
#include <vector>

namespace orvix::gsl::system {

// Which of the usual subdirectories are meant.
enum class Directories { all, required };

// Gives the full names of the subdirectories that a list names, or without a list (null or empty) of the usual ones.
// False, with `names` undefined, for more than 10 of them or a full name of more than 255 bytes: no project has such.
bool gprj_list_directories(const std::string& directory, const char* list, Directories usual,
                           std::vector<std::string>* names);

}  // namespace orvix::gsl::system
