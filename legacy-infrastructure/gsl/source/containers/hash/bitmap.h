// Overflow bitmaps. Bit b, of all bitmaps together, tells whether overflow page b is in use, counted over all split
// points from 0. Bitmaps are overflow pages themselves, and the first bit of each stands for its own page.
//
// Words have 32 bits, the first page in the lowest one. Bits of pages that were never allocated are set.
#pragma once

#include "containers/hash/format.h"

namespace orvix::gsl::hash {

constexpr std::uint32_t bitmap_word_bits = 32;
constexpr std::uint32_t full_word = 0xffffffff;

// The bitmap in a slot, read from the file when it is first asked for. Null with `errno` set if there is none or it
// cannot be read.
std::uint32_t* fetch_bitmap(htab* table, std::uint32_t slot);

}  // namespace orvix::gsl::hash
