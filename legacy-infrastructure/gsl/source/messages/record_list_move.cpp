#include <orvix/gsl/record_list.h>

#include "messages/record.h"
#include "messages/record_list.h"

#include <limits>

using namespace orvix::gsl;

namespace {

void step_back(const glist_header& list, Place* place) {
    if (place->slot > 0) {
        --place->slot;
    } else if (glist_block* before = block_before(list, *place->block); before != nullptr) {
        *place = {before, before->used - 1};
    } else {
        *place = {};
    }
}

// Leaves a block before its last slot and not behind it: records in last slots stay where they are when others move
// down. Callers that keep records of fixed places there rely on it.
void step_down_the_gap(Place* place) {
    if (!*place) return;
    if (++place->slot >= place->block->last_slot) *place = {place->block->next, 0};
}

bool open_gap(glist_header& list, std::uint32_t index, std::uint32_t count) {
    const std::uint32_t moved = list.length - index;
    Place source = find_place(list, list.length - 1);
    if (!glist_setlength(&list, list.length + count)) return false;
    Place target = find_place(list, list.length - 1);
    for (std::uint32_t i = 0; i < moved; ++i) {
        target.record() = source.record();
        source.record() = nullptr;
        step_back(list, &source);
        step_back(list, &target);
    }
    list.mark = list.length;
    return true;
}

// What is at the target is freed even where both walks have met and it is the source's own record. Where the source has
// passed over last slots it runs out before the count does, and then gives empty records.
void move_record(const Place& source, const Place& target) {
    if (!target.holds_record()) return;
    free_record(target.record());
    target.record() = nullptr;
    if (source == target || !source.holds_record()) return;
    target.record() = source.record();
    source.record() = nullptr;
}

bool close_gap(glist_header& list, std::uint32_t index, std::uint32_t new_index) {
    Place target = find_place(list, new_index);
    Place source = find_place(list, index);
    for (std::uint32_t left = list.length - index; left > 0; --left) {
        move_record(source, target);
        step_down_the_gap(&source);
        step_down_the_gap(&target);
    }
    const bool cut = glist_setlength(&list, list.length - (index - new_index));
    list.mark = list.length;
    return cut;
}

}  // namespace

bool glist_move(void* handle, unsigned index, int delta) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::move, index)) return true;
    if (delta == 0) {
        list->mark = list->length;
        return true;
    }

    const std::int64_t new_index = std::int64_t{index} + delta;
    if (delta < 0) {
        if (index >= list->length || new_index < 0) return false;
        return close_gap(*list, index, static_cast<std::uint32_t>(new_index));
    }
    constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
    if (index >= list->length) {
        return new_index <= most && glist_setlength(list, static_cast<std::uint32_t>(new_index));
    }
    return std::int64_t{list->length} + delta <= most && open_gap(*list, index, static_cast<std::uint32_t>(delta));
}
