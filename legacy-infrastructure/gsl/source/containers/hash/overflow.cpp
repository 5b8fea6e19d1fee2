#include "containers/hash/overflow.h"

#include "containers/hash/bitmap.h"
#include "containers/hash/page.h"
#include "containers/hash/pool.h"

#include <orvix/core/streams.h>

#include <algorithm>
#include <cerrno>

namespace orvix::gsl::hash {

namespace {

constexpr std::uint32_t no_bit = full_word;

void set_bit(std::uint32_t* bitmap, std::uint32_t bit) {
    bitmap[bit / bitmap_word_bits] |= std::uint32_t{1} << bit % bitmap_word_bits;
}
void clear_bit(std::uint32_t* bitmap, std::uint32_t bit) {
    bitmap[bit / bitmap_word_bits] &= ~(std::uint32_t{1} << bit % bitmap_word_bits);
}

// A clear bit from the word that holds `from` up to and including `last`.
std::uint32_t find_clear_bit(const std::uint32_t* bitmap, std::uint32_t from, std::uint32_t last) {
    for (std::uint32_t i = from / bitmap_word_bits; i <= last / bitmap_word_bits; ++i) {
        if (bitmap[i] == full_word) continue;
        const std::uint32_t bit = i * bitmap_word_bits + static_cast<std::uint32_t>(std::countr_one(bitmap[i]));
        return bit <= last ? bit : no_bit;
    }
    return no_bit;
}

struct BitPlace {
    std::uint32_t slot;
    std::uint32_t bit;
};

BitPlace place_of(const htab* table, std::uint32_t bit) {
    return {bit >> bits_shift(*table), bit & (table->page_size * 8 - 1)};
}

// Takes the free page with the lowest number and gives its bit; `no_bit` if there is none, with `failed` set if that
// cannot be told.
std::uint32_t reuse_page(htab* table, bool* failed) {
    const BitPlace last = place_of(table, overflow_pages(*table) - 1);
    BitPlace from = place_of(table, table->free_hint);
    for (; from.slot <= last.slot; from = {from.slot + 1, 0}) {
        std::uint32_t* const bitmap = fetch_bitmap(table, from.slot);
        *failed = bitmap == nullptr;
        if (*failed) return no_bit;
        const std::uint32_t end = from.slot == last.slot ? last.bit : table->page_size * 8 - 1;
        const std::uint32_t bit = find_clear_bit(bitmap, from.bit, end);
        if (bit == no_bit) continue;
        set_bit(bitmap, bit);
        return (from.slot << bits_shift(*table)) + bit;
    }
    return no_bit;
}

// The address of an overflow page by its bit.
std::uint32_t address_of(const htab* table, std::uint32_t bit) {
    std::uint32_t split = 0;
    while (split < table->spare_point && bit >= table->spare_counts[split]) ++split;
    return overflow_address(split, bit + 1 - pages_before(*table, split));
}

std::uint32_t fail_exhausted() {
    core::write_standard_error("HASH: Out of overflow pages.  Increase page size\n");
    errno = ENOSPC;
    return 0;
}

// Counts one more overflow page and gives its address, at the next split point if this one is full. 0 if the last
// split point is full, or the page would lie behind the last place of a file; nothing has changed then.
std::uint32_t count_page(htab* table) {
    std::uint32_t split = table->spare_point;
    const std::uint32_t count = table->spare_counts[split] + 1;
    std::uint32_t number = count - pages_before(*table, split);
    if (number > most_pages_of_split) {
        if (++split == most_split_points) return fail_exhausted();
        number = 1;
    }
    HashHeader after = *table;
    after.spare_point = split;
    after.spare_counts[split] = count;
    const std::uint32_t address = overflow_address(split, number);
    if (!lies_in_file(after, page_of_address(after, address))) {
        errno = EFBIG;
        return 0;
    }
    table->spare_point = split;
    table->spare_counts[split] = count;
    return address;
}

void take_back(htab* table, std::uint32_t spare_point, std::uint32_t count) {
    table->spare_point = spare_point;
    table->spare_counts[spare_point] = count;
}

// A page that the store never had.
std::uint32_t add_page(htab* table) {
    const std::uint32_t spare_point = table->spare_point;
    const std::uint32_t count = overflow_pages(*table);
    const BitPlace next = place_of(table, count);
    table->free_hint = count;
    if (next.bit != 0) {
        std::uint32_t* const bitmap = fetch_bitmap(table, next.slot);
        const std::uint32_t address = bitmap != nullptr ? count_page(table) : 0;
        if (address != 0) set_bit(bitmap, next.bit);
        return address;
    }
    // The first bit of a new bitmap is its own page's, so that two pages are needed.
    if (next.slot >= most_bitmaps) return fail_exhausted();
    const std::uint32_t bitmap_address = count_page(table);
    if (bitmap_address == 0) return 0;
    const std::uint32_t address = count_page(table);
    if (address != 0 && __ibitmap(table, bitmap_address, 1, static_cast<std::int32_t>(next.slot)) == 0) return address;
    take_back(table, spare_point, count);
    return 0;
}

bool change_bit(htab* table, std::uint32_t address, void (*change)(std::uint32_t*, std::uint32_t)) {
    const BitPlace place = place_of(table, overflow_bit(*table, address));
    std::uint32_t* const bitmap = fetch_bitmap(table, place.slot);
    if (bitmap != nullptr) change(bitmap, place.bit);
    return bitmap != nullptr;
}

}  // namespace

std::uint32_t allocate_address(htab* table) {
    bool failed = false;
    const std::uint32_t bit = reuse_page(table, &failed);
    if (failed) return 0;
    if (bit == no_bit) return add_page(table);
    if (bit + 1 >= table->free_hint) table->free_hint = bit;
    return address_of(table, bit);
}

bool release_address(htab* table, std::uint32_t address) {
    if (!is_chain_page(*table, address)) return false;
    table->free_hint = std::min(table->free_hint, overflow_bit(*table, address));
    return change_bit(table, address, clear_bit);
}

bool claim_address(htab* table, std::uint32_t address) {
    return is_chain_page(*table, address) && change_bit(table, address, set_bit);
}

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

_bufhead* __add_ovflpage(htab* table, _bufhead* buffer) {
    Page page(table, buffer);
    if (!page.takes_link()) {
        errno = EINVAL;
        return nullptr;
    }
    if (table->fill_factor == undecided_fill_factor) {
        table->fill_factor = std::max(page.entry_words() / 2, least_fill_factor);
    }
    mark_modified(buffer);
    const std::uint32_t address = allocate_address(table);
    if (address == 0) return nullptr;
    _bufhead* const added = make_overflow(table, address, buffer);
    if (added == nullptr) {
        release_address(table, address);
        return nullptr;
    }
    mark_modified(added);
    page.add_link(address);
    return added;
}

void __free_ovflpage(htab* table, _bufhead* buffer) {
    release_address(table, buffer->addr);
    __reclaim_buf(table, buffer);
}
