/// @file
/// Advice to the system about memory.
#pragma once

#include <orvix/core/export.h>

#include <cstddef>

namespace orvix::core {

/// Tells the system that a block is about to be filled from end to end, so that it may give memory in large pages. It
/// may not care, and blocks too small to be worth it are passed over; nothing depends on it but time.
///
/// @param block  block of `malloc`, not filled yet
/// @param bytes  its size
ORVIX_CORE_API void expect_to_be_filled(void* block, std::size_t bytes);

}  // namespace orvix::core
