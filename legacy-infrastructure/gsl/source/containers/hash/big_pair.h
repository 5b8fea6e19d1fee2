// Pairs too large for a page. Each has a chain of overflow pages to itself: parts of the key, then parts of the value.
// page.h tells how the pages are marked.
//
// All walks are loops that hold one page at a time, so that a value may be larger than the pool.
#pragma once

#include "containers/hash/page.h"
#include "containers/hash/pool.h"

namespace orvix::gsl::hash {

// The last page of a big pair, and the address of the page behind the pair, 0 for none.
struct BigPairEnd {
    _bufhead* last;
    std::uint32_t next;
};

// Goes from a page of a big pair to its end. False with `errno` set if a page is damaged or cannot be read.
bool find_end(htab* table, _bufhead* page, BigPairEnd* end);

// Puts the value together, from a page that holds a part of the key. It stands in the page, or in `big_value`.
bool read_value(htab* table, _bufhead* page, DBT* value, BigPairEnd* end);

// Puts key and value together, from the pair's first page.
bool read_pair(htab* table, _bufhead* page, DBT* key, DBT* value, BigPairEnd* end);

enum class BigMatch : std::uint8_t { same, different, failed };

// Compares the pair's key, from its first page.
BigMatch compare_key(htab* table, _bufhead* page, std::string_view key);

// Goes to the page behind one of a big pair. Null with `errno` set if there is none, it is damaged or cannot be read.
_bufhead* next_of_chain(htab* table, _bufhead* page, CycleGuard* guard);

inline std::string_view bytes_of(const DBT& text) { return {static_cast<const char*>(text.data), text.size}; }

}  // namespace orvix::gsl::hash
