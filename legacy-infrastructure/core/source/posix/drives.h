// Drives of the library's name form on a host that has none: letters that stand for host directories.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvix::core {

// A drive and the host directory that it stands for, absolute, without a trailing slash: empty for "/".
struct Drive {
    char letter;  // 'A' to 'Z'
    std::string root;
};

// The drive of a letter of either case: `C:` is "/" and every letter is what ORVIX_DRIVE_<letter> holds. None if that
// is not an absolute directory name.
std::optional<Drive> drive_of(char letter);

// The drive with the longest root that holds the current directory; `C:` wins among equals.
std::optional<Drive> current_drive_and_root();

// The library's form of an absolute host name: the drive with the longest root that holds it, and backslashes. None if
// no drive holds it, or if a backslash stands in it.
std::optional<std::string> library_name(std::string_view host);

}  // namespace orvix::core
