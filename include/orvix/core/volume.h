/// @file
/// Room on a volume.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <cstdint>

namespace orvix::core {

/// Reads how much room is left on the volume that holds a directory, to all users together.
///
/// @param directory   a directory on the volume
/// @param free_bytes  receives the number of bytes; untouched on failure; not null
/// @return false with `errno` set if the name cannot be read
ORVIX_CORE_API bool total_free_bytes(const Path& directory, std::uint64_t* free_bytes);

}  // namespace orvix::core
