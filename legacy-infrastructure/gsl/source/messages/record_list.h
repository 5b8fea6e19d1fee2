// A record list in memory: a header, and a chain of blocks that hold pointers to the records.
//
//   header                block                 block
//   +-------------+       +-----------+         +-----------+
//   | first_block-+------>| next -----+-------->| next = 0  |
//   | last_link   |<------+-prev_link |<--------+-prev_link |       prev_link: the pointer that leads here
//   | length = 33 |       | used = 30 |         | used = 3  |
//   | ...         |       | slots -+  |         | slots -+  |
//   +-------------+       +--------|--+         +--------|--+
//                                  v                     v
//                         [30 records, or null]   [3 records, 27 unused]
//
// Invariants: length is the sum of all used. Every block is full (used == last_slot + 1) but the last, which is not
// empty. Slots at and behind used are not initialised.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

namespace orvix::gsl {

struct glist_block {
    glist_block* next;
    glist_block** prev_link;
    std::uint32_t used;
    std::uint32_t last_slot;
    char** slots;
};

enum ListFlag : std::uint32_t {
    flag_toggle = 0x004,
    flag_sorted = 0x100,
    flag_descending = 0x200,
    flags_kept = 0x703,
};

// What the hook is told.
enum class ListOperation : std::int32_t {
    set_length = 30,
    get_text = 31,
    get_record = 32,
    put_record = 33,
    move = 34,
    close = 35,
    get_by_key = 38,
};

// The fields from first_block to name_holder lie as those of a block, as which a header can be seen: an empty list then
// looks like one whose last block is full.
struct glist_header {
    glist_header* next;  // in the chain of all open lists
    glist_header** prev_link;
    glist_block* first_block;
    glist_block** last_link;  // stays the address of first_block
    std::uint32_t length;
    std::uint32_t spare_last_slot;  // always 0
    char** name_holder;             // a name of up to 128 bytes; null if there was no memory for it
    glist_header* self;
    std::int32_t ref_count;
    std::uint32_t flags;  // ListFlag, and bits that are the caller's
    std::uint32_t mark;   // a count that is the caller's
    std::int32_t block_bytes;
    int (*compare)(const char* record, const char* key);
    std::size_t (*copy_out)(const char* record, char* buffer, std::size_t size);
    bool (*hook)(glist_header* list, ListOperation operation, std::uint32_t index);  // true: it took the operation over
    char tag[8];                                                                     // not terminated if all are used

    // Where the last walk ended: a block and the index of its first record; null before the first walk.
    glist_block* seen_block;
    std::uint32_t seen_index;
};

static_assert(offsetof(glist_header, last_link) - offsetof(glist_header, first_block) ==
              offsetof(glist_block, prev_link));
static_assert(offsetof(glist_header, length) - offsetof(glist_header, first_block) == offsetof(glist_block, used));
static_assert(offsetof(glist_header, name_holder) - offsetof(glist_header, first_block) ==
              offsetof(glist_block, slots));

constexpr std::size_t list_name_bytes = 128;
constexpr std::int32_t smallest_block_bytes = sizeof(glist_block);

inline glist_header* as_list(void* handle) { return static_cast<glist_header*>(handle); }

inline bool is_taken_over(glist_header* list, ListOperation operation, std::uint32_t index) {
    return list->hook(list, operation, index);
}

// A slot of a block; without a block, no place at all.
struct Place {
    glist_block* block = nullptr;
    std::uint32_t slot = 0;

    explicit operator bool() const { return block != nullptr; }
    bool holds_record() const { return block != nullptr && slot < block->used; }
    char*& record() const {
        assert(holds_record());
        return block->slots[slot];
    }
    bool operator==(const Place&) const = default;
};

// The place of a record; none for an index at or behind the end.
Place find_place(glist_header& list, std::uint32_t index);

// The block before this one; null for the first.
glist_block* block_before(const glist_header& list, const glist_block& block);

// The slot of a record that is about to be stored, with what was there freed. The list grows to hold it. Null without
// memory.
char** empty_slot(glist_header& list, std::uint32_t index);

// What every list has for compare and copy_out.
int compare_record(const char* record, const char* key);
std::size_t copy_record(const char* record, char* buffer, std::size_t size);

}  // namespace orvix::gsl
