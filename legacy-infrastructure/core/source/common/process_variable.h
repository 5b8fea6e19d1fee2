// The variables of this process alone.
#pragma once

#include <string>

namespace orvix::core {

// Reads a variable into `value`, which stays untouched if it is not set. True also if it is set to nothing.
bool process_variable(const std::string& name, std::string* value);

}  // namespace orvix::core
