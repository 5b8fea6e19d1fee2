#include "containers/hash/table.h"

#include "containers/hash/page_io.h"
#include "containers/hash/pool.h"

#include <orvix/core/descriptors.h>
#include <orvix/core/file_status.h>
#include <orvix/core/files.h>
#include <orvix/core/open_flags.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

namespace orvix::gsl::hash {

namespace {

constexpr std::uint32_t default_cache_bytes = 65536;
constexpr std::uint32_t page_shift_in_memory = 12;
constexpr std::uint32_t page_shift_in_file = 10;
constexpr std::uint32_t default_segment_shift = 8;
constexpr std::uint32_t default_directory = 256;
constexpr std::uint32_t most_first_split = 30;  // at most so many bits for the buckets of a new table

// Frees a table that was not written, or is not to be. Keeps `errno`.
struct Destroy {
    void operator()(htab* table) const {
        const int saved = errno;
        free_pool(table);
        if (table->dir != nullptr) {
            const std::int32_t of_first_block = table->seg_count - table->extra_segs;
            for (std::int32_t i = of_first_block; i < table->seg_count; ++i) std::free(table->dir[i]);
            if (of_first_block > 0) std::free(table->dir[0]);
            std::free(table->dir);
        }
        for (std::uint32_t* const bitmap : table->bitmap_pages) std::free(bitmap);
        std::free(table->big_key);
        std::free(table->big_value);
        if (table->fp != -1) core::close_descriptor(table->fp);
        std::free(table);
        errno = saved;
    }
};
using OwnedTable = std::unique_ptr<htab, Destroy>;

OwnedTable new_table(int flags) {
    void* const block = std::calloc(1, sizeof(htab));
    if (block == nullptr) return nullptr;
    OwnedTable table(new (block) htab{});
    table->fp = -1;
    table->flags = flags;
    table->bufhead.prev = table->bufhead.next = &table->bufhead;
    return table;
}

bool fail(int reason) {
    errno = reason;
    return false;
}

// One block holds all segments that a table starts with.
bool allocate_segments(htab* table, std::uint32_t segments) {
    table->dir_capacity = std::max(table->dir_capacity, segments);
    table->dir = static_cast<HashSlot**>(std::calloc(table->dir_capacity, sizeof(HashSlot*)));
    if (table->dir == nullptr) return false;
    const std::size_t slots = std::size_t{segments} * table->seg_size;
    auto* const block = static_cast<HashSlot*>(std::calloc(slots, sizeof(HashSlot)));
    if (block == nullptr) return false;
    for (std::uint32_t i = 0; i < segments; ++i) table->dir[i] = block + std::size_t{i} * table->seg_size;
    table->seg_count = static_cast<std::int32_t>(segments);
    return true;
}

bool apply(const HASHINFO& info, htab* table) {
    if (info.page_size != 0) {
        table->page_shift = __log2_uint(info.page_size);
        if (table->page_shift < least_page_shift || table->page_shift > most_page_shift) return fail(EINVAL);
    }
    if (info.fill_factor != 0) table->fill_factor = info.fill_factor;
    if (info.hash != nullptr) table->hash = info.hash;
    if (info.byte_order != 0) {
        if (info.byte_order != little_endian_pages && info.byte_order != big_endian_pages) return fail(EINVAL);
        table->byte_order = info.byte_order;
    }
    return true;
}

// Makes as many buckets as the expected pairs need, with room for the overflow pages of the first split points.
bool size_for(htab* table, std::uint32_t expected_count) {
    const std::uint32_t wanted = (expected_count - 1) / table->fill_factor + 1;
    const std::uint32_t split = __log2_uint(std::max(wanted, 2U));
    if (split > most_first_split) return fail(ENOMEM);
    const std::uint32_t buckets = std::uint32_t{1} << split;
    table->free_hint = 2;
    table->spare_point = split;
    table->spare_counts[split] = table->spare_counts[split + 1] = split + 1;
    table->top_bucket = table->mask_low = buckets - 1;
    table->mask_high = 2 * buckets - 1;
    const std::uint32_t bitmap_address = overflow_address(split, 1);
    if (!lies_in_file(*table, page_of_address(*table, overflow_address(split, split + 1)))) return fail(EFBIG);
    if (__ibitmap(table, bitmap_address, static_cast<std::int32_t>(split + 1), 0) != 0) return false;

    const std::uint32_t segments = std::uint32_t{1} << __log2_uint(table->top_bucket / table->seg_size + 1);
    table->dir_size = table->dir_capacity = std::max(default_directory, segments);
    return allocate_segments(table, segments);
}

bool initialise(htab* table, bool in_file, const HASHINFO* info) {
    table->byte_order = little_endian_pages;
    table->page_shift = in_file ? page_shift_in_file : page_shift_in_memory;
    table->seg_shift = default_segment_shift;
    table->seg_size = std::uint32_t{1} << default_segment_shift;
    table->fill_factor = undecided_fill_factor;
    table->hash = default_hash;
    if (info != nullptr && !apply(*info, table)) return false;
    table->page_size = std::uint32_t{1} << table->page_shift;
    table->header_pages = header_pages_for(table->page_shift);
    const bool has_count = info != nullptr && info->expected_count != 0;
    return size_for(table, has_count ? info->expected_count : 1);
}

bool read_existing(htab* table, const HASHINFO* info) {
    table->hash = info != nullptr && info->hash != nullptr ? info->hash : default_hash;
    std::array<unsigned char, header_bytes> bytes;
    const std::ptrdiff_t done = core::read_at(table->fp, bytes.data(), bytes.size(), 0);
    if (done == -1) return false;
    if (done != static_cast<std::ptrdiff_t>(bytes.size())) return fail(EINVAL);
    static_cast<HashHeader&>(*table) = decode(bytes);
    const bool is_ours = table->magic == header_magic && table->version >= oldest_version &&
                         table->version <= header_version &&
                         table->check_hash == table->hash(check_text, sizeof check_text);
    if (!is_ours) return fail(EINVAL);
    const std::int64_t file_bytes = core::size_of_descriptor(table->fp);
    if (file_bytes == -1) return false;
    if (!is_sound(*table, static_cast<std::uint64_t>(file_bytes))) return fail(EINVAL);

    const std::uint32_t bitmap_bits = table->page_size * 8;
    table->bitmap_count = static_cast<std::int32_t>((overflow_pages(*table) + bitmap_bits - 1) >> bits_shift(*table));
    table->dir_capacity = default_directory;
    return allocate_segments(table, (table->top_bucket + table->seg_size) / table->seg_size);
}

bool is_missing(const char* file) {
    ::_stat64 status;
    return core::read_status(file, &status) == -1 && errno == ENOENT;
}

}  // namespace

htab* open_table(const char* file, int flags, int mode, const HASHINFO* info) {
    const core::OpenFlags system = core::open_flags();
    if ((flags & system.access) == system.write_only) {
        errno = EINVAL;
        return nullptr;
    }
    OwnedTable table = new_table(flags);
    if (table == nullptr) return nullptr;
    const bool is_new = file == nullptr || (flags & system.truncate) != 0 || is_missing(file);
    if (file != nullptr) {
        table->fp = open_utf8(file, flags | system.binary, mode);
        if (table->fp == -1) return nullptr;
    }
    if (is_new && errno == ENOENT) errno = 0;  // which only said that the file was to be made
    if (!(is_new ? initialise(table.get(), file != nullptr, info) : read_existing(table.get(), info))) return nullptr;
    const bool has_cache_bytes = info != nullptr && info->cache_bytes != 0;
    __buf_init(table.get(), has_cache_bytes ? info->cache_bytes : default_cache_bytes);
    table->created = is_new ? 1 : 0;
    table->may_change = (flags & system.access) == system.read_write;
    table->writable_file = file != nullptr && table->may_change ? 1 : 0;
    table->scan_bucket = -1;
    return table.release();
}

bool sync_table(htab* table) {
    if (table->writable_file == 0) return true;
    if (!write_modified(table) || !write_header(table)) return false;
    table->created = 0;
    return true;
}

bool close_table(htab* table) {
    const OwnedTable owned(table);
    // A header that tells of pages which could not be written would make a damaged file of a sound older one.
    const bool written = table->writable_file == 0 || (write_modified(table) && write_header(table));
    const int file = std::exchange(table->fp, -1);
    if (file == -1) return written;
    const int saved = errno;
    const bool closed = core::close_descriptor(file) == 0;
    if (!written) errno = saved;
    return written && closed;
}

}  // namespace orvix::gsl::hash
