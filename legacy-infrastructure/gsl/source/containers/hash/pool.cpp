#include "containers/hash/pool.h"

#include "containers/hash/page.h"

#include <orvix/core/memory.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

namespace orvix::gsl::hash {

namespace {

constexpr std::uint32_t least_buffers = 6;

// Each slab is twice as large as the one before it.
constexpr std::size_t first_slab_bytes = std::size_t{64} << 10;
constexpr std::size_t most_slab_bytes = 2 * core::large_page_bytes;
constexpr std::align_val_t slab_alignment{line_bytes};

bool is_large(std::size_t bytes) { return bytes % core::large_page_bytes == 0; }

void* allocate_slab(std::size_t bytes) {
    void* const block =
        is_large(bytes) ? core::allocate_large(bytes) : ::operator new(bytes, slab_alignment, std::nothrow);
    if (block == nullptr) errno = ENOMEM;
    return block;
}

void free_slab(Slab* slab) {
    if (is_large(slab->bytes)) {
        core::free_large(slab, slab->bytes);
    } else {
        ::operator delete(slab, slab_alignment);
    }
}

// No more than the budget allows, as long as there is any.
std::size_t bytes_of_next_slab(const htab* table) {
    const auto* const last = static_cast<const Slab*>(table->slabs);
    const std::size_t grown = last == nullptr ? first_slab_bytes : std::min(2 * last->bytes, most_slab_bytes);
    const auto buffers = static_cast<std::size_t>(std::max(table->buffer_budget, 1));
    return std::max(std::min(grown, line_bytes + buffers * stride_of(table)), line_bytes + stride_of(table));
}

bool add_slab(htab* table) {
    std::size_t bytes = bytes_of_next_slab(table);
    void* block = allocate_slab(bytes);
    if (block == nullptr) {
        bytes = line_bytes + stride_of(table);
        block = allocate_slab(bytes);
    }
    if (block == nullptr) return false;
    table->slabs = new (block) Slab{static_cast<Slab*>(table->slabs), bytes};
    table->spare_buffers = static_cast<char*>(block) + line_bytes;
    table->spare_count = static_cast<std::uint32_t>(buffers_of(table, static_cast<Slab*>(block)));
    return true;
}

_bufhead* allocate(htab* table) {
    if (table->spare_count == 0 && !add_slab(table)) return nullptr;
    auto* const buffer = new (table->spare_buffers) _bufhead{};
    buffer->page = table->spare_buffers + sizeof(_bufhead);
    table->spare_buffers += stride_of(table);
    --table->spare_count;
    char* const page = buffer->page;
    std::memset(static_cast<void*>(page), 0xff, table->page_size);
    if (table->buffer_budget > 0) --table->buffer_budget;
    return buffer;
}

PageKind kind_of(const _bufhead* buffer) {
    return (buffer->flags & BUFFER_BUCKET) != 0 ? PageKind::bucket : PageKind::overflow;
}

// The buffer behind another one in its chain, if it still holds that page.
_bufhead* behind(const htab* table, const _bufhead* buffer) {
    _bufhead* const next = buffer->ovfl;
    if (next == nullptr || is_blank(buffer)) return nullptr;
    const std::uint16_t address = Page(table, buffer).next_address();
    const bool is_that_page = address != 0 && next->addr == address && (next->flags & BUFFER_BUCKET) == 0;
    return is_that_page ? next : nullptr;
}

bool write_if_modified(htab* table, _bufhead* buffer) {
    return (buffer->flags & BUFFER_DIRTY) == 0 || write_page(table, buffer->page, buffer->addr, kind_of(buffer));
}

// The slot of a bucket whose buffer goes remembers whether the file has the page.
void release_slot(htab* table, const _bufhead* buffer) {
    HashSlot* const slot = slot_of(table, buffer->addr);
    const bool is_on_disk = (buffer->flags & BUFFER_DIRTY) != 0 || (*slot & slot_on_disk) != 0;
    *slot = table->created != 0 && is_on_disk ? slot_on_disk : 0;
}

// Empties a buffer and the chain behind it. If a page cannot be written, all stay as they are.
bool evict(htab* table, _bufhead* buffer) {
    if (is_blank(buffer)) return true;
    if (!write_if_modified(table, buffer)) return false;
    CycleGuard guard{};
    for (_bufhead* page = behind(table, buffer); page != nullptr; page = behind(table, page)) {
        if (!visit(&guard, page->addr)) break;
        if (!write_if_modified(table, page)) return false;
    }
    if ((buffer->flags & BUFFER_BUCKET) != 0) release_slot(table, buffer);
    for (_bufhead* page = behind(table, buffer); page != nullptr;) {
        _bufhead* const next = behind(table, page);
        __reclaim_buf(table, page);
        page = next;
    }
    return true;
}

}  // namespace

_bufhead* acquire(htab* table, std::uint32_t address, _bufhead* previous) {
    _bufhead* const tail = table->bufhead.prev;
    const bool grows =
        table->buffer_budget != 0 || tail == &table->bufhead || tail == previous || (tail->flags & BUFFER_PINNED) != 0;
    _bufhead* buffer = tail;
    if (grows) {
        buffer = allocate(table);
        if (buffer == nullptr) return nullptr;
    } else {
        if (!evict(table, tail)) return nullptr;
        unlink(tail);
    }
    buffer->ovfl = nullptr;
    buffer->addr = address;
    buffer->flags = previous != nullptr ? std::uint8_t{0} : std::uint8_t{BUFFER_BUCKET};
    if (previous != nullptr) previous->ovfl = buffer;
    link_behind(&table->bufhead, buffer);
    return buffer;
}

_bufhead* read_bucket(htab* table, std::uint32_t bucket) {
    // The slot outlives the search for a buffer: segments are never moved.
    HashSlot* const slot = slot_of(table, bucket);
    const bool is_on_disk = (*slot & slot_on_disk) != 0 || table->created == 0;
    _bufhead* const buffer = acquire(table, bucket, nullptr);
    if (buffer == nullptr) return nullptr;
    if (__get_page(table, buffer->page, bucket, true, is_on_disk, false) != 0) {
        __reclaim_buf(table, buffer);
        return nullptr;
    }
    *slot = reinterpret_cast<HashSlot>(buffer) | (*slot & slot_flags);
    return buffer;
}

_bufhead* make_bucket(htab* table, std::uint32_t bucket) {
    HashSlot* const slot = slot_of(table, bucket);
    _bufhead* buffer = buffer_of(*slot);
    if (buffer == nullptr) {
        buffer = acquire(table, bucket, nullptr);
        if (buffer == nullptr) return nullptr;
        *slot = reinterpret_cast<HashSlot>(buffer) | (*slot & slot_flags);
    }
    buffer->ovfl = nullptr;
    Page(table, buffer).make_fresh();
    return buffer;
}

_bufhead* fetch_overflow(htab* table, std::uint32_t address, _bufhead* previous) {
    _bufhead* const known = previous->ovfl;
    if (known != nullptr && known->addr == address && (known->flags & BUFFER_BUCKET) == 0) {
        make_most_recent(table, known);
        return known;
    }
    _bufhead* const buffer = acquire(table, address, previous);
    if (buffer == nullptr) return nullptr;
    if (__get_page(table, buffer->page, address, false, true, false) != 0) {
        previous->ovfl = nullptr;
        __reclaim_buf(table, buffer);
        return nullptr;
    }
    return buffer;
}

_bufhead* make_overflow(htab* table, std::uint32_t address, _bufhead* previous) {
    previous->ovfl = nullptr;
    _bufhead* const buffer = acquire(table, address, previous);
    if (buffer != nullptr) Page(table, buffer).make_fresh();
    return buffer;
}

void free_pool(htab* table) {
    auto* slab = static_cast<Slab*>(table->slabs);
    while (slab != nullptr) {
        Slab* const next = slab->next;
        free_slab(slab);
        slab = next;
    }
    table->slabs = nullptr;
    table->spare_buffers = nullptr;
    table->spare_count = 0;
    table->bufhead.prev = table->bufhead.next = &table->bufhead;
}

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

void __buf_init(htab* table, std::uint32_t bytes) {
    const std::uint64_t buffers = (std::uint64_t{bytes} + table->page_size - 1) >> table->page_shift;
    table->bufhead.prev = table->bufhead.next = &table->bufhead;
    table->buffer_budget = static_cast<std::int32_t>(std::max<std::uint64_t>(buffers, least_buffers));
}

int __buf_free(htab* table, bool do_free, bool to_disk) {
    if (table->bufhead.next == nullptr) return 0;
    if (to_disk && !write_modified(table)) return -1;
    if (!do_free) return 0;
    for (const _bufhead* buffer = table->bufhead.next; buffer != &table->bufhead; buffer = buffer->next) {
        if ((buffer->flags & BUFFER_BUCKET) != 0) release_slot(table, buffer);
        ++table->buffer_budget;
    }
    table->scan_page = table->left_pinned = nullptr;
    free_pool(table);
    return 0;
}

_bufhead* __get_buf(htab* table, std::uint32_t address, _bufhead* previous, bool new_page) {
    const bool is_known = previous == nullptr
                              ? address >> table->seg_shift < static_cast<std::uint32_t>(table->seg_count)
                              : is_allocated(*table, address);
    if (!is_known) {
        errno = EINVAL;
        return nullptr;
    }
    if (previous == nullptr) return fetch_bucket(table, address);
    return new_page ? make_overflow(table, address, previous) : fetch_overflow(table, address, previous);
}

void __reclaim_buf(htab* table, _bufhead* buffer) {
    buffer->ovfl = nullptr;
    buffer->addr = 0;
    buffer->flags = 0;
    unlink(buffer);
    link_behind(table->bufhead.prev, buffer);
}
