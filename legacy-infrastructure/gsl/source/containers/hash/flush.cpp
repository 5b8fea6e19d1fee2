#include "containers/hash/byte_order.h"
#include "containers/hash/page_io.h"
#include "containers/hash/pool.h"

#include <orvix/core/descriptors.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <span>

namespace orvix::gsl::hash {

namespace {

struct Modified {
    std::uint64_t offset;
    _bufhead* buffer;
};

PageKind kind_of(const _bufhead* buffer) {
    return (buffer->flags & BUFFER_BUCKET) != 0 ? PageKind::bucket : PageKind::overflow;
}

// Writes pages that lie one behind the other in the file.
bool write_run(htab* table, std::span<const Modified> run) {
    core::Piece pieces[core::most_pieces];
    for (std::size_t i = 0; i < run.size(); ++i) pieces[i] = {run[i].buffer->page, table->page_size};
    const auto swap_each = [&](auto swap) {
        if (!is_swapped(*table)) return;
        for (const Modified& page : run) swap(Page(table, page.buffer));
    };
    swap_each([](Page page) { swap_out(page); });
    std::ptrdiff_t done = core::write_pieces_at(table->fp, std::span(pieces, run.size()), run.front().offset);
    swap_each([](Page page) { swap_in(page); });
    if (done == -1) return false;
    const auto bytes = static_cast<std::size_t>(done);
    const std::size_t pages = bytes / table->page_size;
    if (pages == run.size()) return true;
    if (pages == 0 || bytes % table->page_size != 0) {
        errno = EINVAL;
        return false;
    }
    return write_run(table, run.subspan(pages));  // ends with the reason at the latest
}

bool write_all(htab* table, std::span<const Modified> pages) {
    while (!pages.empty()) {
        std::size_t count = 1;
        while (count < pages.size() && count < core::most_pieces &&
               pages[count].offset == pages[count - 1].offset + table->page_size) {
            ++count;
        }
        if (!write_run(table, pages.first(count))) return false;
        pages = pages.subspan(count);
    }
    return true;
}

bool is_modified(const _bufhead* buffer) { return (buffer->flags & BUFFER_DIRTY) != 0 && !is_blank(buffer); }

std::size_t count_modified(const htab* table) {
    std::size_t count = 0;
    visit_buffers(table, [&](const _bufhead* buffer) { count += is_modified(buffer) ? 1U : 0U; });
    return count;
}

// Without memory for a list of the pages.
bool write_one_by_one(htab* table) {
    bool written = true;
    visit_buffers(table, [&](_bufhead* buffer) {
        written = written && (!is_modified(buffer) || write_page(table, buffer->page, buffer->addr, kind_of(buffer)));
    });
    return written;
}

// The modified pages in the order in which they lie in the file. The directory has the pages of buckets in that order,
// and is asked for them unless most of them are not here.
bool list_modified(const htab* table, std::span<Modified> pages) {
    std::size_t count = 0;
    bool in_range = true;
    const auto add = [&](_bufhead* buffer) {
        if (count == pages.size()) return;
        const std::int64_t offset = offset_of(table, buffer->addr, kind_of(buffer));
        in_range = in_range && offset != -1;
        pages[count++] = {static_cast<std::uint64_t>(offset), buffer};
    };
    const auto slots = static_cast<std::uint32_t>(table->seg_count) << table->seg_shift;
    const bool ask_directory = slots / 4 < pages.size();
    for (std::uint32_t bucket = 0; ask_directory && bucket < slots; ++bucket) {
        _bufhead* const buffer = buffer_of(*slot_of(table, bucket));
        if (buffer != nullptr && is_modified(buffer)) add(buffer);
    }
    const auto rest = pages.begin() + static_cast<std::ptrdiff_t>(count);
    visit_buffers(table, [&](_bufhead* buffer) {
        const bool is_listed = ask_directory && (buffer->flags & BUFFER_BUCKET) != 0;
        if (!is_listed && is_modified(buffer)) add(buffer);
    });
    const auto by_offset = [](const Modified& a, const Modified& b) { return a.offset < b.offset; };
    std::sort(rest, pages.end(), by_offset);
    std::inplace_merge(pages.begin(), rest, pages.end(), by_offset);
    return in_range;
}

}  // namespace

bool write_modified(htab* table) {
    const std::size_t count = count_modified(table);
    if (count == 0) return true;
    const std::unique_ptr<Modified[]> list(new (std::nothrow) Modified[count]);
    if (list == nullptr || table->fp == -1) return write_one_by_one(table);
    const std::span<Modified> pages(list.get(), count);
    if (!list_modified(table, pages)) return false;

    const auto file_bytes = static_cast<std::uint64_t>(std::max<std::int64_t>(0, core::size_of_descriptor(table->fp)));
    const auto behind = std::partition_point(pages.begin(), pages.end(),
                                             [&](const Modified& page) { return page.offset < file_bytes; });
    const auto inside = static_cast<std::size_t>(behind - pages.begin());
    return write_all(table, pages.subspan(inside)) && write_all(table, pages.first(inside));
}

bool write_header(htab* table) {
    if (table->writable_file == 0) return true;
    table->magic = header_magic;
    table->version = header_version;
    table->check_hash = table->hash(check_text, sizeof check_text);
    const auto bytes = encode(*table);
    const std::ptrdiff_t done = core::write_at(table->fp, bytes.data(), bytes.size(), 0);
    if (done == -1) return false;
    if (done != static_cast<std::ptrdiff_t>(bytes.size())) {
        table->error = errno = EINVAL;
        return false;
    }
    for (std::uint32_t i = 0; i < most_bitmaps; ++i) {
        if (table->bitmap_pages[i] == nullptr) continue;
        char* const page = reinterpret_cast<char*>(table->bitmap_pages[i]);
        if (!write_page(table, page, table->bitmap_addrs[i], PageKind::bitmap)) return false;
    }
    return true;
}

}  // namespace orvix::gsl::hash
