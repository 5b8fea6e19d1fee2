// How the host takes letter case.
#pragma once

#include <filesystem>
#include <string_view>

namespace orvix::test {

// True where two names may differ in letter case alone, and the library looks for the one that is meant; false where
// the host itself takes them for one.
extern const bool letter_case_counts;

// Writes a file whose name may differ from that of another in letter case alone. Even hosts that take the two for one
// let them stand beside each other if they must, and then take the one that is spelled like the name.
void write_beside(const std::filesystem::path& file, std::string_view bytes);

// True if a directory has an entry of exactly this name.
bool is_entry(const std::filesystem::path& name);

}  // namespace orvix::test
