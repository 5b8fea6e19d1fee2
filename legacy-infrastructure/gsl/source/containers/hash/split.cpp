#include "containers/hash/split.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

namespace orvix::gsl::hash {

namespace {

// Makes room in the directory for one more segment.
bool grow_directory(htab* table, std::uint32_t segment) {
    if (segment >= table->dir_capacity) {
        const std::size_t capacity = std::max(2 * std::size_t{table->dir_capacity}, std::size_t{segment} + 1);
        void* const larger = std::realloc(table->dir, capacity * sizeof(HashSlot*));
        if (larger == nullptr) return false;
        table->dir = static_cast<HashSlot**>(larger);
        table->dir_capacity = static_cast<std::uint32_t>(capacity);
    }
    if (segment >= table->dir_size) {
        // The files say so: the size that is stored is that of the doubled directory in bytes.
        constexpr std::uint32_t pointer_bytes = 8;
        table->dir_size = 2 * table->dir_size * pointer_bytes;
    }
    return true;
}

bool add_segment(htab* table, std::uint32_t segment) {
    if (segment < static_cast<std::uint32_t>(table->seg_count)) return true;
    if (!grow_directory(table, segment)) return false;
    void* const slots = std::calloc(table->seg_size, sizeof(HashSlot));
    if (slots == nullptr) return false;
    table->dir[segment] = static_cast<HashSlot*>(slots);
    ++table->seg_count;
    ++table->extra_segs;
    return true;
}

// Adds a bucket to the numbers in the header.
void count_bucket(HashHeader* header) {
    const std::uint32_t bucket = ++header->top_bucket;
    const std::uint32_t split = __log2_uint(bucket + 1);
    if (split > header->spare_point) {
        header->spare_counts[split] = header->spare_counts[header->spare_point];
        header->spare_point = split;
    }
    if (bucket > header->mask_high) {
        header->mask_low = header->mask_high;
        header->mask_high = bucket | header->mask_low;
    }
}

}  // namespace

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

std::uint32_t __log2_uint(std::uint32_t value) { return value < 2 ? 0 : width_of(value - 1); }

int __expand_table(htab* table) {
    const std::uint32_t bucket = table->top_bucket + 1;
    HashHeader after = *table;
    count_bucket(&after);
    if (!lies_in_file(after, page_of_bucket(after, bucket))) {
        errno = EFBIG;
        return -1;
    }
    if (!add_segment(table, bucket >> table->seg_shift)) return -1;
    const HashHeader before = *table;
    count_bucket(table);
    if (__split_page(table, bucket & table->mask_low, bucket) == 0) return 0;
    // Overflow pages may have been taken at the new split point, which therefore stays.
    table->top_bucket = before.top_bucket;
    table->mask_low = before.mask_low;
    table->mask_high = before.mask_high;
    return -1;
}

int __split_page(htab* table, std::uint32_t old_bucket, std::uint32_t new_bucket) {
    _bufhead* const old_first = fetch_bucket(table, old_bucket);
    if (old_first == nullptr) return -1;
    pin(old_first);
    _bufhead* const new_first = make_bucket(table, new_bucket);
    if (new_first == nullptr) {
        unpin(old_first);
        return -1;
    }
    pin(new_first);
    mark_modified(old_first);
    mark_modified(new_first);
    const Split split{table, old_bucket, old_first, new_first};
    const Page old_page(table, old_first);
    const bool is_simple = !old_page.has_link() && old_page.takes_regular_pairs();
    const bool done = is_simple ? split_first_page(split,
                                                   [&](std::string_view key, std::string_view value) {
                                                       Page(table, new_first).put(key, value);
                                                       return true;
                                                   })
                                : split_chain(split);
    unpin(old_first);
    unpin(new_first);
    return done ? 0 : -1;
}
