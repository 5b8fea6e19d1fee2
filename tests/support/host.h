// What the helpers ask of the host.
#pragma once

#include <cstddef>
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

// True where the names of process variables are the same in any letter case.
extern const bool variables_fold_letter_case;

// True where a directory behind a link is called by its own name once it is entered; false where by that of the link.
extern const bool entered_links_are_resolved;

// False where the name of a removed file stays until its last user has closed it.
bool removed_names_go_at_once();

// The longest name of a current directory.
extern const std::size_t longest_current_directory;

// False for a character that the host takes in no name.
bool may_stand_in_names(char character);

// A locale whose numbers have a comma before their decimals, for std::setlocale.
extern const char* const locale_with_comma;

}  // namespace orvix::test
