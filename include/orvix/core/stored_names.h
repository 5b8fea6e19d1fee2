/// @file
/// How the system itself spells a name: drives, stored letter case, long and short forms.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <string>

namespace orvix::core {

/// @return the letter of the current drive, 'A' to 'Z'; 0 if no drive holds the current directory
ORVIX_CORE_API char current_drive();

/// Looks the last part of a name up in its directory.
///
/// @param name       name whose last part is wanted
/// @param last_part  receives the last part as it is stored; untouched on failure; not null
/// @return false if the name does not exist
ORVIX_CORE_API bool stored_last_part(const Path& name, std::string* last_part);

/// @return the name with every part as it is stored; empty if the name does not exist
ORVIX_CORE_API std::string long_name(const Path& name);

/// @return the system's short form of the name, or the name as it is where there are no short forms; empty if it does
///         not exist
ORVIX_CORE_API std::string short_name(const Path& name);

}  // namespace orvix::core
