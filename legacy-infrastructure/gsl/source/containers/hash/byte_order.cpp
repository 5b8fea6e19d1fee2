#include "containers/hash/byte_order.h"

#include <algorithm>
#include <utility>

namespace orvix::gsl::hash {

namespace {

std::uint32_t swapped(std::uint16_t word) { return static_cast<std::uint32_t>(word << 8 | word >> 8) & 0xffffU; }

void swap_words(Page page, std::uint32_t first, std::uint32_t last) {
    for (std::uint32_t i = first; i <= last; ++i) page.set_word(i, swapped(page.word(i)));
}

}  // namespace

void swap_out(Page page) {
    const std::uint32_t last_word = page.size() / word_bytes - 1;
    swap_words(page, 0, std::min(page.entry_words() + 2, last_word));
}

bool swap_in(Page page) {
    swap_words(page, 0, 0);
    if (words_end(page.entry_words()) > page.size()) return false;
    swap_words(page, 1, page.entry_words() + 2);
    return true;
}

void swap_bitmap(char* bytes, std::uint32_t page_size) {
    for (std::uint32_t i = 0; i < page_size; i += 4) {
        std::swap(bytes[i], bytes[i + 3]);
        std::swap(bytes[i + 1], bytes[i + 2]);
    }
}

}  // namespace orvix::gsl::hash
