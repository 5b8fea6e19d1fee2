// The pool of page buffers, most recently used ones first.
//
// Overflow pages are reachable through their chain alone: a page's buffer knows that of the page behind it (`ovfl`), as
// long as both are in the pool. A buffer that leaves the pool therefore takes the chain behind it along.
//
// A step that goes along a chain pins the bucket's page first. Every page that it fetches afterwards has been used more
// recently, and the pool grows rather than let go of a pinned page; so none of them leaves the pool until the pin goes.
#pragma once

#include "containers/hash/page_io.h"

#include <new>

namespace orvix::gsl::hash {

// A slab is a block of memory for several buffers. Each buffer's record stands directly before its page, so that the
// record and the page's first words share a line of the processor's cache. Slabs are chained through their start, the
// newest first; it alone may have memory to spare.
struct Slab {
    Slab* next;
    std::size_t bytes;
};

constexpr std::size_t line_bytes = 64;

inline std::size_t stride_of(const htab* table) { return table->page_size + line_bytes; }
inline std::size_t buffers_of(const htab* table, const Slab* slab) {
    return (slab->bytes - line_bytes) / stride_of(table);
}

// Visits all buffers as they lie in memory, which is faster than along the list.
template <class Visit>
void visit_buffers(const htab* table, Visit visit) {
    std::size_t spare = table->spare_count;
    for (auto* slab = static_cast<Slab*>(table->slabs); slab != nullptr; slab = slab->next) {
        char* at = reinterpret_cast<char*>(slab) + line_bytes;
        for (std::size_t i = buffers_of(table, slab) - spare; i != 0; --i, at += stride_of(table)) {
            visit(std::launder(reinterpret_cast<_bufhead*>(at)));
        }
        spare = 0;
    }
}

constexpr HashSlot slot_flags = 3;
constexpr HashSlot slot_on_disk = 2;

inline HashSlot* slot_of(const htab* table, std::uint32_t bucket) {
    return &table->dir[bucket >> table->seg_shift][bucket & (table->seg_size - 1)];
}
// NOLINTNEXTLINE(performance-no-int-to-ptr): flags stand in the low bits of the pointer
inline _bufhead* buffer_of(HashSlot slot) { return reinterpret_cast<_bufhead*>(slot & ~slot_flags); }

inline bool is_blank(const _bufhead* buffer) { return buffer->addr == 0 && (buffer->flags & BUFFER_BUCKET) == 0; }

inline void unlink(_bufhead* buffer) {
    buffer->prev->next = buffer->next;
    buffer->next->prev = buffer->prev;
}
// Puts a buffer behind another one, which is to be used more recently.
inline void link_behind(_bufhead* before, _bufhead* buffer) {
    buffer->prev = before;
    buffer->next = before->next;
    before->next->prev = buffer;
    before->next = buffer;
}
inline void make_most_recent(htab* table, _bufhead* buffer) {
    if (table->bufhead.next == buffer) return;
    unlink(buffer);
    link_behind(&table->bufhead, buffer);
}

inline void mark_modified(_bufhead* buffer) { buffer->flags |= BUFFER_DIRTY; }
inline void pin(_bufhead* buffer) { buffer->flags |= BUFFER_PINNED; }
inline void unpin(_bufhead* buffer) { buffer->flags = static_cast<std::uint8_t>(buffer->flags & ~BUFFER_PINNED); }

// A buffer for a page that is not in the pool, as the most recently used one. Null on failure.
_bufhead* acquire(htab* table, std::uint32_t address, _bufhead* previous);

_bufhead* read_bucket(htab* table, std::uint32_t bucket);

// The first page of a bucket.
inline _bufhead* fetch_bucket(htab* table, std::uint32_t bucket) {
    _bufhead* const buffer = buffer_of(*slot_of(table, bucket));
    if (buffer == nullptr) return read_bucket(table, bucket);
    make_most_recent(table, buffer);
    return buffer;
}

// The first page of a bucket that is new: fresh, whatever the file has in its place.
_bufhead* make_bucket(htab* table, std::uint32_t bucket);

// The page of a chain behind `previous`.
_bufhead* fetch_overflow(htab* table, std::uint32_t address, _bufhead* previous);

// A new page of a chain, fresh, behind `previous`.
_bufhead* make_overflow(htab* table, std::uint32_t address, _bufhead* previous);

// Frees the pool without writing anything.
void free_pool(htab* table);

using CycleGuard = HashCycleGuard;

// Notes a page of a chain. False if it was visited before: at the latest when the chain has closed three times.
inline bool visit(CycleGuard* guard, std::uint32_t address) {
    if (address == guard->mark) return false;
    if (guard->steps++ == guard->limit) *guard = {address, 0, 2 * guard->limit + 1};
    return true;
}

}  // namespace orvix::gsl::hash
