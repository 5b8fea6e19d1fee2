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

template <class Visit>
bool visit_modified(htab* table, Visit visit) {
    for (_bufhead* buffer = table->bufhead.prev; buffer != &table->bufhead; buffer = buffer->prev) {
        if ((buffer->flags & BUFFER_DIRTY) != 0 && !is_blank(buffer) && !visit(buffer)) return false;
    }
    return true;
}

}  // namespace

bool write_modified(htab* table) {
    std::size_t count = 0;
    visit_modified(table, [&](_bufhead*) { return ++count != 0; });
    if (count == 0) return true;
    const std::unique_ptr<Modified[]> pages(new (std::nothrow) Modified[count]);
    if (pages == nullptr || table->fp == -1) {
        return visit_modified(
            table, [&](_bufhead* buffer) { return write_page(table, buffer->page, buffer->addr, kind_of(buffer)); });
    }
    std::size_t at = 0;
    const bool in_range = visit_modified(table, [&](_bufhead* buffer) {
        const std::int64_t offset = offset_of(table, buffer->addr, kind_of(buffer));
        if (offset == -1) return false;
        pages[at++] = {static_cast<std::uint64_t>(offset), buffer};
        return true;
    });
    if (!in_range) return false;
    const std::span<Modified> all(pages.get(), count);
    const auto by_offset = [](const Modified& a, const Modified& b) { return a.offset < b.offset; };
    std::sort(all.begin(), all.end(), by_offset);

    const auto file_bytes = static_cast<std::uint64_t>(std::max<std::int64_t>(0, core::size_of_descriptor(table->fp)));
    const auto behind = std::lower_bound(all.begin(), all.end(), Modified{file_bytes, nullptr}, by_offset);
    const auto inside = static_cast<std::size_t>(behind - all.begin());
    return write_all(table, all.subspan(inside)) && write_all(table, all.first(inside));
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
