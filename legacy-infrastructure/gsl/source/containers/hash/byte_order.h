// Pages in the other byte order than the host's.
#pragma once

#include "containers/hash/page.h"

namespace orvix::gsl::hash {

// True if pages stand in the file in the other order.
inline bool is_swapped(const HashHeader& header) {
    constexpr std::int32_t own = std::endian::native == std::endian::little ? little_endian_pages : big_endian_pages;
    return header.byte_order != own;
}

// Swaps the words of a page from the host's order to the file's.
void swap_out(Page page);

// Swaps them back. A page that tells of more words than it has room for is left half swapped.
// @return false for such a page
bool swap_in(Page page);

// Swaps the 32-bit words of a bitmap, either way.
void swap_bitmap(char* bytes, std::uint32_t page_size);

}  // namespace orvix::gsl::hash
