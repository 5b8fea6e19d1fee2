/// @file
/// The system's registry of settings, on systems that have one.
#pragma once

#include <orvix/core/export.h>

#include <string>

namespace orvix::core {

/// Reads a text of the machine-wide branch of the registry (`HKEY_LOCAL_MACHINE`).
///
/// @param key    path of the key below that branch, in ASCII, with backslashes
/// @param name   name of the value; empty for the key's default value
/// @param value  receives the text; untouched if there is none; not null
/// @return true if the value was found; always false on systems without a registry
ORVIX_CORE_API bool machine_registry_text(const std::string& key, const std::string& name, std::string* value);

/// Reads a process variable's stored setting: that of the user first, then that of the machine.
///
/// @param name   name of the variable
/// @param value  receives the text; untouched if there is none; not null
/// @return true if there is one; always false on systems without a registry
ORVIX_CORE_API bool registry_variable(const std::string& name, std::string* value);

}  // namespace orvix::core
