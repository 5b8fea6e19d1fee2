// How many directories of a chain the host lets a process hold open.
#pragma once

#include <cstddef>

namespace orvix::core {

// The top not counted.
extern const std::size_t held_directories;

}  // namespace orvix::core
