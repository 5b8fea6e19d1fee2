// What the helpers ask of the host.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace orvix::test {

std::optional<std::string> process_variable(const char* name);

// Sets a process variable, also to nothing, or takes it away.
void set_process_variable(const char* name, const std::optional<std::string>& value);

// The host's name in UTF-8.
std::string name_of_host(const std::filesystem::path& path);

// Removes a directory with all below it, whatever a test has made of it.
void remove_tree(const std::filesystem::path& directory);

// The drive, with its colon, of a host's name that begins with a slash.
extern const char* const root_drive;

}  // namespace orvix::test
