// Overflow pages: which are in use, and how a new one gets its number.
#pragma once

#include "containers/hash/format.h"

namespace orvix::gsl::hash {

// Takes an overflow page that is free, or one that the store never had. 0 with `errno` set if there is none.
std::uint32_t allocate_address(htab* table);

// Marks an overflow page as free or as used; false if its bitmap cannot be read.
bool release_address(htab* table, std::uint32_t address);
bool claim_address(htab* table, std::uint32_t address);

}  // namespace orvix::gsl::hash
