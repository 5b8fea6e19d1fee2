// What the file operations share about names.
#pragma once

#include <orvix/core/path.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvix::gsl {

constexpr std::size_t longest_name = 1024;  // bytes, zero byte not counted

constexpr int directory_type = 0x4000;  // a type word

inline const char* text_of(const char* name) { return name != nullptr ? name : ""; }

inline bool is_too_long(std::string_view name) { return name.size() > longest_name; }

inline bool has_wildcard(std::string_view name) { return name.find_first_of("*?") != std::string_view::npos; }

// True for the two entries that every directory has for itself and its parent.
bool is_self_or_parent(const char* entry);

// The name without one separator at its end, that of a drive's root excepted.
std::string without_separator(std::string_view name);

// The name behind its prefix, in the sense of gfile_hasdrv.
std::string behind_prefix(const std::string& name);

// The two sides of a wildcard name. They may overlap or leave bytes out: the directory ends at the last backslash, and
// the pattern begins behind the last backslash or colon.
struct WildcardName {
    std::string directory;
    std::string pattern;
};

// None for a name without a backslash.
std::optional<WildcardName> split_wildcard(const std::string& name);

// Bytes that the name of a directory takes in front of an entry's name.
std::size_t bytes_before_entry(std::string_view directory);

// The type bits of what a name leads to; 0 if it cannot be read.
int type_word(const std::string& name);

// A directory that is to be opened: a drive alone means its root, and not the current directory of the drive.
Path directory_path(const std::string& name);

}  // namespace orvix::gsl
