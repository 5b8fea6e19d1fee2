/// @file
/// Memory in large amounts.
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

/// Size and alignment of the memory that a system's large pages have: `allocate_large` is worth while from here on.
constexpr std::size_t large_page_bytes = std::size_t{2} << 20;

/// Allocates memory that may come in large pages, which spares time wherever it is used at random.
///
/// @param bytes  a multiple of `large_page_bytes`
/// @return memory of zeros, aligned to `large_page_bytes`, to be given back with `free_large`; null if there is none,
///         with `errno` set
ORVIX_CORE_API void* allocate_large(std::size_t bytes);

/// @param block  what `allocate_large` gave
/// @param bytes  its size
ORVIX_CORE_API void free_large(void* block, std::size_t bytes);

}  // namespace orvix::core
