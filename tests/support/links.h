// Links in the file system.
#pragma once

#include <filesystem>

namespace orvix::test {

// Make a symbolic link that holds `target` as it is given, to a file (which may be missing) or to a directory.
void make_link(const std::filesystem::path& target, const std::filesystem::path& link);
void make_directory_link(const std::filesystem::path& target, const std::filesystem::path& link);

// False where programs see what a link leads to and never the link itself, as under Wine: then no link can be removed.
bool links_are_seen();

}  // namespace orvix::test
