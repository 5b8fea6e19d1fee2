// Text files as lines.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace workbench {

// The lines of a file without their line feeds; none if it cannot be read. The name is in the library's form.
std::optional<std::vector<std::string>> lines_of(const std::string& name);

}  // namespace workbench
