#include <orvix/gsl/record_list.h>

#include "messages/record.h"
#include "messages/record_list.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

namespace orvix::gsl {

glist_block* block_before(const glist_header& list, const glist_block& block) {
    // Behind the first, the pointer that leads to a block is the first field of the block before it.
    return block.prev_link == list.last_link ? nullptr : reinterpret_cast<glist_block*>(block.prev_link);
}

Place find_place(glist_header& list, std::uint32_t index) {
    if (index >= list.length) return {};
    glist_block* block = list.seen_block;
    std::uint32_t first = list.seen_index;
    if (block == nullptr || index < first / 2) {
        block = list.first_block;
        first = 0;
    }
    while (index < first) {
        block = block_before(list, *block);
        first -= block->used;
    }
    while (index - first >= block->used) {
        first += block->used;
        block = block->next;
    }
    list.seen_block = block;
    list.seen_index = first;
    return {block, index - first};
}

namespace {

std::size_t slots_of(std::int32_t block_bytes) {
    return static_cast<std::size_t>(block_bytes - smallest_block_bytes) / sizeof(char*) + 2;
}

// Links an empty block at `link`. Null without memory, or if the block size has no room for a block.
glist_block* add_block(std::int32_t block_bytes, glist_block** link) {
    if (block_bytes < smallest_block_bytes) return nullptr;
    const std::size_t slots = slots_of(block_bytes);
    // The block size only tells how many slots there are: they lie apart, and the rest of such a block would stay
    // unused.
    auto* block = static_cast<glist_block*>(std::malloc(sizeof(glist_block)));
    auto* records = static_cast<char**>(std::malloc(slots * sizeof(char*)));
    if (block == nullptr || records == nullptr) {
        std::free(records);
        std::free(block);
        return nullptr;
    }
    *block = {nullptr, link, 0, static_cast<std::uint32_t>(slots - 1), records};
    *link = block;
    return block;
}

void free_records(glist_block& block, std::uint32_t from) {
    std::for_each(block.slots + from, block.slots + block.used, free_record);
}

// A list that cannot have its memory is told so before it takes all that there is: on systems that promise more than
// they have, running out ends some process, and not always this one. Small growth is not worth asking for.
bool can_have_memory(const glist_header& list, std::uint32_t more_records) {
    constexpr std::uint32_t worth_asking = 1 << 20;
    if (more_records < worth_asking || list.block_bytes < smallest_block_bytes) return true;
    const std::size_t slots = slots_of(list.block_bytes);
    const std::size_t blocks = more_records / slots + 1;
    const std::size_t bytes = blocks * (sizeof(glist_block) + slots * sizeof(char*));
    void* volatile probe = std::malloc(bytes);  // volatile: or the compiler takes the answer for granted
    const bool granted = probe != nullptr;
    std::free(probe);
    return granted;
}

bool grow(glist_header& list, std::uint32_t length) {
    if (!can_have_memory(list, length - list.length)) return false;
    glist_block* block = list.length == 0 ? nullptr : find_place(list, list.length - 1).block;
    while (list.length < length) {
        if (block == nullptr || block->used > block->last_slot) {
            block = add_block(list.block_bytes, block == nullptr ? &list.first_block : &block->next);
            if (block == nullptr) return false;
        }
        const std::uint32_t added = std::min(length - list.length, block->last_slot + 1 - block->used);
        std::fill_n(block->slots + block->used, added, nullptr);
        block->used += added;
        list.length += added;
    }
    list.seen_block = block;
    list.seen_index = list.length - block->used;
    return true;
}

void cut(glist_header& list, std::uint32_t length) {
    const Place end = find_place(list, length);
    assert(end);
    glist_block** link = &end.block->next;  // that leads to the blocks to go
    if (end.slot > 0) {
        free_records(*end.block, end.slot);
        list.length -= end.block->used - end.slot;
        end.block->used = end.slot;
    } else {
        link = end.block->prev_link;
        list.seen_block = block_before(list, *end.block);
        if (list.seen_block != nullptr) list.seen_index -= list.seen_block->used;
    }
    assert(link != nullptr);
    for (glist_block* gone = std::exchange(*link, nullptr); gone != nullptr;) {
        glist_block* next = gone->next;
        free_records(*gone, 0);
        list.length -= gone->used;
        std::free(gone->slots);
        std::free(gone);
        gone = next;
    }
}

}  // namespace

char** empty_slot(glist_header& list, std::uint32_t index) {
    if (index >= list.length) {
        if (index == std::numeric_limits<std::uint32_t>::max()) return nullptr;
        if (!grow(list, index + 1)) return nullptr;
    }
    list.flags &= ~std::uint32_t{flag_sorted};  // nobody can tell where the new record stands in the order
    char*& record = find_place(list, index).record();
    free_record(record);
    record = nullptr;
    return &record;
}

std::size_t copy_record(const char* record, char* buffer, std::size_t size) {
    if (record == nullptr || buffer == nullptr) return 0;
    const std::span<const char> bytes = record_bytes(record);
    const std::size_t there = std::min(size, bytes.size());
    if (there > 0) std::memcpy(buffer, record, there);
    if (there < size) std::memset(buffer + there, 0, size - there);
    return size;
}

}  // namespace orvix::gsl

using namespace orvix::gsl;

bool glist_setlength(void* handle, unsigned length) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::set_length, length)) return true;
    if (length > list->length) return grow(*list, length);
    if (length < list->length) cut(*list, length);
    return true;
}

bool glist_putrec(void* handle, unsigned index, char* data, std::size_t size) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::put_record, index)) return true;
    if (data == nullptr && size > 0) return false;
    char** slot = empty_slot(*list, index);
    if (slot == nullptr || size == 0) return slot != nullptr;
    *slot = new_record({data, size});
    return *slot != nullptr;
}

bool glist_putstr(void* handle, unsigned index, char* text) {
    if (text == nullptr) return false;
    const std::size_t length = std::strlen(text);
    return glist_putrec(handle, index, text, length == 0 ? 0 : length + 1);
}

bool glist_getrec(void* handle, unsigned index, char* buffer, std::size_t size, std::size_t* copied) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::get_record, index)) return true;
    const Place place = find_place(*list, index);
    if (!place) return false;
    const std::size_t bytes = list->copy_out(place.record(), buffer, size);
    if (copied != nullptr) *copied = bytes;
    return true;
}

bool glist_getstr(void* handle, unsigned index, char* buffer) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::get_text, index)) return true;
    const Place place = find_place(*list, index);
    if (!place || buffer == nullptr) return false;
    const std::span<const char> text = record_text(place.record());
    if (!text.empty()) std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return true;
}
