// What the boot file of an application says of its messages.
#pragma once

#include <string>

namespace orvix::gsl {

struct MessageNames {
    std::string directory_file;  // path of the message directory file
    std::string language;
    std::string extension;
    std::string font;
};

// Reads the names. An empty language asks the boot file. False with GuiErrno set; where a default had to do, true with
// GuiErrno telling the last.
bool resolve_message_names(const char* boot_file, const char* prefix, const char* language, MessageNames* names);

}  // namespace orvix::gsl
