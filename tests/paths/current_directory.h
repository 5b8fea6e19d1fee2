// The current directory in canonical spelling, told by the standard library.
#pragma once

#include "paths/canonical_models.h"

#include <support/temporary_directory.h>

#include <filesystem>
#include <string>

namespace orvix::test {

inline std::string canonical_spelling(const std::filesystem::path& host) { return model::lowered(library_name(host)); }

inline std::string here() { return canonical_spelling(std::filesystem::current_path()); }

}  // namespace orvix::test
