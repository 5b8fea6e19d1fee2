#include "containers/arena.h"

#include <orvix/gsl/status.h>

#include <algorithm>
#include <cassert>
#include <new>

namespace orvix::gsl::pool {

namespace {

constexpr std::size_t heap_bytes_per_unit = 16;

}  // namespace

Arena* Arena::create(unsigned data_units, Arena* older) {
    assert(data_units <= most_data_units);
    const auto units = static_cast<Index>(std::max(usual_units, data_units + units_before_data));
    void* const block = gmem_ee_malloc(heap_bytes_per_unit, units);
    if (block == nullptr) return nullptr;
    auto* const arena = new (block) Arena(older, units);
    arena->at(units_before_data) = {units, 0, 1, free_magic};  // a mark that the first block's data covers
    return arena;
}

void* Arena::allocate(unsigned units) {
    for (unsigned index = first(); index < limit();) {
        BlockHeader& block = at(index);
        if (block.magic == free_magic && block.next > index + units) {
            if (block.next > index + units + 2) {
                put_free_block(index + 1 + units, static_cast<Index>(index), block.next);
            }
            block.magic = used_magic;
            return &block + 1;
        }
        if (block.next <= index) break;  // damaged
        index = block.next;
    }
    return nullptr;
}

bool Arena::release(Index index) {
    BlockHeader& block = at(index);
    if (block.magic != used_magic) return false;
    block.magic = free_magic;
    if (const Index next = block.next; is_free_block(next)) {
        if (at(next).self != next) return false;
        link(index, at(next).next);
    }
    // Block 1 has `first` for a block before it, which is itself.
    if (const Index prev = block.prev; prev >= first() && prev < index && is_free_block(prev)) {
        if (at(prev).self != prev) return false;
        link(prev, block.next);
    }
    return true;
}

void Arena::shrink(Index index, unsigned units) {
    const Index next = at(index).next;
    const unsigned rest = index + 1U + units;
    if (is_free_block(next)) {
        put_free_block(rest, index, at(next).next);
    } else if (next >= rest + 2) {
        put_free_block(rest, index, next);
    }
}

bool Arena::is_sound() const {
    for (unsigned index = first(); index < limit(); index = at(index).next) {
        if (at(index).self != index || at(index).next <= index) return false;
    }
    return true;
}

void Arena::put_free_block(unsigned index, Index prev, Index next) {
    const auto here = static_cast<Index>(index);
    at(here) = {next, prev, here, free_magic};
    link(here, next);
    link(prev, here);
}

void Arena::link(Index index, Index next) {
    if (next < limit()) at(next).prev = index;
    at(index).next = next;
}

}  // namespace orvix::gsl::pool
