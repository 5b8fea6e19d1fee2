// Splitting a bucket whose chain has more than one page.
#pragma once

#include "containers/hash/pairs.h"

namespace orvix::gsl::hash {

// The buckets that take part in a split.
struct Split {
    htab* table;
    std::uint32_t old_bucket;
    _bufhead* old_first;  // both pinned
    _bufhead* new_first;  // fresh

    bool stays(std::string_view key) const { return bucket_of(table, hash_of(table, key)) == old_bucket; }
};

// Deals the regular pairs of the old bucket's first page out. Those that stay move up, and the link goes. The others
// are handed to `leave`; if that gives false, the page is spoilt.
template <class Leave>
bool split_first_page(const Split& split, Leave leave) {
    Page page(split.table, split.old_first);
    const std::uint32_t n = page.entry_words();
    std::uint32_t end = page.size();  // of the entry, before any move
    std::uint32_t top = page.size();  // lowest byte of what stays
    std::uint32_t kept = 1;           // index of the next entry to stay
    for (std::uint32_t i = 1; i < n && page.word(i + 1) >= MARK_PAIR_MIN; i += 2) {
        const std::uint32_t key_begin = Page::offset(page.word(i));
        const std::uint32_t value_begin = page.word(i + 1);
        const std::string_view key = page.bytes(key_begin, end);
        if (!split.stays(key)) {
            if (!leave(key, page.bytes(value_begin, key_begin))) return false;
        } else {
            page.move_entry(i, end, kept, top);
            top -= end - value_begin;
            kept += 2;
        }
        end = value_begin;
    }
    page.cut(kept - 1, top);
    return true;
}

// Deals all pairs of a chain out. If it fails, both buckets are as they were, and `errno` is set.
bool split_chain(const Split& split);

}  // namespace orvix::gsl::hash
