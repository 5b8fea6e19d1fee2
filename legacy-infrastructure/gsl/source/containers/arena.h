// An arena of the pool: one heap block, cut up into blocks. It is counted in units of 8 bytes, and a block is known by
// the index of its header from the arena's start. A fresh arena of 512 units, and the same after its first request, of
// 3 units:
//
//    unit 0   1       2                                       512
//   +-------+--------+-------------------- - - - ------------+
//   | older | header | data of block 1                       |      block 1: next 512, prev 1, self 1
//   +-------+--------+-------------------- - - - ------------+
//
//    unit 0   1       2             5        6               512
//   +-------+--------+-------------+--------+----- - - - ----+
//   | older | header | data        | header | out of reach   |      block 1: next 5, prev 1, self 1
//   +-------+--------+-------------+--------+----- - - - ----+      block 5: next 512, prev 1, self 5
//
// The first header is the arena's own record as well: its `next` word is the arena's `limit`, where blocks end, and its
// `prev` word is `first`, the index of the first block. So when block 1 is split, the arena ends there, and what lies
// behind is lost to it: an arena serves one block at a time, and none larger than the smallest that it has served. This
// is the arenas' format, and so is a heap block of twice the bytes that the units count.
//
// Invariant: self(i) == i and next(i) > i for each block on the way from `first` over `next` to `limit`; next(i) - i -
// 1 units are its data.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orvix::gsl::pool {

constexpr std::size_t unit_bytes = 8;

using Index = std::uint16_t;

struct BlockHeader {
    Index next;  // the following block, or `limit`
    Index prev;
    Index self;
    std::uint16_t magic;
};
static_assert(sizeof(BlockHeader) == unit_bytes);

constexpr std::uint16_t free_magic = 0xFCC6;
constexpr std::uint16_t used_magic = 0x357F;

constexpr unsigned usual_units = 512;
constexpr unsigned units_before_data = 2;  // of block 1
constexpr unsigned most_data_units = 0xFFFF - units_before_data;

class Arena {
public:
    // An arena whose block 1 is free and has room for that many units, at most `most_data_units`. Null without memory.
    static Arena* create(unsigned data_units, Arena* older);

    // The arena in which a block's data lies.
    static Arena* of(void* data) { return reinterpret_cast<Arena*>(header_of(data) - header_of(data)->self); }
    static Index index_of(void* data) { return header_of(data)->self; }
    static bool is_used(void* data) { return header_of(data)->magic == used_magic; }

    Arena* older() const { return older_; }

    // Takes the first free block that is large enough, and cuts off what it has too much. Null if there is none.
    void* allocate(unsigned units);

    // False for a block that is not in use, or whose neighbour is damaged.
    bool release(Index index);

    // Leaves a block that many of its units. What it has beyond goes to the free block behind it, or makes a block of
    // its own if it has room for a header and data.
    void shrink(Index index, unsigned units);

    // The data units of a block.
    unsigned size(Index index) const { return at(index).next - index - 1U; }

    bool is_sound() const;

private:
    Arena(Arena* older, Index units) : older_(older), block_1_{units, 1, 1, free_magic} {}

    static BlockHeader* header_of(void* data) { return static_cast<BlockHeader*>(data) - 1; }
    BlockHeader& at(unsigned index) { return reinterpret_cast<BlockHeader*>(this)[index]; }
    const BlockHeader& at(unsigned index) const { return reinterpret_cast<const BlockHeader*>(this)[index]; }

    Index limit() const { return block_1_.next; }
    Index first() const { return block_1_.prev; }
    bool is_free_block(Index index) const { return index < limit() && at(index).magic == free_magic; }

    // Makes a free block from unit `index` up to `next`, behind the block `prev`.
    void put_free_block(unsigned index, Index prev, Index next);

    // Makes `next` follow `index`.
    void link(Index index, Index next);

    Arena* older_;
    BlockHeader block_1_;
};
static_assert(sizeof(Arena) == units_before_data * unit_bytes);

}  // namespace orvix::gsl::pool
