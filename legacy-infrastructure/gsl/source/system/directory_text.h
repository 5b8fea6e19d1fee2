// Names of directories in strings.
#pragma once

#include <orvix/gsl/file_names.h>

#include <cstring>
#include <string>

namespace orvix::gsl::system {

// What `gfile_strip_dir_name` leaves of a name.
inline std::string without_separator(std::string name) {
    gfile_strip_dir_name(name.data());
    name.resize(std::strlen(name.c_str()));
    return name;
}

}  // namespace orvix::gsl::system
