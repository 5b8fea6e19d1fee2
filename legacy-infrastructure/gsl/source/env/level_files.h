// Where the files of the levels lie.
#pragma once

#include <orvix/gsl/environment.h>

#include <optional>
#include <string>

namespace orvix::gsl::env {

// Reads QDS_CUSTOM_DIR at the first call in the process. Its text stands for good, whatever becomes of the variable.
void read_custom_directory();

// The name of a level's file; see env_load_level for `verbatim` and `included`. None if `level` is no level, or if the
// name does not fit EnvTable::path.
std::optional<std::string> level_path(const std::string& name, EnvlocE level, bool verbatim, bool included);

}  // namespace orvix::gsl::env
