// Pages between memory and file.
#pragma once

#include "containers/hash/format.h"

namespace orvix::gsl::hash {

enum class PageKind : std::uint8_t { bucket, overflow, bitmap };

// Reads a page and checks it. See __get_page.
bool read_page(htab* table, char* page, std::uint32_t address, PageKind kind);

// Writes a page and leaves it as it was, in the host's byte order. See __put_page.
bool write_page(htab* table, char* page, std::uint32_t address, PageKind kind);

// The place of a page in the file; -1 with `errno` set if it lies behind the last one, or was never allocated.
std::int64_t offset_of(const htab* table, std::uint32_t address, PageKind kind);

// Writes all modified pages of the pool, in as few calls as their places allow. Those behind the end of the file come
// first: it is they that fail when the disk is full, and what the file held before is then as it was.
bool write_modified(htab* table);

// Writes the header and the bitmaps that are in memory.
bool write_header(htab* table);

}  // namespace orvix::gsl::hash
